#include "preferences/forms/MessagesUsrCtrl.h"

#include "contacts/Client.h"

#include "ui_MessagesUsrCtrl.h"

namespace
{

// From the text of the seconds to milliseconds; 0 for a text that is no number of seconds from 1 to 3600.
int milliseconds(const QString& seconds)
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
    bind(ui_->EnBalloon, &Settings::BalloonEnable);
    connect(ui_->EnBalloon, &QCheckBox::clicked, this,
            [this](bool on) { client_.settings.BalloonEnable = on; });
    for (const int seconds : {5, 10, 15, 20, 30, 60})
        ui_->comboBalloonTime->addItem(QString::number(seconds));
    ui_->comboBalloonTime->setEditText(QString::number(client_.settings.BalloonTime / 1000));
    onSave([this](Settings& settings) {
        settings.BalloonTime = milliseconds(ui_->comboBalloonTime->currentText());
    });
}

MessagesUsrCtrl::~MessagesUsrCtrl() = default;

PreferencePanel::Fault MessagesUsrCtrl::fault() const
{
    if (milliseconds(ui_->comboBalloonTime->currentText()) == 0)
        return {tr("A balloon can be shown for 1 to 3600 seconds."), ui_->comboBalloonTime};
    return {};
}
