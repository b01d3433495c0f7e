#pragma once

#include "desktop/forms/Form.h"

#include <QString>

#include <memory>

namespace Ui
{
class LogMessageForm;
}
class ConversationLog;
struct Client;

// Shows a peer's log as it was when the window was opened.
class LogMessageForm : public Form
{
    Q_OBJECT

public:
    LogMessageForm(FormRegistry& registry, Client& client);
    ~LogMessageForm() override;

    // Fills the window with the log of `peer` and shows it.
    void ShowMessageLog(const ConversationLog& log, const QString& peer);

public slots:
    void mnuEditSave_Click();

private:
    void fill(const QString& log);
    // What went wrong; empty for success.
    QString save(const QString& path) const;

    std::unique_ptr<Ui::LogMessageForm> ui_;
    Client& client_;
};
