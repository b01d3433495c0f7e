#include "contacts/forms/RosterForm.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "contacts/forms/Roster.h"
#include "desktop/forms/ImageList.h"
#include "desktop/forms/StatusPanel.h"
#include "settings/Paths.h"

#include "ui_RosterForm.h"

#include <QLabel>
#include <QToolButton>

namespace
{

constexpr int lowest = 280; // of the window, in logical pixels

} // namespace

RosterForm::RosterForm(FormRegistry& registry, Client& client)
    : Form(registry, QStringLiteral("RosterForm")), Roster1(new Roster(client, this)), client_(client),
      ui_(std::make_unique<Ui::RosterForm>()), autoStatus_(client)
{
    ui_->setupUi(this);
    ui_->page->insertWidget(0, Roster1, 1);
    setUpPictures();
    setUpPanels();
    setUpTimers();
    connectBreloMenu();
    connectFriendsMenu();
    connectStatusMenu();
    connectHelpMenu();
    connectToolbar();
    connectRoster();
    start();
}

RosterForm::~RosterForm() = default;

void RosterForm::setUpPictures()
{
    setWindowIcon(ImageList::icon(QStringLiteral("breloim")));
    const std::pair<QAction*, const char*> pictures[] = {
        {ui_->Toolbar1Button2, "Add"},       {ui_->Toolbar1Button3, "groupchat"},
        {ui_->Toolbar1Button4, "online"},    {ui_->Toolbar1Button5, "Refresh"},
        {ui_->Toolbar1Button6, "browser"},   {ui_->Toolbar1Button7, "Mail"},
        {ui_->mRosterFFind, "Add"},          {ui_->mRosterTGRChat, "groupchat"},
        {ui_->mRosterFDel, "Del"},           {ui_->mRosterFRefr, "Refresh"},
        {ui_->mRosterTGateways, "ServerON"}, {ui_->mRosterFBlocked, "notauth"},
    };
    for (const auto& [action, key] : pictures)
        action->setIcon(ImageList::icon(QString::fromLatin1(key)));
    for (const auto& rule : statusrules::all())
        findChild<QAction*>(QString::fromLatin1(rule.menuItem))
            ->setIcon(ImageList::icon(QString::fromLatin1(rule.imageKey)));
}

void RosterForm::setUpPanels()
{
    ui_->Image1->setBoxes(client_.desktop.boxes);
    ui_->Image1->setExtraDelay(500);
    const QString tips[] = {tr("Status Icon"), tr("Status"), tr("Connection type")};
    for (int panel = 0; panel < 3; ++panel) {
        panels_[panel] = new QLabel(this);
        panels_[panel]->setObjectName(QStringLiteral("StatusBar2Panel%1").arg(panel + 1));
        panels_[panel]->setToolTip(tips[panel]);
        panels_[panel]->setTextFormat(Qt::PlainText);
        ui_->StatusBar2->addWidget(panels_[panel], panel == 1 ? 1 : 0);
    }
    panels_[0]->setAccessibleName(tips[0]);
    line_ = new StatusPanel(ui_->StatusBar1, QStringLiteral("StatusBar1Panel1"));
    connect(line_, &StatusPanel::told, ui_->StatusBar1,
            [bar = ui_->StatusBar1](const QString& text) { bar->setVisible(!text.isEmpty()); });
}

void RosterForm::setUpTimers()
{
    refreshTimer_.setObjectName(QStringLiteral("RefreshTimer"));
    refreshTimer_.setInterval(30000);
    connect(&refreshTimer_, &QTimer::timeout, this, [this] { Roster1->RefreshPresence(); });
    // It looks at the pointer and drops the answer, so that a movement it sees counts as none. Kept.
    autoAway_.setObjectName(QStringLiteral("AutoAway"));
    connect(&autoAway_, &QTimer::timeout, this, [this] { autoStatus_.pointerMoved(); });
    autoAway_.start(1000);
    refreshTimer_.setParent(this);
    autoAway_.setParent(this);
}

void RosterForm::start()
{
    showConnectButton(true);
    showSwitch();
    mRosterSAvailable_Click();
    setWindowTitle(QStringLiteral("BreloIM - ") + client_.ownBareJid());
    applyOnTop();
    ui_->mRosterAdmin->menuAction()->setVisible(false);
    Roster1->setFocus();
}

void RosterForm::applyOnTop()
{
    const bool shown = isVisible();
    const bool onTop = client_.settings.OnTop;
    if (windowFlags().testFlag(Qt::WindowStaysOnTopHint) == onTop)
        return;
    setWindowFlag(Qt::WindowStaysOnTopHint, onTop);
    if (!shown)
        return;
    // A window whose flags change is hidden. It comes back without taking the keys.
    setAttribute(Qt::WA_ShowWithoutActivating);
    show();
    setAttribute(Qt::WA_ShowWithoutActivating, false);
}

void RosterForm::Trigger()
{
    if (client_.isConnected()) {
        if (const auto next = autoStatus_.tick(status_))
            setStatus(*next, true);
    }
    Roster1->settle();
}

void RosterForm::setStatus(StatusCommand command, bool automatic)
{
    autoStatus_.AutoStatusActive = automatic && command != StatusCommand::Available;
    showStatus(command);
    if (client_.isConnected())
        stanzas::send(client_, statusrules::presence(command, client_, automatic));
}

void RosterForm::showAnnounced()
{
    // Many pushes announce one after the other.
    if (status_ != StatusCommand::Available ||
        panels_[1]->text() != statusrules::label(StatusCommand::Available))
        showStatus(StatusCommand::Available);
}

void RosterForm::showStatus(StatusCommand command)
{
    status_ = command;
    showPanel(QString::fromLatin1(statusrules::of(command).imageKey), statusrules::label(command));
    panels_[1]->setToolTip(statusrules::label(command));
    for (const auto& rule : statusrules::all())
        findChild<QAction*>(QString::fromLatin1(rule.menuItem))->setChecked(rule.command == command);
    emit statusChanged(command);
}

void RosterForm::showPanel(const QString& imageKey, const QString& text)
{
    panels_[0]->setPixmap(ImageList::icon(imageKey).pixmap(QSize(16, 16), devicePixelRatioF()));
    panels_[1]->setText(text);
}

void RosterForm::tell(const QString& text)
{
    line_->tell(text, 10000);
}

void RosterForm::showConnectButton(bool connected)
{
    QAction* button = ui_->Toolbar1Button1;
    const QString caption = connected ? tr("Disconnect") : tr("Connect");
    button->setIcon(ImageList::icon(connected ? QStringLiteral("LightOn") : QStringLiteral("LightOff")));
    button->setText(caption);
    button->setToolTip(caption);
    connectedShown_ = connected;
    button->setChecked(connected);
    ui_->mRosterTConn->setEnabled(!connected);
    ui_->mRosterTDiscon->setEnabled(connected);
}

void RosterForm::showSwitch()
{
    const bool onlineOnly = client_.settings.ShowOnlineUsers;
    const QString caption = onlineOnly ? tr("Show all Contacts") : tr("Show Online Contacts Only");
    ui_->mRosterFShowAll->setText(u'&' + caption);
    ui_->Toolbar1Button4->setText(caption);
    ui_->Toolbar1Button4->setToolTip(caption);
    ui_->Toolbar1Button4->setChecked(onlineOnly);
}

void RosterForm::showConnected(bool firstContact)
{
    if (!firstContact) {
        panels_[2]->setText(client_.Gateway().isEncrypted() ? QStringLiteral("SSL") : QStringLiteral("OPEN"));
        showAnnounced();
        return;
    }
    setWindowTitle(QStringLiteral("BreloIM - ") + client_.ownBareJid());
    showConnectButton(true);
    showPanel(ImageList::keyAt(6), statusrules::label(StatusCommand::Available));
    showContactList();
}

void RosterForm::showDisconnected(const QString& reason)
{
    ui_->lblWhy->setText(reason);
    ui_->lblWhy->setVisible(!reason.isEmpty());
    showPanel(ImageList::keyAt(4), QStringLiteral("Diconnected"));
    panels_[2]->clear();
    showConnectButton(false);
    Roster1->hide();
    ui_->waitPanel->show();
    showWholePage();
    // Who was typing in a window that went types on into this one: there no key may press anything.
    (isActiveWindow() ? static_cast<QWidget*>(ui_->cmdConnect) : ui_->waitPanel)->setFocus();
    StartAnimation(paths::applicationFolder() + QStringLiteral("/connect.gif"));
}

// A server's reason may be longer than the smallest window is high.
void RosterForm::showWholePage()
{
    const int around = height() - centralWidget()->height();
    const int page = ui_->waitPanel->layout()->totalHeightForWidth(centralWidget()->width());
    setMinimumHeight(qMax(lowest, around + page));
}

void RosterForm::showContactList()
{
    setMinimumHeight(lowest);
    StopAnimation();
    ui_->waitPanel->hide();
    Roster1->show();
}

void RosterForm::showAdminMenu(const QString& serverName)
{
    ui_->mRosterServerName->setText(QString(serverName).replace(u'&', QStringLiteral("&&")));
    ui_->mRosterAdmin->menuAction()->setVisible(true);
}

void RosterForm::StartAnimation(const QString& path)
{
    ui_->Image1->Start(path);
}
void RosterForm::StopAnimation()
{
    ui_->Image1->Stop();
}

bool RosterForm::queryUnload(CloseMode mode)
{
    if (client_.UserClosing || client_.SessionClosing || mode == CloseMode::System)
        return true;
    showMinimized();
    // Without an icon to bring it back the window stays in reach.
    if (!client_.desktop.tray->isReachable())
        return false;
    hide();
    emit trayMenuState(true, false);
    emit showInTrayRequested();
    return false;
}

void RosterForm::unload()
{
    StopAnimation();
    Roster1->RemoveAll();
    client_.MyRoster.RemoveAll();
    client_.MyAgents.RemoveAll();
    client_.MyGroups.RemoveAll();
    client_.MyBanList.RemoveAll();
}
