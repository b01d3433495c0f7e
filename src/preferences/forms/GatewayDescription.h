#pragma once

#include "preferences/forms/PreferencePanel.h"

#include <memory>

namespace Ui
{
class GatewayDescription;
}

// The page that says what gateways are.
class GatewayDescription : public PreferencePanel
{
    Q_OBJECT

public:
    explicit GatewayDescription(Client& client);
    ~GatewayDescription() override;

private:
    std::unique_ptr<Ui::GatewayDescription> ui_;
};
