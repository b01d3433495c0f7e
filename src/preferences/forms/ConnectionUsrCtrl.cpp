#include "preferences/forms/ConnectionUsrCtrl.h"

#include "contacts/Client.h"
#include "settings/CRegistry.h"

#include "ui_ConnectionUsrCtrl.h"

#include <QCoreApplication>

namespace
{

QString startEntry()
{
    return QStringLiteral("BreloIM");
}

bool startsWithSystem()
{
    CRegistry registry;
    return registry.openOrCreateKey() && registry.hasValue(startEntry());
}

bool startWithSystem(bool on)
{
    CRegistry registry;
    if (!registry.openOrCreateKey())
        return false;
    return on ? registry.setStringValue(startEntry(), QCoreApplication::applicationFilePath())
              : registry.deleteValue(startEntry());
}

} // namespace

ConnectionUsrCtrl::ConnectionUsrCtrl(Client& client)
    : PreferencePanel(client), ui_(std::make_unique<Ui::ConnectionUsrCtrl>())
{
    ui_->setupUi(this);
    bind(ui_->chkAutoLogon, &Settings::AutoLogon);
    bind(ui_->Check1, &Settings::BeginAtStartup);
    bind(ui_->Check2, &Settings::SavePassword);
    // What the desktop will do counts, not what was once wished.
    ui_->Check1->setChecked(startsWithSystem());
    connect(ui_->Check1, &QCheckBox::clicked, this, &ConnectionUsrCtrl::Check1_Click);
    showProxy();
    onSave([this](Settings&) { saveProxy(); });
}

ConnectionUsrCtrl::~ConnectionUsrCtrl() = default;

void ConnectionUsrCtrl::Check1_Click(bool on)
{
    if (startWithSystem(on)) {
        client_.settings.BeginAtStartup = on;
        return;
    }
    ui_->Check1->setChecked(!on);
    client_.desktop.boxes->exclamation(tr("Preferences"),
                                       tr("The desktop's list of programs to start can't be changed."));
}

void ConnectionUsrCtrl::showProxy()
{
    const auto& proxy = client_.proxy;
    ui_->chkTypeNone->setChecked(proxy.kind == ProxyServer::Kind::None);
    ui_->chkTypeS4->setChecked(proxy.kind == ProxyServer::Kind::Socks4);
    ui_->chkTypeS5->setChecked(proxy.kind == ProxyServer::Kind::Socks5);
    ui_->txtName->setText(proxy.host);
    if (proxy.port)
        ui_->txtPort->setValue(proxy.port);
    ui_->txtUName->setText(proxy.user);
    ui_->txtPWD->setText(proxy.password);
    for (auto* button : {ui_->chkTypeNone, ui_->chkTypeS4, ui_->chkTypeS5})
        connect(button, &QRadioButton::toggled, this, &ConnectionUsrCtrl::enableProxyFields);
    enableProxyFields();
}

void ConnectionUsrCtrl::enableProxyFields()
{
    const bool on = !ui_->chkTypeNone->isChecked();
    for (QWidget* field : std::initializer_list<QWidget*>{ui_->txtName, ui_->txtPort, ui_->txtUName})
        field->setEnabled(on);
    ui_->txtPWD->setEnabled(ui_->chkTypeS5->isChecked()); // SOCKS 4 knows a user and no password
}

PreferencePanel::Fault ConnectionUsrCtrl::fault() const
{
    if (!ui_->chkTypeNone->isChecked() && ui_->txtName->text().trimmed().isEmpty())
        return {tr("Please, enter the proxy server's host."), ui_->txtName};
    return {};
}

void ConnectionUsrCtrl::saveProxy()
{
    auto& proxy = client_.proxy;
    proxy.kind = ui_->chkTypeS4->isChecked()   ? ProxyServer::Kind::Socks4
                 : ui_->chkTypeS5->isChecked() ? ProxyServer::Kind::Socks5
                                               : ProxyServer::Kind::None;
    proxy.host = ui_->txtName->text().trimmed();
    proxy.port = static_cast<quint16>(ui_->txtPort->value());
    proxy.user = ui_->txtUName->text();
    proxy.password = ui_->txtPWD->text();
}
