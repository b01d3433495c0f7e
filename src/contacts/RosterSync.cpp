#include "contacts/RosterSync.h"

#include "contacts/Client.h"
#include "contacts/FixedGroups.h"
#include "contacts/RosterDrawing.h"
#include "contacts/RosterStanzas.h"
#include "engine/Jid.h"
#include "engine/Xml.h"

namespace
{

// The few words of the protocol, so that ten thousand contacts share one text.
QString sharedWord(const char* utf8)
{
    static const QString words[] = {QStringLiteral("both"),   QStringLiteral("to"),
                                    QStringLiteral("from"),   QStringLiteral("none"),
                                    QStringLiteral("remove"), QStringLiteral("subscribe")};
    const QString word = QString::fromUtf8(utf8);
    for (const auto& known : words) {
        if (known == word)
            return known;
    }
    return word;
}

// The text of all of the item's groups, run together; empty when the item speaks of no group.
QString groupOf(pugi::xml_node item)
{
    QString text;
    for (const auto child : item.children()) {
        const QString part =
            child.type() == pugi::node_element ? xml::text(child) : xml::fromUtf8(child.value());
        // White space between the elements is layout.
        if (child.type() == pugi::node_element || !part.trimmed().isEmpty())
            text += part;
    }
    if (text.isEmpty() || item.child("group") || xml::serialised(item).contains(u"group"))
        return text;
    return {};
}

} // namespace

void RosterSync::OnIQ(const PlugInContext& context)
{
    bool isAgent = false;
    for (const auto item : context.Stanza().root().select_nodes(".//item")) {
        if (!takeItem(item.node(), isAgent))
            return;
    }
}

bool RosterSync::takeItem(pugi::xml_node item, bool& isAgent)
{
    const QString address = xml::attribute(item, "jid");
    const QString bare = jid::bare(address);
    // Once an item was an agent, no later one of the stanza is taken. Kept.
    isAgent = isAgent || (item.attribute("jid") && client_.MyAgents.JIDExists(address)) ||
              client_.MyAgents.JIDExists(bare);
    if (isAgent)
        return true;
    if (!item.attribute("subscription"))
        return false;
    const Push push = readPush(item, bare);
    if (client_.MyRoster.DoesJIDExist(bare))
        return UpdateRosterItem(push);
    return AddItem(push.JID, push.nick, push.group, false, false, push.subscription, push.ask);
}

RosterSync::Push RosterSync::readPush(pugi::xml_node item, const QString& JID) const
{
    Push push{JID, xml::attribute(item, "name"), groupOf(item),
              sharedWord(item.attribute("subscription").value()), sharedWord(item.attribute("ask").value())};
    if (const auto* known = client_.MyGroups.Item(client_.MyGroups.FindGroup(push.group)))
        push.group = known->ExtName;
    return push;
}

bool RosterSync::AddItem(const QString& JID, const QString& nick, const QString& group, bool IsGateway,
                         bool Online, const QString& subscription, const QString& ask)
{
    if (IsGateway)
        return addGatewayRow(JID, nick, group);
    const Push push{JID, nick, group, subscription, ask};
    return subscription == u"none" ? addUnsubscribed(push) : addListed(push, Online);
}

bool RosterSync::addGatewayRow(const QString& JID, const QString& nick, const QString& group)
{
    auto& tree = drawing_.tree();
    const auto& settings = client_.settings;
    const bool isServer = JID == client_.Gateway().Server();
    TreeNode* added =
        tree.add(group, JID, nick, isServer ? QStringLiteral("ServerON") : QStringLiteral("ServerOFF"));
    if (!added)
        return false;
    if (!isServer)
        tree.setLook(*added, false, settings.ColorOffline);
    else if (TreeNode* server = tree.Item(tree.NodeIndexByKey(JID)))
        tree.setLook(*server, true, settings.ColorOnline);
    return true;
}

bool RosterSync::addUnsubscribed(const Push& push)
{
    if (push.JID.isEmpty())
        return true;
    drawing_.tree(); // what is outstanding is drawn without the new record
    Push named = push;
    if (named.nick.isEmpty())
        named.nick = push.JID;
    const QString status = push.ask.isEmpty() ? QStringLiteral("Lurker") : QStringLiteral("Pending");
    addRecord(named, status, status, false);
    if (client_.settings.ShowOnlineUsers)
        return true;
    const QString folder = push.ask.isEmpty() ? groups::hidden() : groups::waiting();
    if (push.ask.isEmpty() && drawing_.tree().GroupNodeIndex(folder) == 0)
        drawing_.tree().addGroup(folder, groups::tag());
    return drawing_.addContact(folder, named.JID, named.nick, QStringLiteral("Pending"));
}

bool RosterSync::addListed(const Push& push, bool online)
{
    drawing_.tree(); // what is outstanding is drawn without the new record
    addRecord(push, QStringLiteral("Offline"), QString(), online);
    return push.JID.isEmpty() || addListedNode(push, push.nick.isEmpty() ? push.JID : push.nick);
}

CRosterItem* RosterSync::addRecord(const Push& push, const QString& status, const QString& statusMsg,
                                   bool online)
{
    return client_.MyRoster.AddItem(push.JID, push.nick, online, status, statusMsg, false, push.group,
                                    push.subscription, push.ask, QString());
}

bool RosterSync::addListedNode(const Push& push, const QString& text)
{
    const bool onlineOnly = client_.settings.ShowOnlineUsers;
    const QString parent = push.group.isEmpty() ? groups::contacts() : push.group;
    if (!push.group.isEmpty() && !client_.MyGroups.Exists(push.group)) {
        auto& tree = drawing_.tree();
        if (onlineOnly) {
            client_.MyGroups.AddItem(push.group);
        } else if (tree.GroupNodeIndex(push.group) == 0) {
            client_.MyGroups.AddItem(push.group);
            if (!tree.addGroup(push.group, QString()))
                return false;
        }
    }
    return onlineOnly || drawing_.addContact(parent, push.JID, text, QStringLiteral("Offline"));
}

void RosterSync::RemoveItem(const QString& JID)
{
    if (const auto* item = client_.MyRoster.record(JID))
        stanzas::send(client_, stanzas::removeContact(JID, item->nick, item->group));
}

bool RosterSync::CommitRemoveItem(const QString& JID)
{
    const int position = client_.MyRoster.FindJID(JID);
    const auto* item = client_.MyRoster.Item(position);
    return item && drawing_.removeContact(*item) && client_.MyRoster.Remove(position);
}

void RosterSync::RefreshAll()
{
    drawing_.RemoveAll();
    drawing_.InitRoster();
    client_.MyRoster.RemoveAll();
    drawing_.addServerRow();
    for (int position = 1; position <= client_.MyAgents.Count(); ++position) {
        const auto& agent = *client_.MyAgents.Item(position);
        client_.MyRoster.AddItem(agent.JID, agent.ExtName, agent.Online, QStringLiteral("4"), QString(),
                                 agent.IsTransport, QString(), QString(), QString(), QString());
        if (agent.IsTransport)
            drawing_.addTransport(agent.JID, agent.ExtName, agent.Online);
    }
    stanzas::send(client_, stanzas::wholeRoster());
}

void RosterSync::renamed(const QString& JID, const QString& oldText, const QString& newText)
{
    if (client_.MyGroups.Exists(oldText))
        return;
    if (auto* item = client_.MyRoster.record(JID)) {
        stanzas::send(client_, stanzas::renameContact(JID, newText, item->group));
        item->nick = newText;
    }
}

// What a push does to a contact that is in the list already. A contact that changes its folder must have a
// node; where the new node goes is told by the rebuild that follows.

bool RosterSync::UpdateRosterItem(const Push& push)
{
    CRosterItem& item = *client_.MyRoster.record(push.JID);
    const bool onlineOnly = client_.settings.ShowOnlineUsers;
    const bool refused = push.subscription == u"none" && push.ask.isEmpty();
    const bool done =
        push.subscription == u"none" ? updateUnsubscribed(item, push) : updateSubscribed(item, push);
    if (!done)
        return false;
    if (!(refused && onlineOnly))
        drawing_.Refresh();
    return true;
}

bool RosterSync::updateSubscribed(CRosterItem& item, const Push& push)
{
    if (!push.ask.isEmpty())
        return true;
    if (push.subscription == u"remove")
        return CommitRemoveItem(push.JID);
    const bool granted = item.Ask == u"subscribe";
    item.Ask = push.ask;
    if (granted) {
        item.Subscription = push.subscription;
        return drawing_.hasNode(item);
    }
    // The subscription stays as it was first told. Kept.
    item.nick = push.nick;
    item.group = push.group;
    return true;
}

bool RosterSync::updateUnsubscribed(CRosterItem& item, const Push& push)
{
    const bool onlineOnly = client_.settings.ShowOnlineUsers;
    const bool sent = push.ask == u"subscribe" && item.Subscription == u"none" && item.Ask.isEmpty();
    const bool refused =
        push.ask.isEmpty() && (onlineOnly || (item.Subscription == u"none" && item.Ask == u"subscribe"));
    if (!sent && !refused)
        return true;
    item.Ask = push.ask;
    item.Subscription = push.subscription;
    return onlineOnly || drawing_.hasNode(item);
}
