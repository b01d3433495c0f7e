#pragma once

#include "desktop/forms/Form.h"

#include <memory>

namespace Ui
{
class RestoreRegForm;
}

// Asks whether the settings are to be reset. Modal.
class RestoreRegForm : public Form
{
    Q_OBJECT

public:
    explicit RestoreRegForm(FormRegistry& registry);
    ~RestoreRegForm() override;

signals:
    // Yes was chosen; the form closes afterwards.
    void confirmed();

private:
    std::unique_ptr<Ui::RestoreRegForm> ui_;
};
