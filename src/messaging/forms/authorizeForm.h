#pragma once

#include "desktop/forms/Form.h"
#include "engine/ApplicationPlugIn.h"
#include "engine/PlugInContext.h"

#include <QString>

#include <memory>
#include <optional>

namespace Ui
{
class authorizeForm;
}
struct Client;

// Answers one subscription request (RFC 6121, 3.1), by the person's choice or by the settings. Closing the
// window sends no answer.
class authorizeForm : public Form, public ApplicationPlugIn
{
    Q_OBJECT

public:
    authorizeForm(FormRegistry& registry, Client& client);
    ~authorizeForm() override;

    ApplicationPlugIn* Myapplicationplugin() { return this; }
    // Who asks, as shown.
    void setUserName(const QString& jid);
    // Takes the request; answers at once where the settings say so.
    void OnPresence(PlugInContext& context) override;

public slots:
    void cmdAccept_Click();
    void cmdDeny_Click();
    void cmdShowVCard_Click();

private:
    std::unique_ptr<Ui::authorizeForm> ui_;
    Client& client_;
    std::optional<PlugInContext> Context;
};
