#include "preferences/forms/GatewayDescription.h"

#include "ui_GatewayDescription.h"

GatewayDescription::GatewayDescription(Client& client)
    : PreferencePanel(client), ui_(std::make_unique<Ui::GatewayDescription>())
{
    ui_->setupUi(this);
}

GatewayDescription::~GatewayDescription() = default;
