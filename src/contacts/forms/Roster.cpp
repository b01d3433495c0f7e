#include "contacts/forms/Roster.h"

#include "contacts/Client.h"
#include "contacts/ContactDrop.h"
#include "contacts/FixedGroups.h"
#include "contacts/RosterStanzas.h"
#include "contacts/forms/RosterContextMenu.h"
#include "contacts/forms/RosterView.h"

#include <QVBoxLayout>

Roster::Roster(Client& client, QWidget* parent)
    : QWidget(parent), client_(client), drawing_(client), sync_(client, drawing_),
      presence_(client, drawing_), view_(new RosterView(drawing_.model(), this)),
      menu_(new RosterContextMenu(this))
{
    setObjectName(QStringLiteral("Roster1"));
    setFocusProxy(view_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    setUpView();
    setUpTimers();
}

Roster::~Roster() = default;

void Roster::setUpView()
{
    view_->mayDrag = [this] { return client_.isConnected(); };
    view_->mayEdit = [this](const TreeNode& node) {
        return client_.MyGroups.Exists(node.text) || client_.MyRoster.DoesJIDExist(node.key);
    };
    connect(view_, &RosterView::nodePressed, this, &Roster::rememberDragNode);
    connect(view_, &RosterView::menuRequested, this, &Roster::showMenu);
    connect(menu_, &RosterContextMenu::chosen, this, &Roster::act);
    connect(view_, &RosterView::nodeOpened, this, &Roster::openSelected);
    connect(view_, &RosterView::deletePressed, this, &Roster::removeSelected);
    connect(view_, &RosterView::dropped, this, &Roster::drop);
    auto& model = drawing_.model();
    model.describe = [this](const TreeNode& node) { return describe(node); };
    connect(&model, &ContactTree::labelEdited, this,
            [this](const QString& key, const QString& oldText, const QString& newText) {
                sync_.renamed(key, oldText, newText);
            });
    connect(&model, &ContactTree::modelAboutToBeReset, this, &Roster::applyFont);
    connect(&model, &ContactTree::unsettled, this, [this] { settleTimer_.start(); });
}

void Roster::setUpTimers()
{
    loginTimer_.setObjectName(QStringLiteral("LoginTimer"));
    loginTimer_.setSingleShot(true);
    loginTimer_.start(30000);
    responseTimer_.setObjectName(QStringLiteral("ResposeTimer"));
    responseTimer_.setInterval(15000);
    connect(&responseTimer_, &QTimer::timeout, this, [this] { presence_.responseTimedOut(); });
    presence_.setResponseTimer = [this](bool running) {
        running ? responseTimer_.start() : responseTimer_.stop();
    };
    // Changes that come outside of a tick reach the screen with the next turn of the event loop.
    settleTimer_.setSingleShot(true);
    connect(&settleTimer_, &QTimer::timeout, this, &Roster::settle);
    for (QTimer* timer : {&loginTimer_, &responseTimer_, &settleTimer_})
        timer->setParent(this);
}

QString Roster::describe(const TreeNode& node) const
{
    const auto* item = client_.MyRoster.record(node.key);
    if (!item)
        return {};
    QStringList lines{node.text, item->JID, item->StatusMsg};
    if (view_->isUnread(node))
        lines += tr("A message waits to be read");
    lines.removeAll(QString());
    lines.removeDuplicates();
    return lines.join(u'\n');
}

void Roster::setUnread(const QStringList& jids)
{
    view_->setUnread(jids);
}

void Roster::applyFont()
{
    const auto& settings = client_.settings;
    QFont font(settings.CharOnLineName);
    font.setPointSizeF(qBound(4.0, settings.CharOnLineSize, 72.0));
    font.setItalic(settings.CharOnLineItalic);
    if (view_->font() != font)
        view_->setFont(font);
}

void Roster::InitRoster()
{
    applyFont();
    drawing_.InitRoster();
}

void Roster::RefreshAppearance()
{
    applyFont();
    Refresh();
}

void Roster::AddItem(const QString& JID, const QString& nick, const QString& group, bool IsGateway,
                     bool Online, const QString& subscription, const QString& ask)
{
    sync_.AddItem(JID, nick, group, IsGateway, Online, subscription, ask);
}

bool Roster::AddGroupItem(const QString& name)
{
    return drawing_.tree().addGroup(name, groups::newTag());
}

void Roster::settle()
{
    constexpr std::size_t mostRetired = 200'000; // so that a forgotten editor can't eat the memory
    if (!view_->isBusy() || drawing_.model().retiredCount() > mostRetired)
        drawing_.settle();
}

void Roster::RetriveVCard(const QString& JID)
{
    stanzas::send(client_, stanzas::vCard(JID));
}

const TreeNode* Roster::selectedNode()
{
    settle();
    return view_->selectedNode();
}

QString Roster::SelectedItem()
{
    const TreeNode* node = selectedNode();
    return node ? node->key : QString();
}

QString Roster::SelectedItemTag()
{
    const TreeNode* node = selectedNode();
    return node ? node->tag : QString();
}

void Roster::openSelected()
{
    const TreeNode* node = selectedNode();
    if (!node)
        return;
    const QString key = node->key;
    if (client_.MyAgents.JIDExists(key))
        return emit showPreferences(node->text);
    if (key.compare(client_.Gateway().Server(), Qt::CaseInsensitive) == 0) {
        if (client_.settings.UserMode)
            emit showPreferences(QStringLiteral("Server management"));
        else
            emit showNotices();
        return;
    }
    if (node->text.isEmpty() || !node->children.empty() || node->tag == groups::tag() ||
        client_.MyGroups.Exists(node->text))
        return;
    if (client_.MyBanList.BannedJID(key))
        return client_.desktop.boxes->exclamation(tr("Notification"), tr("The Contact is Blocked !"));
    emit openConversation(key);
}

void Roster::removeSelected()
{
    const QString key = SelectedItem();
    if (client_.isConnected() && client_.MyRoster.DoesJIDExist(key))
        RemoveItem(key);
}

void Roster::renameSelected()
{
    if (const TreeNode* node = selectedNode())
        view_->QAbstractItemView::edit(drawing_.model().indexOf(node));
}

void Roster::sendGatewayPresence(bool available)
{
    if (!client_.Application)
        return;
    auto& packet = client_.Application->OutPacket();
    packet.Clear();
    auto presence = packet.PresenceFields();
    presence.setFrom(client_.ownBareJid());
    presence.setTo(SelectedItem());
    if (available)
        presence.SetAvailable();
    else
        presence.SetUnavailable();
    packet.Send();
}

void Roster::askAuthorisation()
{
    if (!client_.Application)
        return;
    auto& packet = client_.Application->OutPacket();
    packet.Clear();
    auto presence = packet.PresenceFields();
    presence.setTo(SelectedItem());
    presence.SetSubscribe();
    packet.Send();
}

void Roster::rememberDragNode(const TreeNode* node)
{
    if (node && node->text != groups::gateways())
        dragNode_ = node->key;
}

void Roster::showMenu(const TreeNode* node, const QPoint& at)
{
    if (node && !client_.isConnected())
        return;
    menu_->apply(contextmenu::stateFor(node, client_));
    menu_->popup(at);
}

void Roster::act(ContextEntry entry)
{
    switch (entry) {
    case ContextEntry::AddFriend:
        return; // nothing is bound to it
    case ContextEntry::AddGroup:
        return emit addGroupRequested();
    case ContextEntry::GateLogin:
        return sendGatewayPresence(true);
    case ContextEntry::LogoffGate:
        return sendGatewayPresence(false);
    case ContextEntry::RemoveFriend:
        return RemoveItem(SelectedItem());
    case ContextEntry::RenameFriend:
        return renameSelected();
    case ContextEntry::MoveFriend:
        return emit moveContactRequested();
    case ContextEntry::SendMessage:
        return openSelected();
    case ContextEntry::History:
        return emit showHistory(SelectedItem());
    case ContextEntry::ShowVCard:
        return RetriveVCard(SelectedItem());
    case ContextEntry::NotPres:
        return askAuthorisation();
    }
}

void Roster::drop(const QString& target)
{
    const TreeNode* selected = view_->selectedNode();
    contactdrop::drop(client_, drawing_.tree(), dragNode_, target, selected ? selected->key : QString());
}
