#pragma once

#include "desktop/forms/Form.h"

#include <memory>

namespace Ui
{
class LoggingInForm;
}

// The progress of a sign-in: a text that grows by lines, and Cancel.
class LoggingInForm : public Form
{
    Q_OBJECT

public:
    explicit LoggingInForm(FormRegistry& registry);
    ~LoggingInForm() override;

    void appendLine(const QString& text);

signals:
    void cancelRequested();

protected:
    // The close box is Cancel.
    bool queryUnload(CloseMode mode) override;

private:
    std::unique_ptr<Ui::LoggingInForm> ui_;
};
