#pragma once

#include "desktop/forms/Form.h"

#include <memory>

namespace Ui
{
class ShowInTrayForm;
}

// Tells, when the main window has gone to the tray, that the program runs on there.
class ShowInTrayForm : public Form
{
    Q_OBJECT

public:
    explicit ShowInTrayForm(FormRegistry& registry);
    ~ShowInTrayForm() override;

private:
    std::unique_ptr<Ui::ShowInTrayForm> ui_;
};
