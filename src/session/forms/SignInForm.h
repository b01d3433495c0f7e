#pragma once

#include "desktop/forms/Form.h"

#include <memory>

class QTimer;
class SettingsStore;
struct Client;

namespace Ui
{
class SignInForm;
}

// The window with which the client starts. It is never destroyed while the program runs: closing it hides it
// in the tray. Its unload writes the settings and ends the run.
class SignInForm : public Form
{
    Q_OBJECT

public:
    SignInForm(FormRegistry& registry, Client& client, SettingsStore& store);
    ~SignInForm() override;

    // Fills the fields from the settings and, with "Auto Logon" on, connects.
    void load();
    // The boxes and the resource follow the settings, which were changed elsewhere.
    void showSettings();
    // The same after a reset, which changes the server too.
    void showDefaults();
    // Shown anew after the server took neither the name nor the password: the caret stands in the password.
    void showRefused();
    // Which of Connect and Disconnect can be chosen.
    void showConnection(bool underWay, bool connected);
    // Without a user name or a server the caret goes there, with a word.
    void Connect_Click();
    // Writes the settings, with the account as typed; false when that failed. At the end of the run it is
    // done and told by itself.
    bool saveSettings();

    // The pump's timer; runs for the whole run.
    QTimer* Timer1() const { return timer_; }

    QString userName() const;
    QString password() const;

signals:
    // The connection has been started: the contact list is to be made, unseen.
    void connecting();
    // The sign-in window is hidden: the progress is to be shown.
    void progressWanted();
    // By Disconnect.
    void disconnected();
    void preferencesRequested();
    void pageRequested(const QString& path);
    // Closed to the tray.
    void hiddenInTray();
    // The last act of the run.
    void unloaded();

protected:
    // What is still to be typed has the focus, or the button.
    void showEvent(QShowEvent* event) override;
    bool queryUnload(CloseMode mode) override;
    void unload() override;
    // Whoever made it keeps it: what runs under a box at the end of the run may still ask it.
    void release() override {}

private:
    void connectControls();
    void hideInTray();
    // A whole JID in the user name's box fills the server's too.
    void splitJid();
    bool isComplete();
    QString server() const;
    void onCheck1();
    void onCheck2();

    Client& client_;
    SettingsStore& store_;
    std::unique_ptr<Ui::SignInForm> ui_;
    QTimer* timer_;
};
