#include "preferences/forms/ConnectionUsrCtrl.h"

#include "contacts/Client.h"
#include "settings/CRegistry.h"
#include "settings/SettingsStore.h"

#include "ui_ConnectionUsrCtrl.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QSignalBlocker>

namespace
{

QString startEntry()
{
    return QStringLiteral("BreloIM");
}

// Whether the desktop is to start the program with the person's session. False when its list of programs
// could not be changed.
bool setStartEntry(bool on)
{
    CRegistry registry;
    if (!registry.openOrCreateKey())
        return false;
    return on ? registry.setStringValue(startEntry(), QCoreApplication::applicationFilePath())
              : registry.deleteValue(startEntry());
}

// Whether the text can be a host's name or IP address, without a port.
bool isHost(const QString& text)
{
    static const QRegularExpression nameOrIpv6(
        QStringLiteral("^([^\\s:/@]+|[0-9A-Fa-f:.]*:[0-9A-Fa-f:.]*:[0-9A-Fa-f:.]*)$"));
    return nameOrIpv6.match(text.trimmed()).hasMatch();
}

} // namespace

ConnectionUsrCtrl::ConnectionUsrCtrl(Client& client, SettingsStore& store)
    : PreferencePanel(client), store_(store), ui_(std::make_unique<Ui::ConnectionUsrCtrl>())
{
    ui_->setupUi(this);
    bind(ui_->chkAutoLogon, &Settings::AutoLogon);
    bind(ui_->Check2, &Settings::SavePassword);
    // A log-in by itself needs the password.
    connect(ui_->chkAutoLogon, &QCheckBox::toggled, this, &ConnectionUsrCtrl::keepPassword);
    keepPassword();
    // What the desktop will do counts, not what was once wished.
    ui_->Check1->setChecked(CRegistry::hasValue(startEntry()));
    connect(ui_->Check1, &QCheckBox::toggled, this, &ConnectionUsrCtrl::Check1_Click);
    connect(ui_->cmdForbid, &QPushButton::clicked, this, &ConnectionUsrCtrl::forbidPlain);
    showPlain();
    showProxy();
    onSave([this](Settings&) { saveProxy(); });
}

ConnectionUsrCtrl::~ConnectionUsrCtrl() = default;

void ConnectionUsrCtrl::keepPassword()
{
    const bool automatic = ui_->chkAutoLogon->isChecked();
    if (automatic)
        ui_->Check2->setChecked(true);
    ui_->Check2->setEnabled(!automatic);
}

void ConnectionUsrCtrl::Check1_Click(bool on)
{
    if (setStartEntry(on)) {
        client_.settings.BeginAtStartup = on;
        return;
    }
    const QSignalBlocker quiet(ui_->Check1);
    ui_->Check1->setChecked(!on);
    tell(tr("The desktop's list of programs to start can't be changed."));
}

void ConnectionUsrCtrl::showPlain()
{
    ui_->cmbPlain->clear();
    ui_->cmbPlain->addItems(store_.plainPasswordServers());
    ui_->frPlain->setVisible(ui_->cmbPlain->count() > 0);
}

void ConnectionUsrCtrl::forbidPlain()
{
    if (!store_.forbidPlainPassword(ui_->cmbPlain->currentText()))
        tell(tr("The settings could not be saved."));
    showPlain();
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
    const bool password = ui_->chkTypeS5->isChecked(); // SOCKS 4 knows a user and no password
    const std::pair<QWidget*, bool> fields[] = {
        {ui_->lblName, on},  {ui_->txtName, on},  {ui_->lblPort, on},      {ui_->txtPort, on},
        {ui_->lblUName, on}, {ui_->txtUName, on}, {ui_->lblPWD, password}, {ui_->txtPWD, password}};
    for (const auto& [field, enabled] : fields)
        field->setEnabled(enabled);
}

PreferencePanel::Fault ConnectionUsrCtrl::fault() const
{
    if (!ui_->chkTypeNone->isChecked() && !isHost(ui_->txtName->text()))
        return {tr("Please, enter the proxy server's host, and its port in the field below."), ui_->txtName};
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
