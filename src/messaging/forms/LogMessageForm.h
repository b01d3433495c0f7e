#pragma once

#include "desktop/forms/Form.h"
#include "messaging/LogPages.h"

#include <QString>

#include <memory>
#include <optional>

namespace Ui
{
class LogMessageForm;
}
class ConversationLog;
struct Client;

// Shows a peer's log as it was when the window was opened: its end, and the pages before it when asked for.
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
    using Page = QString (LogPages::*)(QString* error);

    void turn(Page page);
    void fill(const QString& log);
    // What went wrong; empty for success.
    QString save(const QString& path) const;

    std::unique_ptr<Ui::LogMessageForm> ui_;
    Client& client_;
    std::optional<LogPages> pages_;
};
