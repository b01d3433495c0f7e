#include "contacts/RosterDrawing.h"

#include "contacts/Client.h"
#include "contacts/FixedGroups.h"
#include "contacts/StatusRules.h"

#include <utility>

void RosterDrawing::InitRoster()
{
    tree();
    addFixedGroups();
    IsInitiated = true;
}

void RosterDrawing::addFixedGroups()
{
    tree_.addGroup(groups::gateways(), groups::tag());
    tree_.addGroup(groups::contacts(), groups::tag());
    if (!client_.settings.ShowOnlineUsers)
        tree_.addGroup(groups::waiting(), groups::tag());
}

void RosterDrawing::redraw()
{
    if (IsInitiated && !std::exchange(stale_, true) && tree_.isSettled())
        emit tree_.unsettled();
}

void RosterDrawing::Refresh()
{
    redraw();
    if (!IsInitiated || !client_.Application)
        return;
    // This announces plain availability whatever status is chosen. Kept: the server counts on it.
    auto& packet = client_.Application->OutPacket();
    packet.Clear();
    packet.PresenceFields().SetAvailable();
    if (packet.Send() && announced)
        announced();
}

void RosterDrawing::RemoveAll()
{
    stale_ = false;
    emptied_.clear();
    tree_.clear();
}

bool RosterDrawing::PruneEmptyGroups()
{
    auto& tree = this->tree();
    for (int position = tree.Count(); position >= 1; --position) {
        TreeNode* node = tree.Item(position);
        if (!node)
            continue;
        const bool known = client_.MyGroups.Exists(node->key);
        if (known ? node->children.empty() : node->tag == groups::tag())
            tree.remove(node);
    }
    return true;
}

ContactTree& RosterDrawing::tree()
{
    if (stale_)
        rebuild();
    return tree_;
}

void RosterDrawing::settle()
{
    tree();
    tree_.settle();
}

void RosterDrawing::rebuild()
{
    stale_ = false;
    tree_.clear();
    addFixedGroups();
    addServerRow();
    const int count = client_.MyRoster.Count();
    for (int position = 1; position <= count; ++position)
        draw(*client_.MyRoster.Item(position));
    forgetEmptied();
}

void RosterDrawing::addServerRow()
{
    const QString server = client_.Gateway().Server().toUpper();
    auto& tree = this->tree();
    if (TreeNode* row = tree.add(groups::gateways(), server, server, QStringLiteral("ServerON")))
        tree.setLook(*row, true, client_.settings.ColorOnline);
}

void RosterDrawing::addTransport(const QString& JID, const QString& name, bool online)
{
    const auto& settings = client_.settings;
    auto& tree = this->tree();
    TreeNode* row = tree.add(groups::gateways(), JID, name,
                             online ? QStringLiteral("ServerON") : QStringLiteral("ServerOFF"));
    if (row)
        tree.setLook(*row, online && settings.CharOnLineBold,
                     online ? settings.ColorOnline : settings.ColorOffline);
}

TreeNode* RosterDrawing::group(const QString& name, const QString& tagWhenMade)
{
    auto& tree = this->tree();
    TreeNode* standing = tree.folder(name);
    return standing ? standing : tree.addGroup(name, tagWhenMade);
}

TreeNode* RosterDrawing::addContact(const QString& parent, const QString& JID, const QString& text,
                                    const QString& image)
{
    auto& tree = this->tree();
    TreeNode* node = tree.add(parent, JID, text, image);
    if (node)
        tree.setLook(*node, false, client_.settings.ColorOffline);
    return node;
}

void RosterDrawing::addNew(const QString& parent, const QString& JID, const QString& text,
                           const QString& image)
{
    // A rebuild that is due draws it with the others.
    if (stale_ || client_.settings.ShowOnlineUsers)
        return;
    group(parent, parent == groups::hidden() ? groups::tag() : QString());
    addContact(parent, JID, text, image);
}

QString RosterDrawing::folderOf(const CRosterItem& item) const
{
    if (!item.group.isEmpty())
        return item.group;
    if (client_.settings.ShowOnlineUsers)
        return groups::contacts();
    if (item.Ask == u"subscribe")
        return groups::waiting();
    return item.Subscription == u"none" && item.Ask.isEmpty() ? groups::hidden() : groups::contacts();
}

void RosterDrawing::draw(const CRosterItem& item)
{
    if (const auto* agent = client_.MyAgents.record(item.JID)) {
        if (agent->IsTransport)
            addTransport(item.JID, agent->ExtName, item.Online);
        return;
    }
    const bool onlineOnly = client_.settings.ShowOnlineUsers;
    if (onlineOnly && !item.Online)
        return;
    const QString folder = folderOf(item);
    const QString text = item.nick.isEmpty() ? item.JID : item.nick;
    const bool hidden = item.group.isEmpty() && folder == groups::hidden();
    const TreeNode* parent = group(folder, hidden ? groups::tag() : QString());
    if (hidden && parent->tag != groups::tag())
        return;
    // A JID that stands twice in the list is drawn once.
    if (hidden || (!onlineOnly && folder == groups::waiting()))
        addContact(folder, item.JID, text, QStringLiteral("Pending"));
    else
        drawAnnounced(folder, item, text);
}

void RosterDrawing::drawAnnounced(const QString& folder, const CRosterItem& item, const QString& text)
{
    QString image = statusrules::StatusImageKey(item.Status);
    if (client_.MyBanList.BannedJID(item.JID))
        image = QStringLiteral("notauth");
    else if (image.isEmpty())
        image = QStringLiteral("Offline");
    TreeNode* node = addContact(folder, item.JID, text, image);
    const auto& settings = client_.settings;
    if (node && item.Online)
        tree_.setLook(*node, settings.CharOnLineBold,
                      image == u"Online" ? settings.ColorOnline : settings.ColorOffline);
}

void RosterDrawing::removeContact(const CRosterItem& item)
{
    if (stale_) {
        emptied_ += folderOf(item);
        return;
    }
    TreeNode* node = tree_.row(item.JID);
    if (!node)
        return;
    const int group = client_.MyGroups.FindGroup(node->parent->key);
    const bool last = group != 0 && node->parent->children.size() == 1;
    tree_.remove(last ? node->parent : node);
    if (last)
        client_.MyGroups.Remove(group);
}

void RosterDrawing::forgetEmptied()
{
    for (const auto& name : std::exchange(emptied_, {})) {
        const int group = client_.MyGroups.FindGroup(name);
        if (group != 0 && !tree_.folder(name))
            client_.MyGroups.Remove(group);
    }
}
