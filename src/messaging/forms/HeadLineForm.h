#pragma once

#include "desktop/forms/Form.h"
#include "engine/ApplicationPlugIn.h"
#include "messaging/Stamps.h"

#include <QString>

#include <memory>

namespace Ui
{
class HeadLineForm;
}
struct Client;

// The one notices window: headlines, messages of the server and its gateways, errors, authorisation notices
// and what strangers say for whom no window has room, in one transcript. It hides when it is closed, and
// keeps transcript and place for the whole run.
class HeadLineForm : public Form, public ApplicationPlugIn
{
    Q_OBJECT

public:
    HeadLineForm(FormRegistry& registry, Client& client);
    ~HeadLineForm() override;

    ApplicationPlugIn* Myapplicationplugin() { return this; }
    void WriteMessage(const QString& from, const QString& body, const QString& subject);
    // The place that a form's Tag holds, in twips; 0 when it holds none.
    static int GetLeftProp(const Form& form);
    static int GetTopProp(const Form& form);
    // Shows the window at the place of its Tag, unless it is visible already.
    void showAtPlace();

    // One line, or for an error one a stanza error (RFC 6120, 8.3).
    void OnMessage(PlugInContext& context) override;
    // A presence of type error or close.
    void OnPresence(PlugInContext& context) override;

public slots:
    void Command1_Click();

signals:
    // A presence without a sender said that the server has ended the session.
    void connectionLost();

protected:
    bool queryUnload(CloseMode mode) override;

private:
    std::unique_ptr<Ui::HeadLineForm> ui_;
    Client& client_;
    Stamps stamps_;
};
