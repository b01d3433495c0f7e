#pragma once

#include "desktop/forms/Form.h"

#include <QString>

#include <memory>

namespace Ui
{
class authorizeForm;
}
struct Client;

// Answers one subscription request (RFC 6121, 3.1), by the person's choice or by the settings. Closing the
// window sends no answer.
class authorizeForm : public Form
{
    Q_OBJECT

public:
    authorizeForm(FormRegistry& registry, Client& client);
    ~authorizeForm() override;

    // Who asks, as shown.
    void setUserName(const QString& jid);
    // Waits for the person's answer to the request of `from`.
    void setRequest(const QString& from);
    // Answers the request of `from` where the settings say how. False when the person is to be asked: also
    // with settings that say nothing, so that no request is lost.
    static bool answerBySettings(const Client& client, const QString& from);

signals:
    // The form was unloaded, with an answer or without.
    void closed();

public slots:
    void cmdAccept_Click();
    void cmdDeny_Click();
    void cmdShowVCard_Click();

protected:
    void unload() override { emit closed(); }

private:
    std::unique_ptr<Ui::authorizeForm> ui_;
    Client& client_;
    QString from_; // empty before a request is taken
};
