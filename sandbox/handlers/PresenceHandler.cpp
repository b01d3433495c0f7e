#include "sandbox/handlers/PresenceHandler.h"

#include "sandbox/Address.h"
#include "sandbox/Subscription.h"
#include "sandbox/handlers/GatewayHandler.h"
#include "sandbox/handlers/MessageHandler.h"
#include "sandbox/handlers/Place.h"
#include "sandbox/handlers/Subscribing.h"

namespace sandbox::presences
{
namespace
{

Element ownPresence(const Connection& client, const QString& to)
{
    Element presence("presence");
    presence.set("from", client.fullJid()).set("to", to);
    if (!client.presence.available)
        presence.set("type", QStringLiteral("unavailable"));
    return presence.raw(client.presence.content);
}

// To the contacts who may see it, and to the own other resources.
void broadcast(const World& world, const Account& account, const Connection& client)
{
    const auto tell = [&world, &client](const QString& bareJid) {
        for (auto* other : world.sessions.available(bareJid)) {
            if (other != &client)
                other->send(ownPresence(client, bareJid));
        }
    };
    for (const auto& item : account.roster.items()) {
        if (item.from)
            tell(item.jid);
    }
    tell(client.bareJid());
}

void showOthers(World& world, const QString& bareJid, Connection& client)
{
    for (auto* other : world.sessions.available(bareJid)) {
        if (other != &client)
            client.send(ownPresence(*other, client.fullJid()));
    }
    const auto* persona = world.persona(bareJid);
    if (persona && persona->online)
        client.send(presenceOf(*persona, client.fullJid()));
}

void showRoster(World& world, const Account& account, Connection& client)
{
    showOthers(world, client.bareJid(), client);
    for (const auto& item : account.roster.items()) {
        if (item.to)
            showOthers(world, item.jid, client);
        if (item.pendingIn)
            client.send(Element("presence")
                            .set("from", item.jid)
                            .set("to", client.bareJid())
                            .set("type", QStringLiteral("subscribe")));
    }
}

void arrive(World& world, Connection& client)
{
    Account& account = *world.account(client.user());
    showRoster(world, account, client);
    gateways::signOn(world, client);
    messages::deliverWaiting(world, account, client);
}

void say(const Call& call)
{
    auto& presence = call.client.presence;
    const bool arrives = !presence.available && call.stanza.type().isEmpty();
    presence.available = call.stanza.type().isEmpty();
    presence.priority = call.stanza.text("priority").toInt();
    presence.content = call.stanza.content();
    broadcast(call.world, call.owner(), call.client);
    if (arrives)
        arrive(call.world, call.client);
}

void atRoom(const Call& call)
{
    if (!call.stanza.type().isEmpty())
        return call.world.leaveRoom(call.stanza.to(), call.client);
    Room* room = call.world.room(call.stanza.to());
    if (room && room->find(call.client))
        return room->present(call.client, call.stanza.content());
    call.world.roomFor(call.stanza.to()).knock(call.client, call.stanza.content());
}

// Presence to a nick in the room asks for that nick.
void atOccupant(const Call& call)
{
    if (!call.stanza.type().isEmpty())
        return call.world.leaveRoom(call.stanza.to(), call.client);
    Room* room = call.world.room(call.stanza.to());
    if (!room || !room->find(call.client))
        return call.notFound();
    if (!room->rename(call.client, address::resource(call.stanza.to())))
        call.error(409, QStringLiteral("Conflict"));
}

void toUser(const Call& call)
{
    const QString to = call.stanza.to();
    if (call.stanza.type() == u"probe") {
        const auto* item = call.owner().roster.find(address::bare(to));
        if (item && item->to)
            showOthers(call.world, item->jid, call.client);
        return;
    }
    for (auto* other : call.world.sessions.of(address::bare(to))) {
        if (other != &call.client && (address::resource(to).isEmpty() || other->fullJid() == to))
            other->send(call.forwarded(call.client.fullJid(), to));
    }
}

} // namespace

void handle(const Call& call)
{
    const QString type = call.stanza.type();
    if (call.stanza.to().isEmpty())
        return type.isEmpty() || type == u"unavailable" ? say(call) : void();
    if (subscription::isSubscription(type))
        return subscribing::handle(call);
    switch (placeOf(call.world, call.stanza.to())) {
    case Place::Room:
        return atRoom(call);
    case Place::Occupant:
        return atOccupant(call);
    case Place::Gateway:
        return gateways::presence(call);
    case Place::User:
        return toUser(call);
    default:
        return; // nobody there cares
    }
}

void gone(World& world, Connection& client)
{
    world.leaveRooms(client);
    const Account* account = world.account(client.user());
    if (!client.presence.available || !account)
        return;
    client.presence = {};
    broadcast(world, *account, client);
}

} // namespace sandbox::presences
