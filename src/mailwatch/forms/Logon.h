#pragma once

#include "desktop/forms/Form.h"
#include "desktop/forms/QtTrayIcon.h"
#include "mailwatch/MailWatch.h"
#include "settings/MailLogin.h"

#include <memory>
#include <optional>

class SettingsStore;
struct Client;

namespace Ui
{
class Logon;
}

// Asks for a mailbox and watches it: while the watch runs the window is out of sight and its icon stands in
// the notification area. It has nothing to do with the Jabber session, whose end leaves it alone.
class Logon : public Form
{
    Q_OBJECT

public:
    // All must outlive the object.
    Logon(FormRegistry& registry, Client& client, SettingsStore& store, Farewells& farewells);
    ~Logon() override;

    // Of the subscription that was asked for last. The password lives no longer than the window.
    QString Url;
    QString User;
    QString Password;
    bool Cancelled = true;

    // Shows the window: filled with `typed`, else with what is stored, unless a watch stands.
    void Initialize(const std::optional<MailLogin>& typed);

signals:
    // The window goes; this stood in its boxes.
    void leaving(const MailLogin& typed);

protected:
    bool queryUnload(CloseMode mode) override;
    void unload() override;

private:
    void OKButton_Click();
    void CancelButton_Click();
    void connectMenu();
    void enableMenu(bool isOn);
    bool keepLogin();
    MailLogin typed() const;
    void fill(const MailLogin& login);
    void showAsking(bool isAsking);
    void leaveSight();

    void showSubscribed();
    void showFault(MailWatch::Fault fault);
    QString faultText(MailWatch::Fault fault) const;
    void stop();
    void tellNewMail();
    void openFolder();
    void toggle();
    void composeMessage();
    void OpenInBrowser(const QString& url);
    void tell(const QString& text);

    Client& client_;
    SettingsStore& store_;
    std::unique_ptr<Ui::Logon> ui_;
    MailWatch watch_;
    QtTrayIcon icon_;
    QTimer tmrNotify_;
    bool NewMailPending_ = false;
};
