#include "session/forms/SignInForm.h"

#include "contacts/Client.h"
#include "desktop/forms/ImageList.h"
#include "engine/Jid.h"
#include "session/ProgramVersion.h"
#include "session/forms/ui_SignInForm.h"
#include "settings/SettingsStore.h"

#include <QSignalBlocker>
#include <QTimer>

#include <chrono>

using namespace std::chrono_literals;

SignInForm::SignInForm(FormRegistry& registry, Client& client, SettingsStore& store)
    : Form(registry, QStringLiteral("SignInForm")), client_(client), store_(store),
      ui_(std::make_unique<Ui::SignInForm>()), timer_(new QTimer(this))
{
    ui_->setupUi(this);
    setCentralWidget(ui_->page);
    timer_->setObjectName(QStringLiteral("Timer1"));
    timer_->setInterval(50ms);
    // Drawn once the window is on its way to the screen.
    QTimer::singleShot(0, ui_->picture, [picture = ui_->picture] {
        picture->setPixmap(ImageList::icon(QStringLiteral("breloim")).pixmap(48));
    });
    ui_->txtServer->setLineEdit(new SelectingLineEdit(ui_->txtServer));
    ui_->txtServer->setCompleter(nullptr);
    ui_->txtUserName->setPlaceholderText(tr("your name on the server"));
    ui_->Label6->setRestingColour(QColor(0x00, 0x00, 0xFF));
    connectControls();
}

// The boxes go later, and lose the focus then.
SignInForm::~SignInForm()
{
    ui_->txtUserName->disconnect(this);
}

void SignInForm::connectControls()
{
    connect(ui_->Connect, &QPushButton::clicked, this, &SignInForm::Connect_Click);
    connect(ui_->CMDDisconnect, &QPushButton::clicked, this, [this] {
        client_.UserClosing = true;
        ++client_.sessionNumber;
        client_.Gateway().DoDisconnect();
        emit disconnected();
    });
    connect(ui_->txtUserName, &QLineEdit::editingFinished, this, &SignInForm::splitJid);
    for (const QLineEdit* field : {static_cast<QLineEdit*>(ui_->txtUserName), ui_->txtServer->lineEdit()})
        connect(field, &QLineEdit::textChanged, ui_->lblMissing, &QLabel::hide);
    connect(ui_->Check1, &QCheckBox::toggled, this, &SignInForm::onCheck1);
    connect(ui_->Check2, &QCheckBox::toggled, this, &SignInForm::onCheck2);
    connect(ui_->Check3, &QCheckBox::toggled, this, [this](bool on) { client_.settings.SSL = on; });
    // The own full JID and the connection both take the setting: what is typed becomes it.
    connect(ui_->txtResource, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (!text.isEmpty())
            client_.settings.Resource = text;
    });
    connect(ui_->Label4, &LinkLabel::activated, this, &SignInForm::preferencesRequested);
    connect(ui_->Label6, &LinkLabel::activated, this,
            [this] { emit pageRequested(QStringLiteral("/node.php?id=526")); });
}

void SignInForm::showEvent(QShowEvent* event)
{
    Form::showEvent(event);
    if (event->spontaneous())
        return;
    QWidget* next = ui_->Connect;
    for (QLineEdit* field : {ui_->txtPassword, ui_->txtUserName})
        if (field->text().isEmpty())
            next = field;
    next->setFocus();
}

void SignInForm::load()
{
    const auto& settings = client_.settings;
    ui_->txtUserName->setText(settings.UserName);
    ui_->txtServer->addItems(
        {client_.site.DefaultServer, client_.site.SisterServer, client_.site.ThirdServer});
    ui_->txtServer->setEditText(settings.Server);
    ui_->version->setText(programVersion());
    if (settings.SavePassword)
        ui_->txtPassword->setText(settings.Password);
    showSettings();
    setDefaultButton(ui_->Connect);
    showConnection(false, false);
    if (settings.AutoLogon) {
        ui_->Check1->setChecked(true);
        onCheck1();
        onCheck2();
        Connect_Click();
    }
}

void SignInForm::showSettings()
{
    const auto& settings = client_.settings;
    const QSignalBlocker quiet[] = {QSignalBlocker(ui_->Check1), QSignalBlocker(ui_->Check2)};
    ui_->Check1->setChecked(settings.SavePassword);
    ui_->Check2->setChecked(settings.AutoLogon);
    ui_->Check3->setChecked(settings.SSL);
    ui_->txtResource->setText(settings.Resource);
}

void SignInForm::showDefaults()
{
    showSettings();
    ui_->txtServer->setEditText(client_.settings.Server);
}

void SignInForm::showRefused()
{
    show();
    ui_->txtPassword->setFocus();
    ui_->txtPassword->selectAll();
}

void SignInForm::showConnection(bool underWay, bool connected)
{
    ui_->Connect->setEnabled(!connected);
    ui_->CMDDisconnect->setEnabled(underWay);
}

void SignInForm::splitJid()
{
    const QString jid = userName();
    const auto at = jid.indexOf(u'@');
    if (at < 0)
        return;
    const QString host = jid::bare(jid.mid(at + 1));
    ui_->txtUserName->setText(jid.left(at));
    // A port that stands there stays.
    if (!host.isEmpty() && server().section(u':', 0, 0).compare(host, Qt::CaseInsensitive) != 0)
        ui_->txtServer->setEditText(host);
}

bool SignInForm::isComplete()
{
    const bool named = !userName().isEmpty();
    if (named && !server().isEmpty())
        return true;
    ui_->lblMissing->setText(named ? tr("Please type the name of the server.")
                                   : tr("Please type your user name."));
    ui_->lblMissing->show();
    (named ? static_cast<QWidget*>(ui_->txtServer) : ui_->txtUserName)->setFocus();
    return false;
}

void SignInForm::onCheck1()
{
    client_.settings.SavePassword = ui_->Check1->isChecked();
    if (client_.settings.SavePassword)
        client_.settings.Password = password();
}

// Kept: ticking it saves the password without ticking the other box, and unticking it leaves that on.
void SignInForm::onCheck2()
{
    client_.settings.AutoLogon = ui_->Check2->isChecked();
    if (!client_.settings.AutoLogon)
        return;
    client_.settings.SavePassword = true;
    client_.settings.Password = password();
}

void SignInForm::Connect_Click()
{
    splitJid();
    if (!isComplete())
        return;
    if (!client_.desktop.network->isConnected())
        client_.desktop.network->dial(false);
    client_.UserClosing = false;
    ++client_.sessionNumber;
    auto& settings = client_.settings;
    // What the account before may do says nothing of this one.
    if (userName() != settings.UserName || server() != settings.Server)
        settings.UserMode = false;
    auto& gateway = client_.Gateway();
    gateway.setSecure(settings.SSL);
    gateway.setProxy(client_.proxy);
    QString resource = settings.Resource;
    client_.sessionResource = resource;
    client_.Core->PluginManager->beginAccount(userName() + u'@' + server());
    gateway.DoConnect(userName(), password(), server(), resource);
    showConnection(true, false);
    emit connecting();
    hide();
    emit progressWanted();
}

QString SignInForm::userName() const
{
    return ui_->txtUserName->text().trimmed();
}
QString SignInForm::server() const
{
    return ui_->txtServer->currentText().trimmed();
}
QString SignInForm::password() const
{
    return ui_->txtPassword->text();
}

bool SignInForm::queryUnload(CloseMode mode)
{
    if (mode == CloseMode::User && !client_.UserClosing) {
        hideInTray();
        return false;
    }
    client_.UserClosing = true;
    return true;
}

// Without an icon to bring it back the window stays in reach.
void SignInForm::hideInTray()
{
    if (!client_.desktop.tray->isReachable())
        return showMinimized();
    hide();
    emit hiddenInTray();
}

bool SignInForm::saveSettings()
{
    auto& settings = client_.settings;
    settings.UserName = userName();
    settings.Server = server();
    if (settings.SavePassword || settings.AutoLogon)
        settings.Password = password();
    return store_.SaveSettings(settings);
}

void SignInForm::unload()
{
    if (!saveSettings())
        client_.desktop.boxes->exclamation(tr("BreloIM"), tr("The settings could not be saved."));
    emit unloaded();
}
