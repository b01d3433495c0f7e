#pragma once

#include "engine/ApplicationPlugIn.h"

#include <QWidget>

#include <memory>

class QPlainTextEdit;
struct Client;

namespace Ui
{
class AdminUsrCtrl;
}

// The page of the server's administrators: who is on line, messages to all, the users' passwords.
class AdminUsrCtrl : public QWidget, public ApplicationPlugIn
{
    Q_OBJECT

public:
    // The client must outlive the panel.
    explicit AdminUsrCtrl(Client& client);
    ~AdminUsrCtrl() override;

    ApplicationPlugIn* Myapplicationplugin() { return this; }
    // How many users the answer names that OnIQ is to show.
    int usersOnline = 0;

    // The answer to the question who is on line.
    void OnIQ(PlugInContext& context) override;
    // The server's answer to a change of a password: a refusal is told, whether the panel still stands or
    // not.
    static void passwordAnswered(const PlugInContext& context, const Client& client);

signals:
    void messageRequested(const QString& jid);

protected:
    // The count is asked for anew.
    void showEvent(QShowEvent* event) override;
    // Enter in a field leads to the next: nothing is sent to all by a slip of the hand.
    void keyPressEvent(QKeyEvent* event) override;

private:
    void cmdSendOnline_Click();
    void cmdSetMOTD_Click();
    void cmdChangePWD_Click();
    void askForCount();
    void setUpUsers();
    // Sends, and tells by `done` that it was sent.
    void announce(const QString& to, const QString& subject, QPlainTextEdit& body, const QString& done);
    void refuse(const QString& title, const QString& text, QWidget& control);
    void notify(const QString& text);
    void tellUnsent();
    void say(const QString& word);

    Client& client_;
    std::unique_ptr<Ui::AdminUsrCtrl> ui_;
};
