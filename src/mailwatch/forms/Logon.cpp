#include "mailwatch/forms/Logon.h"

#include "contacts/Client.h"
#include "desktop/forms/ImageList.h"
#include "settings/SettingsStore.h"

#include "ui_Logon.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace
{

const QString watchingPicture = QStringLiteral("mailwatch");
const QString newMailPicture = QStringLiteral("newmail");

} // namespace

Logon::Logon(FormRegistry& registry, Client& client, SettingsStore& store, Farewells& farewells)
    : Form(registry, QStringLiteral("Logon")), client_(client), store_(store),
      ui_(std::make_unique<Ui::Logon>()), watch_(*client.desktop.http, farewells),
      icon_(ImageList::icon, this)
{
    ui_->setupUi(this);
    setWindowIcon(ImageList::icon(watchingPicture));
    setDefaultButton(ui_->OKButton);
    setCancelButton(ui_->CancelButton);
    connect(ui_->OKButton, &QPushButton::clicked, this, &Logon::OKButton_Click);
    connect(ui_->CancelButton, &QPushButton::clicked, this, &Logon::CancelButton_Click);
    connectMenu();
    tmrNotify_.setParent(this);
    tmrNotify_.setObjectName(QStringLiteral("tmrNotify"));
    tmrNotify_.setInterval(15'000);
    connect(&tmrNotify_, &QTimer::timeout, &watch_, &MailWatch::poll);
    connect(&watch_, &MailWatch::subscribed, this, &Logon::showSubscribed);
    connect(&watch_, &MailWatch::failed, this, &Logon::showFault);
    connect(&watch_, &MailWatch::newMail, this, &Logon::tellNewMail);
}

Logon::~Logon() = default;

void Logon::connectMenu()
{
    icon_.setContextMenu(ui_->mPopSys);
    connect(&icon_, &QtTrayIcon::doubleClicked, this, &Logon::openFolder);
    connect(ui_->mPopSysSub0, &QAction::triggered, this, &Logon::composeMessage);
    connect(ui_->mPopSysSub1, &QAction::triggered, this, [this] { OpenInBrowser(Url); });
    connect(ui_->mPopSysSub2, &QAction::triggered, this, &Logon::toggle);
    connect(ui_->mPopSysSub3, &QAction::triggered, this, &Logon::unloadNow);
    enableMenu(false);
}

// Its entries are about the watch that runs.
void Logon::enableMenu(bool isOn)
{
    for (auto* entry : ui_->mPopSys->actions())
        entry->setEnabled(isOn);
}

void Logon::Initialize(const std::optional<MailLogin>& typed)
{
    Cancelled = true;
    if (!isVisible() && !watch_.isRunning()) {
        const auto stored = store_.mailLogin();
        if (stored)
            fill(*stored);
        ui_->ChkSave->setChecked(stored.has_value());
        if (typed)
            fill(*typed);
    }
    // Elsewhere the icon has the menu.
    ui_->menubar->setVisible(watch_.isRunning() && !client_.desktop.tray->isReachable());
    QLineEdit* const boxes[] = {ui_->txtUrl, ui_->txtLogon, ui_->txtPassword};
    const auto empty =
        std::ranges::find_if(boxes, [](const QLineEdit* box) { return box->text().isEmpty(); });
    setEntry(empty == std::end(boxes) ? ui_->txtUrl : *empty);
    bringUp();
}

void Logon::fill(const MailLogin& login)
{
    ui_->txtUrl->setText(login.Url);
    ui_->txtLogon->setText(login.Username);
}

MailLogin Logon::typed() const
{
    return {ui_->txtLogon->text(), MailFolder(ui_->txtUrl->text()).text()};
}

void Logon::OKButton_Click()
{
    const QPointer<Logon> guard(this);
    if (!keepLogin())
        client_.desktop.boxes->exclamation(tr("BreloIM"), tr("The settings could not be saved."));
    if (!guard || !registry().isLoaded(this))
        return;
    stop();
    Cancelled = false;
    const MailFolder folder(ui_->txtUrl->text());
    Url = folder.text();
    User = ui_->txtLogon->text();
    Password = ui_->txtPassword->text();
    showAsking(true);
    watch_.begin(folder, User, Password);
}

bool Logon::keepLogin()
{
    return store_.keepMailLogin(ui_->ChkSave->isChecked() ? std::optional(typed()) : std::nullopt);
}

void Logon::CancelButton_Click()
{
    Cancelled = true;
    if (watch_.isBeginning())
        stop();
    leaveSight();
}

void Logon::showAsking(bool isAsking)
{
    isAsking ? setCursor(Qt::WaitCursor) : unsetCursor();
    for (QWidget* control : {static_cast<QWidget*>(ui_->OKButton), static_cast<QWidget*>(ui_->fields)})
        control->setEnabled(!isAsking);
    if (isAsking)
        ui_->CancelButton->setFocus();
}

// While a watch runs there is a way back: the icon's, or else the task bar's.
void Logon::leaveSight()
{
    if (!watch_.isRunning() || client_.desktop.tray->isReachable())
        return hide();
    ui_->menubar->show();
    showMinimized();
}

void Logon::showSubscribed()
{
    showAsking(false);
    NewMailPending_ = false;
    ui_->mPopSysSub2->setText(tr("&Disabilita notifiche"));
    icon_.setIcon(watchingPicture);
    icon_.setToolTip(tr("Sto controllando per nuove e-mail"));
    icon_.appear();
    enableMenu(true);
    tmrNotify_.start();
    const QPointer<Logon> guard(this);
    client_.desktop.boxes->information(
        tr("BreloIM"),
        tr("L'utente %1 è stato correttamente sottoscritto per le notifiche da %2\n\nClicca il "
           "pulsante destro del mouse sull'icona nella barra di stato per modificare o "
           "disabilitare le notifiche.")
            .arg(User, Url));
    if (guard && registry().isLoaded(this))
        leaveSight();
}

void Logon::showFault(MailWatch::Fault fault)
{
    stop();
    const QPointer<Logon> guard(this);
    tell(faultText(fault));
    if (guard)
        unloadNow();
}

QString Logon::faultText(MailWatch::Fault fault) const
{
    switch (fault) {
    case MailWatch::Fault::NoAccess:
        return tr("Non hai accesso a questo URL contenitore. Verifica nome utente e password.");
    case MailWatch::Fault::NoSubscription:
        return tr("Non posso usare l'URL %1 per la sottoscrizione alla notifica.").arg(Url);
    case MailWatch::Fault::NotRenewed:
        return tr("L'applicazione non riesce a sottoscriversi nuovamente alle notifiche. Sto terminando "
                  "normalmente.");
    case MailWatch::Fault::NotSubscribed:
        break;
    }
    return tr("Si è verificato un errore durante la sottoscrizione. Verifica che l'URL sia corretto.");
}

void Logon::tell(const QString& text)
{
    client_.desktop.boxes->exclamation(tr("BreloIM"), text);
}

// Nothing of a watch is left.
void Logon::stop()
{
    watch_.end();
    tmrNotify_.stop();
    icon_.disappear();
    enableMenu(false);
    showAsking(false);
}

void Logon::tellNewMail()
{
    NewMailPending_ = true;
    icon_.setIcon(newMailPicture);
    icon_.setToolTip(tr("Hai nuove e-mail non aperte"));
    if (!client_.settings.BalloonEnable)
        return;
    auto& tray = *client_.desktop.tray;
    tray.setBalloonIcon(1);
    tray.setBalloonTitle(tr("BreloIM : Notifica evento!"));
    tray.setBalloonText(
        tr("E' arrivata una nuova mail, clicca sull'icona nella barra di stato per leggerela !"));
    tray.setBalloonTime(client_.settings.BalloonTime);
    tray.showBalloon();
}

// The double click on the icon.
void Logon::openFolder()
{
    if (std::exchange(NewMailPending_, false)) {
        icon_.setIcon(watchingPicture);
        icon_.setToolTip(watch_.MailWatchEnabled() ? tr("Sto controllando per nuove e-mail")
                                                   : tr("Controllo spento"));
    }
    OpenInBrowser(Url);
}

void Logon::toggle()
{
    const bool wasEnabled = watch_.MailWatchEnabled();
    ui_->mPopSysSub2->setText(wasEnabled ? tr("&Abilita Notifiche") : tr("&Disabilita Notifiche"));
    icon_.setToolTip(wasEnabled ? tr("Controllo spento") : tr("Sto controllando per nuove e-mail"));
    wasEnabled ? tmrNotify_.stop() : tmrNotify_.start();
    watch_.setEnabled(!wasEnabled);
}

void Logon::composeMessage()
{
    const QString address = watch_.folder().composeAddress();
    if (address.isEmpty())
        tell(tr("Non posso creare nuovi messaggi, l'URL fornito non contiene sufficienti informazioni per "
                "portare a termine l'azione richiesta."));
    else
        OpenInBrowser(address);
}

void Logon::OpenInBrowser(const QString& url)
{
    if (!client_.desktop.links->open(MailFolder::link(url)))
        client_.desktop.boxes->exclamation(tr("URL Failed"), tr("La pagina Web non è stata aperta."));
}

bool Logon::queryUnload(CloseMode mode)
{
    if (client_.UserClosing || mode == CloseMode::System)
        return true;
    // The end of a session asks too.
    if (mode == CloseMode::User && watch_.isRunning())
        leaveSight();
    return mode == CloseMode::User && !watch_.isRunning();
}

void Logon::unload()
{
    emit leaving(typed());
    stop();
    Password.clear();
    ui_->txtPassword->clear();
}
