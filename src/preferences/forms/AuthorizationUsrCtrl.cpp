#include "preferences/forms/AuthorizationUsrCtrl.h"

#include "contacts/Client.h"

#include "ui_AuthorizationUsrCtrl.h"

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
