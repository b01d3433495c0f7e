#include "sandbox/handlers/MessageHandler.h"

#include "sandbox/Address.h"
#include "sandbox/handlers/Place.h"

#include <QDateTime>

namespace sandbox::messages
{
namespace
{

bool canWait(const Stanza& message)
{
    const QString type = message.type().toLower();
    return type != u"headline" && type != u"groupchat" && type != u"error" && !message.text("body").isEmpty();
}

void keep(const Call& call, Account& account)
{
    Element delay("x", "jabber:x:delay");
    delay.set("from", address::local(account.user));
    delay.set("stamp", QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMddThh:mm:ss")));
    const QString to = address::local(account.user);
    account.offline +=
        call.forwarded(call.client.fullJid(), to).add(delay.text(QStringLiteral("Offline Storage"))).xml();
}

void toUser(const Call& call)
{
    const QString to = call.stanza.to();
    if (auto* session = call.world.sessions.best(to))
        return session->send(call.forwarded(call.client.fullJid(), to));
    if (auto* account = address::domain(to) == Host ? call.world.account(address::node(to)) : nullptr)
        return canWait(call.stanza) ? keep(call, *account) : void();
    const auto* persona = call.world.persona(to);
    if (!persona)
        return call.notFound();
    if (persona->hears)
        persona->hears(call.client, call.stanza);
}

void toRoom(const Call& call)
{
    Room* room = call.world.room(call.stanza.to());
    const auto* occupant = room ? room->find(call.client) : nullptr;
    if (!occupant)
        return call.notFound();
    room->say(occupant->id, call.stanza.content());
}

void toOccupant(const Call& call)
{
    Room* room = call.world.room(call.stanza.to());
    const auto* sender = room ? room->find(call.client) : nullptr;
    const auto* receiver = room ? room->byId(call.stanza.to()) : nullptr;
    if (!sender || !receiver)
        return call.notFound();
    if (receiver->connection)
        receiver->connection->send(call.forwarded(sender->id, receiver->connection->fullJid()));
}

Element fromServer(const QString& to, const QString& content)
{
    return Element("message").set("from", Host).set("to", to).raw(content);
}

void announce(const Call& call)
{
    if (!call.owner().admin)
        return call.error(403, QStringLiteral("Forbidden"));
    const QString content = call.stanza.content();
    const bool isMotd = call.stanza.to().endsWith(u"/motd");
    if (isMotd)
        call.world.motd = content;
    for (auto* session : call.world.sessions.all()) {
        session->send(fromServer(session->fullJid(), content));
        if (auto* account = isMotd ? call.world.account(session->user()) : nullptr)
            account->seenMotd = content;
    }
}

} // namespace

void handle(const Call& call)
{
    if (call.stanza.type() == u"error")
        return; // an error is never answered
    switch (placeOf(call.world, call.stanza.to())) {
    case Place::User:
    case Place::Gateway:
        return toUser(call);
    case Place::Room:
        return toRoom(call);
    case Place::Occupant:
        return toOccupant(call);
    case Place::Announce:
        return announce(call);
    case Place::Elsewhere:
        return call.error(502, QStringLiteral("Unable to resolve hostname."));
    default:
        return call.notFound();
    }
}

void deliverWaiting(const World& world, Account& account, Connection& client)
{
    for (const auto& message : std::exchange(account.offline, {}))
        client.sendText(message);
    if (world.motd.isEmpty() || account.seenMotd == world.motd)
        return;
    account.seenMotd = world.motd;
    client.send(fromServer(client.fullJid(), world.motd));
}

void headline(const World& world, const QString& from, const QString& subject, const QString& body)
{
    for (auto* session : world.sessions.all()) {
        if (!session->presence.available)
            continue;
        Element message("message");
        message.set("from", from).set("to", session->fullJid()).set("type", QStringLiteral("headline"));
        session->send(message.add("subject", subject).add("body", body));
    }
}

} // namespace sandbox::messages
