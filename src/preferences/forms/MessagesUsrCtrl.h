#pragma once

#include "preferences/forms/PreferencePanel.h"

#include <memory>

namespace Ui
{
class MessagesUsrCtrl;
}

// The page of message windows, notices and balloons.
class MessagesUsrCtrl : public PreferencePanel
{
    Q_OBJECT

public:
    explicit MessagesUsrCtrl(Client& client);
    ~MessagesUsrCtrl() override;

    Fault fault() const override;

private:
    std::unique_ptr<Ui::MessagesUsrCtrl> ui_;
};
