#include "preferences/forms/MessagesUsrCtrl.h"

#include "contacts/Client.h"

#include "ui_MessagesUsrCtrl.h"

namespace
{

// The milliseconds of a text of seconds; 0 when it is no number from 1 to 3600.
int balloonMilliseconds(const QString& seconds)
{
    const int value = (seconds.trimmed() + QStringLiteral("000")).toInt();
    return value >= 1'000 && value <= 3'600'000 ? value : 0;
}

} // namespace

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
    connect(ui_->EnBalloon, &QCheckBox::toggled, this,
            [this](bool on) { client_.settings.BalloonEnable = on; });
    const QStringList seconds = {QStringLiteral("5"),  QStringLiteral("10"), QStringLiteral("15"),
                                 QStringLiteral("20"), QStringLiteral("30"), QStringLiteral("60")};
    bind(ui_->comboBalloonTime, seconds, QString::number(qMax(1, client_.settings.BalloonTime / 1000)),
         [](Settings& settings, const QString& text) { settings.BalloonTime = balloonMilliseconds(text); });
}

MessagesUsrCtrl::~MessagesUsrCtrl() = default;

PreferencePanel::Fault MessagesUsrCtrl::fault() const
{
    if (balloonMilliseconds(ui_->comboBalloonTime->currentText()) == 0)
        return {tr("A balloon can be shown for 1 to 3600 seconds."), ui_->comboBalloonTime};
    return {};
}
