#pragma once

#include "preferences/forms/PreferencePanel.h"

#include <memory>

namespace Ui
{
class StatusMessagesUsrCtrl;
}

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
