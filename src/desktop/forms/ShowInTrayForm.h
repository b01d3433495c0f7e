#pragma once

#include "desktop/forms/Form.h"

#include <memory>

namespace Ui
{
class ShowInTrayForm;
}

// Tells where the main window is when it went from sight or came up out of it.
class ShowInTrayForm : public Form
{
    Q_OBJECT

public:
    explicit ShowInTrayForm(FormRegistry& registry);
    ~ShowInTrayForm() override;

    // In place of the words for a window that was closed.
    void setTexts(const QString& title, const QString& description);

private:
    std::unique_ptr<Ui::ShowInTrayForm> ui_;
};
