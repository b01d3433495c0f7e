#include "sandbox/handlers/Browse.h"

#include "sandbox/Address.h"

namespace sandbox::browse
{
namespace
{

Element query()
{
    return Element("query", "jabber:iq:browse");
}

Element service(const QString& type, const QString& jid, const QString& name)
{
    return Element("service").set("type", type).set("jid", jid).set("name", name);
}

void addNamespaces(Element& answer, bool isAdmin)
{
    for (const char* name : {"jabber:iq:agents", "jabber:iq:auth", "jabber:iq:browse", "jabber:iq:register",
                             "jabber:iq:roster", "vcard-temp"})
        answer.add("ns", QLatin1String(name));
    if (isAdmin)
        answer.add("ns", QStringLiteral("jabber:iq:admin"));
}

} // namespace

void server(const Call& call)
{
    Element answer = query();
    addNamespaces(answer, call.owner().admin);
    answer.add(service(QStringLiteral("jud"), call.world.directoryJid(), QStringLiteral("User Directory")));
    for (const auto& rooms : call.world.roomServices()) {
        const QString type = rooms.isPublic ? QStringLiteral("public") : QStringLiteral("private");
        answer.add(Element("conference").set("type", type).set("jid", rooms.jid).set("name", rooms.name));
    }
    for (const auto& [jid, gateway] : call.world.gateways())
        answer.add(service(gateway.network, jid, gateway.title));
    call.result(answer);
}

void admin(const Call& call)
{
    if (!call.owner().admin)
        return call.error(403, QStringLiteral("Forbidden"));
    Element answer = query();
    QStringList seen;
    for (const auto* session : call.world.sessions.all()) {
        if (seen.contains(session->user()))
            continue;
        seen += session->user();
        const auto count = call.world.sessions.of(session->bareJid()).size();
        const QString name = QStringLiteral("%1 (%2)").arg(session->user(), QString::number(count));
        answer.add(Element("user").set("jid", session->bareJid()).set("name", name));
    }
    call.result(answer);
}

void roomService(const Call& call)
{
    Element answer = query();
    for (const auto& [jid, room] : call.world.rooms()) {
        if (address::domain(jid) == address::domain(call.stanza.to()))
            answer.add(Element("conference").set("jid", jid).set("name", room.name()));
    }
    call.result(answer);
}

void directory(const Call& call)
{
    Element answer = query();
    answer.add(service(QStringLiteral("jud"), call.world.directoryJid(), QStringLiteral("User Directory")));
    call.result(answer);
}

void gateway(const Call& call)
{
    const Gateway& known = *call.world.gateway(address::domain(call.stanza.to()));
    Element answer = query();
    call.result(answer.add(service(known.network, known.jid, known.title)));
}

void user(const Call& call)
{
    Element answer = query();
    for (const auto* session : call.world.sessions.of(address::bare(call.stanza.to())))
        answer.add(Element("user").set("type", QStringLiteral("client")).set("jid", session->fullJid()));
    call.result(answer);
}

} // namespace sandbox::browse
