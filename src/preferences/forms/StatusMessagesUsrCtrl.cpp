#include "preferences/forms/StatusMessagesUsrCtrl.h"

#include "contacts/Client.h"

#include "ui_StatusMessagesUsrCtrl.h"

StatusMessagesUsrCtrl::StatusMessagesUsrCtrl(Client& client)
    : PreferencePanel(client), ui_(std::make_unique<Ui::StatusMessagesUsrCtrl>())
{
    ui_->setupUi(this);
    bind(ui_->chkIdleMessage, &Settings::AutoAwayTimer);
    bind(ui_->IdleMin, &Settings::AutoAwayTimerMins);
    bind(ui_->txtIdleMessage, &Settings::AutoAwayTimerMsg);
    follow(ui_->chkIdleMessage, {ui_->lblIdleMin, ui_->IdleMin, ui_->lbltxtIdleMessage, ui_->txtIdleMessage});
    bind(ui_->chkAwayMessage, &Settings::AutoXAwayTimer);
    bind(ui_->AwayMin, &Settings::AutoXAwayTimerMins);
    bind(ui_->txtAwayMessage, &Settings::AutoXAwayTimerMsg);
    follow(ui_->chkAwayMessage, {ui_->lblAwayMin, ui_->AwayMin, ui_->lbltxtAwayMessage, ui_->txtAwayMessage});
}

StatusMessagesUsrCtrl::~StatusMessagesUsrCtrl() = default;
