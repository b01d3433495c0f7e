#include "sandbox/handlers/RosterQuery.h"

#include "sandbox/Address.h"
#include "sandbox/handlers/RosterPush.h"
#include "sandbox/handlers/Subscribing.h"

namespace sandbox::rosterquery
{
namespace
{

void tellAll(const Call& call)
{
    Element query("query", "jabber:iq:roster");
    for (const auto& item : call.owner().roster.items()) {
        if (item.listed)
            query.add(item.element());
    }
    call.result(query);
}

bool remove(const Call& call, const QString& jid)
{
    Roster& roster = call.owner().roster;
    if (!roster.find(jid))
        return false;
    for (const char* type : {"unsubscribe", "unsubscribed"})
        subscribing::send(call.world, call.client.user(), jid, QLatin1String(type), subscribing::Push::No);
    roster.remove(jid);
    Element item("item");
    item.set("jid", jid).set("subscription", QStringLiteral("remove"));
    rosterpush::push(call.world, call.client.user(), item);
    return true;
}

void change(const Call& call, const QString& jid, pugi::xml_node node)
{
    RosterItem& item = call.owner().roster.item(jid);
    item.listed = true;
    item.name = attributeOf(node, "name");
    item.groups.clear();
    for (const auto group : node.children("group")) {
        if (const QString name = textOf(group); !name.isEmpty())
            item.groups += name;
    }
    rosterpush::push(call.world, call.client.user(), item.element());
}

} // namespace

void handle(const Call& call)
{
    if (call.stanza.isGet())
        return tellAll(call);
    for (const auto node : call.stanza.query().children("item")) {
        const QString jid = address::bare(attributeOf(node, "jid"));
        if (jid.isEmpty())
            return call.error(400, QStringLiteral("Bad Request"));
        if (attributeOf(node, "subscription") != u"remove")
            change(call, jid, node);
        else if (!remove(call, jid))
            return call.notFound();
    }
    call.result();
}

} // namespace sandbox::rosterquery
