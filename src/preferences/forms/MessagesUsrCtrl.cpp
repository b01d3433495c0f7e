#include "preferences/forms/MessagesUsrCtrl.h"

#include "contacts/Client.h"
#include "preferences/PreferenceRules.h"

#include "ui_MessagesUsrCtrl.h"

MessagesUsrCtrl::MessagesUsrCtrl(Client& client)
    : PreferencePanel(client), ui_(std::make_unique<Ui::MessagesUsrCtrl>())
{
    ui_->setupUi(this);
    bind(ui_->chkOldWindow, &Settings::CurrentWindowOnTop);
    bind(ui_->chkbringtofront, &Settings::NewWindowOnTop);
    bind(ui_->chkError, &Settings::CheckError);
    bind(ui_->chkGateways, &Settings::CheckGateways);
    bind(ui_->chkMSN, &Settings::CheckHotmail);
    bind(ui_->chkYAHOO, &Settings::CheckYahooMail);
    ui_->EnBalloon->setChecked(client_.settings.BalloonEnable);
    connect(ui_->EnBalloon, &QCheckBox::clicked, this,
            [this](bool on) { client_.settings.BalloonEnable = on; });
    const QStringList seconds = {QStringLiteral("5"),  QStringLiteral("10"), QStringLiteral("15"),
                                 QStringLiteral("20"), QStringLiteral("30"), QStringLiteral("60")};
    bind(ui_->comboBalloonTime, seconds, QString::number(qMax(1, client_.settings.BalloonTime / 1000)),
         [](Settings& settings, const QString& text) {
             settings.BalloonTime = preferences::balloonMilliseconds(text);
         });
}

MessagesUsrCtrl::~MessagesUsrCtrl() = default;

PreferencePanel::Fault MessagesUsrCtrl::fault() const
{
    if (preferences::balloonMilliseconds(ui_->comboBalloonTime->currentText()) == 0)
        return {tr("A balloon can be shown for 1 to 3600 seconds."), ui_->comboBalloonTime};
    return {};
}
