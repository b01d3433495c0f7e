#pragma once

#include "preferences/forms/PreferencePanel.h"

#include <memory>

namespace Ui
{
class AuthorizationUsrCtrl;
class GatewayDescription;
class StatusMessagesUsrCtrl;
} // namespace Ui

// The pages that show their settings, or a text, and know no rule of their own.

// The page of what strangers may do: ask for an authorization, send messages.
class AuthorizationUsrCtrl : public PreferencePanel
{
    Q_OBJECT

public:
    explicit AuthorizationUsrCtrl(Client& client);
    ~AuthorizationUsrCtrl() override;

private:
    std::unique_ptr<Ui::AuthorizationUsrCtrl> ui_;
};

// The page of the status that changes by itself.
class StatusMessagesUsrCtrl : public PreferencePanel
{
    Q_OBJECT

public:
    explicit StatusMessagesUsrCtrl(Client& client);
    ~StatusMessagesUsrCtrl() override;

private:
    std::unique_ptr<Ui::StatusMessagesUsrCtrl> ui_;
};

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

// A category without settings: its heading stands on the form.
class EmptyPanel : public PreferencePanel
{
    Q_OBJECT

public:
    explicit EmptyPanel(Client& client);
};
