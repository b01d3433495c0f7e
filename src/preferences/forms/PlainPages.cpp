#include "preferences/forms/PlainPages.h"

#include "contacts/Client.h"

#include "ui_AuthorizationUsrCtrl.h"
#include "ui_GatewayDescription.h"
#include "ui_StatusMessagesUsrCtrl.h"

#include <QLabel>
#include <QVBoxLayout>

AuthorizationUsrCtrl::AuthorizationUsrCtrl(Client& client)
    : PreferencePanel(client), ui_(std::make_unique<Ui::AuthorizationUsrCtrl>())
{
    ui_->setupUi(this);
    bind(ui_->rdlAuth1, &Settings::AuthForAll);
    bind(ui_->rdlAuth2, &Settings::AuthDenyAll);
    bind(ui_->rdlAuth3, &Settings::AuthAskForAll);
    bind(ui_->rdlAcceptMsg1, &Settings::AcceptMessageFromAll);
    bind(ui_->rdlAcceptMsg2, &Settings::DoNotReceiveMessFromUnAuth);
    bind(ui_->chkAutoResponce, &Settings::AutoReplayToUnAuth);
    bind(ui_->txtAutoResponce, &Settings::AutoReplayMess);
    if (client_.settings.AutoReplayMess.isEmpty())
        ui_->txtAutoResponce->setText(tr("This is an automatic reply. Excuse me "));
    follow(ui_->chkAutoResponce, {ui_->txtAutoResponce});
}

AuthorizationUsrCtrl::~AuthorizationUsrCtrl() = default;

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

GatewayDescription::GatewayDescription(Client& client)
    : PreferencePanel(client), ui_(std::make_unique<Ui::GatewayDescription>())
{
    ui_->setupUi(this);
}

GatewayDescription::~GatewayDescription() = default;

EmptyPanel::EmptyPanel(Client& client) : PreferencePanel(client)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(tr("Not Implemented Yet"), this), 0, Qt::AlignTop);
}
