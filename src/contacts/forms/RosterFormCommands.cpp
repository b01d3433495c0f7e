#include "contacts/forms/RosterForm.h"

#include "contacts/Client.h"
#include "contacts/RosterStanzas.h"
#include "contacts/forms/AddGroupForm.h"
#include "contacts/forms/MoveFriendForm.h"
#include "contacts/forms/Roster.h"
#include "desktop/forms/Form.h"
#include "engine/Jid.h"

#include "ui_RosterForm.h"

// The menus and the tool bar of the main window.

void RosterForm::connectBreloMenu()
{
    connect(ui_->mRosterTConn, &QAction::triggered, this, &RosterForm::connectRequested);
    connect(ui_->cmdConnect, &QPushButton::clicked, this, &RosterForm::connectRequested);
    connect(ui_->mRosterTDiscon, &QAction::triggered, this, &RosterForm::mRosterTDiscon_Click);
    connect(ui_->mRosterTBeginC, &QAction::triggered, this, &RosterForm::startChat);
    connect(ui_->mRosterTGRChat, &QAction::triggered, this, &RosterForm::groupChatRequested);
    connect(ui_->mRosterTPref, &QAction::triggered, this,
            [this] { emit showPreferences(QStringLiteral("Personal")); });
    connect(ui_->mRosterTGateways, &QAction::triggered, this,
            [this] { emit showPreferences(QStringLiteral("Gateways")); });
    connect(ui_->mRosterTExit, &QAction::triggered, this, &RosterForm::exitRequested);
}

void RosterForm::connectFriendsMenu()
{
    connect(ui_->mRosterFriends, &QMenu::aboutToShow, this, [this] {
        ui_->mRosterFDel->setEnabled(contextmenu::isContact(Roster1->selectedNode(), client_));
    });
    connect(ui_->mRosterFFind, &QAction::triggered, this, &RosterForm::mRosterFFind_Click);
    connect(ui_->mRosterFDel, &QAction::triggered, Roster1, &Roster::removeSelected);
    connect(ui_->mRosterFShowAll, &QAction::triggered, this, &RosterForm::switchShowAll);
    connect(ui_->mRosterFRefr, &QAction::triggered, this, &RosterForm::refreshList);
    connect(ui_->mRosterFCreate, &QAction::triggered, this, &RosterForm::showAddGroup);
    connect(ui_->mRosterFModVCard, &QAction::triggered, this,
            [this] { Roster1->RetriveVCard(client_.ownBareJid()); });
    connect(ui_->mRosterFContrVC, &QAction::triggered, this, &RosterForm::checkVCard);
    connect(ui_->mRosterFBlocked, &QAction::triggered, this,
            [this] { emit showPreferences(QStringLiteral("Privacy")); });
}

void RosterForm::connectStatusMenu()
{
    connect(ui_->mRosterSAvailable, &QAction::triggered, this, &RosterForm::mRosterSAvailable_Click);
    connect(ui_->mRosterSAway, &QAction::triggered, this, &RosterForm::mRosterSAway_Click);
    connect(ui_->mRosterSXAway, &QAction::triggered, this, &RosterForm::mRosterSXAway_Click);
    connect(ui_->mRosterSDND, &QAction::triggered, this, &RosterForm::mRosterSDND_Click);
    connect(ui_->mRosterSFFC, &QAction::triggered, this, &RosterForm::mRosterSFFC_Click);
}

void RosterForm::connectHelpMenu()
{
    const std::pair<QAction*, const char*> pages[] = {
        {ui_->mRosterHelponline, "/module.php?mod=book"},
        {ui_->mRosterHQuickGuide, "/var/BreloIM/IM_Guide.html"},
        {ui_->mRosterHBug, "/module.php?mod=forum"},
        {ui_->mRosterHFunz, "/module.php?mod=forum"},
    };
    for (const auto& [action, path] : pages)
        connect(action, &QAction::triggered, this,
                [this, page = QString::fromLatin1(path)] { openHelp(page); });
    connect(ui_->mRosterHAbout, &QAction::triggered, this, &RosterForm::aboutRequested);
    connect(ui_->mRosterServerName, &QAction::triggered, this,
            [this] { emit showPreferences(QStringLiteral("Server management")); });
}

void RosterForm::connectToolbar()
{
    connect(ui_->Toolbar1Button1, &QAction::toggled, this, &RosterForm::toggleConnection);
    connect(ui_->Toolbar1Button2, &QAction::triggered, this, &RosterForm::mRosterFFind_Click);
    connect(ui_->Toolbar1Button3, &QAction::triggered, this, &RosterForm::groupChatRequested);
    connect(ui_->Toolbar1Button4, &QAction::toggled, this, [this](bool on) {
        if (on != client_.settings.ShowOnlineUsers)
            switchShowAll();
    });
    connect(ui_->Toolbar1Button5, &QAction::triggered, this, &RosterForm::refreshList);
    connect(ui_->Toolbar1Button6, &QAction::triggered, this, &RosterForm::openWebLogin);
    connect(ui_->Toolbar1Button7, &QAction::triggered, this, &RosterForm::mailWatcherRequested);
}

void RosterForm::connectRoster()
{
    connect(Roster1, &Roster::told, this, &RosterForm::tell);
    connect(Roster1, &Roster::announced, this, &RosterForm::showAnnounced);
    connect(Roster1, &Roster::openConversation, this,
            [this](const QString& jid) { emit openConversation(jid, true); });
    connect(Roster1, &Roster::showPreferences, this, &RosterForm::showPreferences);
    connect(Roster1, &Roster::showNotices, this, &RosterForm::showNotices);
    connect(Roster1, &Roster::showHistory, this, &RosterForm::showHistory);
    connect(Roster1, &Roster::addGroupRequested, this, &RosterForm::showAddGroup);
    connect(Roster1, &Roster::moveContactRequested, this, &RosterForm::showMoveFriend);
}

void RosterForm::toggleConnection(bool on)
{
    if (on == connectedShown_)
        return;
    ui_->Toolbar1Button1->setChecked(connectedShown_); // the session decides, not the click
    if (client_.isConnected())
        emit disconnectRequested();
    else
        emit connectRequested();
}

void RosterForm::switchShowAll()
{
    if (client_.isConnected()) {
        client_.settings.ShowOnlineUsers = !client_.settings.ShowOnlineUsers;
        Roster1->Refresh();
    }
    showSwitch();
}

void RosterForm::startChat()
{
    const TreeNode* selected = Roster1->selectedNode();
    if (selected && selected->parent) // a folder is nobody
        return emit openConversation(selected->key, false);
    auto& boxes = *client_.desktop.boxes;
    const SameSession same(client_);
    const auto answer = boxes.show(
        tr("Attention!"), tr("Please, select a contact first; do you want to add the identifier directly?"),
        MessageBoxes::Icon::Question, MessageBoxes::Buttons::YesNoCancel);
    if (answer != MessageBoxes::Answer::Yes || !same)
        return;
    const auto jid =
        boxes.input(tr("Manual Input"), tr("Add the complete contact's identifier..."), QString());
    if (!same || !jid || jid->trimmed().isEmpty())
        return;
    if (jid::isValid(jid->trimmed()))
        emit openConversation(jid->trimmed(), true);
    else
        boxes.exclamation(tr("Attention!"), tr("This is no contact's identifier: %1").arg(jid->trimmed()));
}

void RosterForm::refreshList()
{
    Roster1->Refresh();
    if (Roster1->IsInitiated())
        tell(tr("The contact list was refreshed."));
}

void RosterForm::checkVCard()
{
    const SameSession same(client_);
    const auto jid = client_.desktop.boxes->input(
        tr("Check a vCard"),
        tr("Please, enter a valid address, for example user@%1").arg(client_.site.DefaultServer), QString());
    if (same && jid && !jid->trimmed().isEmpty())
        Roster1->RetriveVCard(jid->trimmed());
}

void RosterForm::mRosterFFind_Click()
{
    if (client_.isConnected() && stanzas::send(client_, stanzas::browseServices(client_.Gateway().Server())))
        emit findContactsRequested();
    else
        tell(tr("You are not connected."));
}

void RosterForm::openSite(const QString& path)
{
    if (client_.site.WebSite.isEmpty())
        tell(tr("No web site is set up, so there is no page to open."));
    else if (!client_.desktop.links->open(QStringLiteral("https://") + client_.site.WebSite + path))
        tell(tr("The page could not be opened."));
}

void RosterForm::openHelp(const QString& path)
{
    if (client_.isConnected())
        openSite(path);
}

// The browser is the person's own, so they sign in there: a password can't be handed to it without leaving
// traces.
void RosterForm::openWebLogin()
{
    openSite(QStringLiteral("/module.php?mod=user&op=Login"));
}

void RosterForm::showAddGroup()
{
    auto& form = registry().single<AddGroupForm>(
        QStringLiteral("AddGroupForm"), [this] { return new AddGroupForm(registry(), client_, *Roster1); });
    form.showAbove(*this);
}

void RosterForm::showMoveFriend()
{
    const TreeNode* node = Roster1->selectedNode();
    if (!node || !node->parent)
        return;
    auto& form = registry().single<MoveFriendForm>(QStringLiteral("MoveFriendForm"), [this] {
        auto* made = new MoveFriendForm(registry(), client_);
        connect(made, &MoveFriendForm::told, this, &RosterForm::tell);
        return made;
    });
    form.setContact(*node);
    form.showAbove(*this);
}
