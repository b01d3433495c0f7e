#include "contacts/forms/Roster.h"

#include "contacts/Client.h"
#include "contacts/ContactDrop.h"
#include "contacts/FixedGroups.h"
#include "contacts/RosterStanzas.h"
#include "contacts/StatusRules.h"
#include "contacts/forms/RosterContextMenu.h"
#include "contacts/forms/RosterView.h"

#include <QVBoxLayout>

namespace
{

QString nameOf(const CRosterItem& contact)
{
    return contact.nick.isEmpty() ? contact.JID : contact.nick;
}

} // namespace

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
        return node.parent ? contextmenu::isContact(&node, client_) : client_.MyGroups.Exists(node.key);
    };
    connect(view_, &RosterView::nodePressed, this, &Roster::rememberDragNode);
    connect(view_, &RosterView::menuRequested, this, &Roster::showMenu);
    connect(menu_, &RosterContextMenu::chosen, this, &Roster::act);
    connect(view_, &RosterView::nodeOpened, this, &Roster::openSelected);
    connect(view_, &RosterView::deletePressed, this, &Roster::askRemove);
    connect(view_, &RosterView::dropped, this, &Roster::drop);
    auto& model = drawing_.model();
    model.describe = [this](const TreeNode& node) { return describe(node); };
    drawing_.announced = [this] { emit announced(); };
    connect(&model, &ContactTree::labelEdited, this, &Roster::rename);
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
    constexpr qsizetype longest = 500; // a tip of a book's length would stop the window
    const auto* item = node.parent ? client_.MyRoster.record(node.key) : nullptr;
    const bool told = item && item->StatusMsg != item->Status; // "Pending" is a mark, and no word of theirs
    QStringList lines{node.text, item ? item->JID : QString(), stateOf(node),
                      told ? item->StatusMsg.left(longest) : QString()};
    if (view_->isUnread(node))
        lines += tr("A message waits to be read");
    lines.removeAll(QString());
    lines.removeDuplicates();
    return lines.join(u'\n');
}

QString Roster::stateOf(const TreeNode& node) const
{
    const auto* item = client_.MyRoster.record(node.key);
    if (!node.parent)
        return tr("Group, %n contact(s)", nullptr, static_cast<int>(node.children.size()));
    if (node.parent->key == groups::gateways())
        return node.image == u"ServerON" ? tr("On line") : tr("Off line");
    if (client_.MyBanList.BannedJID(node.key))
        return tr("Blocked");
    if (item && item->Ask == u"subscribe")
        return tr("Waiting for an authorization");
    if (!item || !item->Online)
        return item && item->Subscription == u"none" ? tr("Not authorized") : tr("Off line");
    for (const auto& rule : statusrules::all()) {
        if (item->Status == QLatin1String(rule.show))
            return statusrules::label(rule.command);
    }
    return tr("On line");
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
    drawing_.redraw();
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
    if (stanzas::send(client_, stanzas::vCard(JID)))
        emit told(tr("Asked for the vCard of %1.").arg(JID));
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
    if (!node->parent)
        return;
    if (client_.MyAgents.JIDExists(key))
        return emit showPreferences(key);
    if (key.compare(client_.Gateway().Server(), Qt::CaseInsensitive) == 0) {
        if (client_.settings.UserMode)
            emit showPreferences(QStringLiteral("Server management"));
        else
            emit showNotices();
        return;
    }
    if (client_.MyBanList.BannedJID(key))
        return client_.desktop.boxes->exclamation(tr("Notification"), tr("The Contact is Blocked !"));
    emit openConversation(key);
}

const CRosterItem* Roster::selectedContact()
{
    const TreeNode* node = selectedNode();
    const bool open = client_.isConnected() && contextmenu::isContact(node, client_);
    return open ? client_.MyRoster.record(node->key) : nullptr;
}

void Roster::removeSelected()
{
    if (const auto* contact = selectedContact())
        remove(*contact);
}

void Roster::askRemove()
{
    const auto* contact = selectedContact();
    if (!contact)
        return;
    const QString JID = contact->JID;
    const SameSession same(client_);
    const auto answer = client_.desktop.boxes->show(
        tr("Remove Contact"), tr("Do you want to remove %1 from your contact list?").arg(nameOf(*contact)),
        MessageBoxes::Icon::Exclamation, MessageBoxes::Buttons::YesNo);
    const auto* standing = same ? client_.MyRoster.record(JID) : nullptr;
    if (standing && answer == MessageBoxes::Answer::Yes)
        remove(*standing);
}

void Roster::remove(const CRosterItem& contact)
{
    const QString text = tr("Asked to remove %1.").arg(nameOf(contact));
    RemoveItem(contact.JID);
    emit told(text);
}

void Roster::renameSelected()
{
    if (const TreeNode* node = selectedNode())
        view_->QAbstractItemView::edit(drawing_.model().indexOf(node));
}

void Roster::rename(const QString& JID, const QString& text)
{
    sync_.renamed(JID, text);
    emit told(tr("Asked to name %1 \"%2\".").arg(JID, text));
}

void Roster::sendGatewayPresence(bool available)
{
    const QString gateway = SelectedItem();
    auto& packet = client_.Application->OutPacket();
    packet.Clear();
    auto presence = packet.PresenceFields();
    presence.setFrom(client_.ownBareJid());
    presence.setTo(gateway);
    if (available)
        presence.SetAvailable();
    else
        presence.SetUnavailable();
    if (packet.Send())
        emit told(available ? tr("Asked %1 for a session.").arg(gateway)
                            : tr("Asked %1 to end its session.").arg(gateway));
}

void Roster::askAuthorisation()
{
    const QString contact = SelectedItem();
    auto& packet = client_.Application->OutPacket();
    packet.Clear();
    auto presence = packet.PresenceFields();
    presence.setTo(contact);
    presence.SetSubscribe();
    if (packet.Send())
        emit told(tr("Asked %1 for an authorization.").arg(contact));
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
    // The list may have changed, or the connection gone, while the menu stood open.
    const TreeNode* node = selectedNode();
    const auto state = contextmenu::stateFor(node, client_);
    if (!state[static_cast<std::size_t>(entry)].value_or(false) || !client_.isConnected())
        return;
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
        return removeSelected();
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
    const QString key = selected ? selected->key : QString();
    if (contactdrop::drop(client_, drawing_.tree(), dragNode_, target, key))
        emit told(tr("Asked to move %1.").arg(nameOf(*client_.MyRoster.record(dragNode_))));
}
