#pragma once

#include "preferences/forms/PreferencePanel.h"

#include <memory>

namespace Ui
{
class AuthorizationUsrCtrl;
}

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
