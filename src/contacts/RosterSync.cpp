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
    // A name of blanks can't be seen.
    text = text.trimmed();
    if (text.isEmpty() || item.child("group") || xml::serialised(item).contains(u"group"))
        return text;
    return {};
}

} // namespace

void RosterSync::OnIQ(const PlugInContext& context)
{
    const auto items = context.Stanza().root().select_nodes(".//item");
    constexpr std::size_t many = 100; // a list, and no push
    if (items.size() >= many) {
        client_.MyRoster.expect(items.size());
        drawing_.model().expect(items.size());
    }
    for (const auto item : items)
        takeItem(item.node());
}

void RosterSync::takeItem(pugi::xml_node item)
{
    const QString address = xml::attribute(item, "jid");
    const QString bare = jid::bare(address);
    // The server has its row, however the list came by it and the person spelt it.
    if (bare.isEmpty() || bare.compare(client_.Gateway().Server(), Qt::CaseInsensitive) == 0 ||
        client_.MyAgents.JIDExists(address) || client_.MyAgents.JIDExists(bare))
        return;
    const Push push = readPush(item, bare);
    if (client_.MyRoster.DoesJIDExist(bare))
        UpdateRosterItem(push);
    else
        AddItem(push.JID, push.nick, push.group, false, false, push.subscription, push.ask);
}

RosterSync::Push RosterSync::readPush(pugi::xml_node item, const QString& JID) const
{
    Push push{JID, xml::attribute(item, "name"), groupOf(item),
              sharedWord(item.attribute("subscription").as_string("none")),
              sharedWord(item.attribute("ask").value())};
    if (const auto* known = client_.MyGroups.record(push.group))
        push.group = known->ExtName;
    const auto* record = client_.MyRoster.record(JID);
    if (record && !item.attribute("subscription"))
        push.subscription = record->Subscription;
    return push;
}

void RosterSync::AddItem(const QString& JID, const QString& nick, const QString& group, bool IsGateway,
                         bool Online, const QString& subscription, const QString& ask)
{
    const Push push{JID, nick, group, subscription, ask};
    if (IsGateway)
        addGatewayRow(JID, nick, group);
    else if (subscription == u"none")
        addUnsubscribed(push);
    else
        addListed(push, Online);
}

void RosterSync::addGatewayRow(const QString& JID, const QString& nick, const QString& group)
{
    if (JID == client_.Gateway().Server())
        return addServerRow(JID, nick, group);
    // The contact list may have named it before, and its presence may have come.
    auto& tree = drawing_.tree();
    tree.remove(tree.row(JID));
    const auto* item = client_.MyRoster.record(JID);
    const bool online = item && item->Online;
    if (auto* agent = client_.MyAgents.record(JID); agent && online)
        agent->Online = agent->registered = true;
    drawing_.addTransport(JID, nick, online);
}

void RosterSync::addServerRow(const QString& JID, const QString& nick, const QString& group)
{
    auto& tree = drawing_.tree();
    if (tree.row(JID.toUpper())) // a rebuild has drawn it
        return;
    if (TreeNode* server = tree.add(group, JID, nick, QStringLiteral("ServerON")))
        tree.setLook(*server, true, client_.settings.ColorOnline);
}

void RosterSync::addUnsubscribed(const Push& push)
{
    Push named = push;
    if (named.nick.isEmpty())
        named.nick = push.JID;
    const QString status = push.ask.isEmpty() ? QStringLiteral("Lurker") : QStringLiteral("Pending");
    addRecord(named, status, status, false);
    drawing_.addNew(push.ask.isEmpty() ? groups::hidden() : groups::waiting(), named.JID, named.nick,
                    QStringLiteral("Pending"));
}

void RosterSync::addListed(const Push& push, bool online)
{
    addRecord(push, QStringLiteral("Offline"), QString(), online);
    if (!push.group.isEmpty() && !client_.MyGroups.Exists(push.group))
        client_.MyGroups.AddItem(push.group);
    drawing_.addNew(push.group.isEmpty() ? groups::contacts() : push.group, push.JID,
                    push.nick.isEmpty() ? push.JID : push.nick, QStringLiteral("Offline"));
}

void RosterSync::addRecord(const Push& push, const QString& status, const QString& statusMsg, bool online)
{
    client_.MyRoster.AddItem(push.JID, push.nick, online, status, statusMsg, false, push.group,
                             push.subscription, push.ask, QString());
}

void RosterSync::RemoveItem(const QString& JID)
{
    if (const auto* item = client_.MyRoster.record(JID))
        stanzas::send(client_, stanzas::removeContact(JID, item->nick, item->group));
}

void RosterSync::CommitRemoveItem(const QString& JID)
{
    const int position = client_.MyRoster.FindJID(JID);
    if (const auto* item = client_.MyRoster.Item(position)) {
        drawing_.removeContact(*item);
        client_.MyRoster.Remove(position);
    }
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

void RosterSync::renamed(const QString& JID, const QString& text)
{
    if (auto* item = client_.MyRoster.record(JID)) {
        stanzas::send(client_, stanzas::renameContact(JID, text, item->group));
        item->nick = text;
    }
}

// What a push does to a contact that is in the list already. Where its node goes is told by the rebuild that
// follows.

void RosterSync::UpdateRosterItem(const Push& push)
{
    CRosterItem& item = *client_.MyRoster.record(push.JID);
    // What the person changed and the server refused goes back to what the server has.
    if (push.subscription == item.Subscription && push.ask == item.Ask) {
        item.nick = push.nick;
        item.group = push.group;
    }
    const bool none = push.subscription == u"none";
    none ? updateUnsubscribed(item, push) : updateSubscribed(item, push);
    if (!(none && push.ask.isEmpty() && client_.settings.ShowOnlineUsers))
        drawing_.Refresh();
}

void RosterSync::updateSubscribed(CRosterItem& item, const Push& push)
{
    if (!push.ask.isEmpty())
        return;
    if (push.subscription == u"remove")
        return CommitRemoveItem(push.JID);
    const bool granted = item.Ask == u"subscribe";
    item.Ask = push.ask;
    if (granted) {
        item.Subscription = push.subscription;
        return;
    }
    // The subscription stays as it was first told. Kept.
    item.nick = push.nick;
    item.group = push.group;
}

void RosterSync::updateUnsubscribed(CRosterItem& item, const Push& push)
{
    const bool sent = push.ask == u"subscribe" && item.Subscription == u"none" && item.Ask.isEmpty();
    const bool refused = push.ask.isEmpty() && (client_.settings.ShowOnlineUsers ||
                                                (item.Subscription == u"none" && item.Ask == u"subscribe"));
    if (!sent && !refused)
        return;
    item.Ask = push.ask;
    item.Subscription = push.subscription;
}
