#include "contacts/PresenceTracker.h"

#include "contacts/Client.h"
#include "contacts/FixedGroups.h"
#include "contacts/RosterDrawing.h"
#include "contacts/RosterStanzas.h"
#include "contacts/StatusRules.h"
#include "engine/Jid.h"

namespace
{

// One empty entry stands for "none known yet". The oldest goes when there are more than anybody has.
void AddResource(QStringList& list, const QString& resource)
{
    constexpr qsizetype mostResources = 50;
    if (list.size() == 1 && list.first().isEmpty())
        list.clear();
    while (list.size() >= mostResources)
        list.removeFirst();
    list.append(resource);
}

// Walks as many places as there were entries at the start, so that of two equal entries in a row one stays.
// Kept.
void RemoveResource(QStringList& list, const QString& resource)
{
    const auto count = list.size();
    for (qsizetype place = 0; place < count && place < list.size(); ++place) {
        if (list.at(place) == resource)
            list.removeAt(place);
    }
}

} // namespace

void PresenceTracker::OnPresence(const PlugInContext& context)
{
    const auto presence = context.Stanza().PresenceFields();
    const QString from = presence.From();
    const QString bare = jid::bare(from);
    const QString resource = jid::resource(from);
    if (bare == probeJid_ && setResponseTimer)
        setResponseTimer(false);
    if (auto* agent = client_.MyAgents.record(bare)) {
        // A service that announces itself with a resource has an account of ours.
        agent->registered = agent->registered || from.contains(u'/');
        // Its word about a subscription, which follows a registration, says nothing of its network.
        if (!presence.IsAvailable() && !presence.IsUnavailable())
            return;
    } else if (presence.IsUnsubscribed()) {
        return tellUnsubscribed(bare);
    } else if (presence.IsSubscribed()) {
        return showSubscribed(from, bare);
    } else if (!drawing_.tree().row(bare)) {
        if (presence.IsUnavailable())
            return;
        AddOnlineItem(bare, resource);
    }
    ApplyPresence(bare, presence.IsAvailable(), presence.Status(), presence.Show(), resource);
}

void PresenceTracker::tellUnsubscribed(const QString& JID)
{
    if (const auto* item = client_.MyRoster.record(JID))
        stanzas::send(client_, stanzas::keepUnsubscribed(JID, item->nick, item->group));
}

// The key is the whole sender, resource and all, until the next rebuild. Kept; but a stranger gets no row.
void PresenceTracker::showSubscribed(const QString& from, const QString& bare)
{
    if (!client_.MyRoster.DoesJIDExist(bare))
        return;
    auto& tree = drawing_.tree();
    if (!client_.settings.ShowOnlineUsers && !tree.remove(tree.row(bare)))
        return;
    tree.add(groups::contacts(), from, from, QStringLiteral("Offline"));
}

void PresenceTracker::AddOnlineItem(const QString& JID, const QString& resource)
{
    auto* item = client_.MyRoster.record(JID);
    if (!item || JID == client_.ownBareJid())
        return;
    RemoveResource(item->Resources, QString());
    AddResource(item->Resources, resource);
    const QString text = item->nick.isEmpty() ? JID.section(u'@', 0, 0) : item->nick;
    const QString name = item->group.isEmpty() ? groups::contacts() : item->group;
    drawing_.group(name, QString());
    drawing_.addContact(name, JID, text, QStringLiteral("Offline"));
}

void PresenceTracker::ApplyPresence(const QString& JID, bool IsAvailable, const QString& StatusMsg,
                                    const QString& Show, const QString& resource)
{
    auto* item = client_.MyRoster.record(JID);
    if (!item || JID == client_.ownBareJid())
        return;
    auto& tree = drawing_.tree();
    TreeNode* node = tree.row(JID);
    if (IsAvailable && !item->Resources.contains(resource))
        AddResource(item->Resources, resource);
    if (!node)
        return;
    if (auto* agent = client_.MyAgents.record(JID))
        applyToService(*item, *agent, node, IsAvailable);
    else if (IsAvailable)
        applyAvailable(*item, node, StatusMsg, Show);
    else
        applyUnavailable(*item, node, resource);
}

void PresenceTracker::applyToService(CRosterItem& item, CAgentsItem& agent, TreeNode* node, bool online)
{
    const auto& settings = client_.settings;
    auto& tree = drawing_.tree();
    tree.setLook(*node, online && settings.CharOnLineBold,
                 online ? settings.ColorOnline : settings.ColorOffline);
    tree.setImage(*node, online ? QStringLiteral("ServerON") : QStringLiteral("ServerOFF"));
    item.Online = online;
    agent.Online = online;
}

void PresenceTracker::applyAvailable(CRosterItem& item, TreeNode* node, const QString& StatusMsg,
                                     const QString& Show)
{
    const QString image = statusrules::StatusImageKey(Show);
    if (image.isEmpty())
        return;
    const auto& settings = client_.settings;
    auto& tree = drawing_.tree();
    tree.setImage(*node, client_.MyBanList.BannedJID(item.JID) ? QStringLiteral("notauth") : image);
    if (Show.isEmpty()) {
        if (settings.SoundOnOnLine && client_.desktop.sounds)
            client_.desktop.sounds->PlaySoundFile(settings.SoundOnOnLineFile, false);
        tree.setLook(*node, settings.CharOnLineBold, settings.ColorOnline);
    } else {
        // The busy words keep the off-line colour, in bold.
        tree.setLook(*node, true, settings.ColorOffline);
    }
    item.Online = true;
    item.Status = Show;
    item.StatusMsg = StatusMsg;
}

void PresenceTracker::applyUnavailable(CRosterItem& item, TreeNode* node, const QString& resource)
{
    const bool others = item.Resources.size() >= 2;
    RemoveResource(item.Resources, resource);
    if (others)
        return;
    const auto& settings = client_.settings;
    if (settings.SoundOnOffLine && client_.desktop.sounds)
        client_.desktop.sounds->PlaySoundFile(settings.SoundOnOffLineFile, false);
    item.Online = false;
    item.Status = QStringLiteral("Offline");
    if (settings.ShowOnlineUsers)
        return removeOffline(node);
    auto& tree = drawing_.tree();
    tree.setLook(*node, false, settings.ColorOffline);
    tree.setImage(*node, QStringLiteral("Offline"));
}

void PresenceTracker::removeOffline(TreeNode* node)
{
    TreeNode* parent = node->parent;
    const bool lonely = parent && parent->children.size() == 1 && parent->text != groups::contacts();
    drawing_.tree().remove(lonely ? parent : node);
}

void PresenceTracker::RefreshPresence()
{
    if (probeIndex_ > client_.MyRoster.Count()) {
        probeIndex_ = 1;
        return;
    }
    const QString JID = client_.MyRoster.Item(probeIndex_++)->JID;
    if (client_.MyAgents.JIDExists(JID) && JID != client_.Gateway().Server())
        return;
    if (client_.Application) {
        auto& packet = client_.Application->OutPacket();
        packet.Clear();
        auto probe = packet.PresenceFields();
        probe.setFrom(client_.ownBareJid());
        probe.setTo(JID);
        probe.SetProbe();
        packet.Send();
    }
    probeJid_ = JID;
    if (setResponseTimer)
        setResponseTimer(true);
}

void PresenceTracker::responseTimedOut()
{
    ApplyPresence(probeJid_, false, QStringLiteral("Diconnected"), QString(), QString());
}
