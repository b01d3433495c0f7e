#include "sandbox/handlers/Subscribing.h"

#include "sandbox/Address.h"
#include "sandbox/Subscription.h"
#include "sandbox/handlers/RosterPush.h"

namespace sandbox::subscribing
{
namespace
{

Element presence(const QString& from, const QString& to, const QString& type)
{
    return Element("presence").set("from", from).set("to", to).option("type", type);
}

void sendToAvailable(const World& world, const QString& to, const Element& stanza)
{
    for (auto* session : world.sessions.available(to))
        session->send(stanza);
}

// All that `to` may now see of `from`.
void showPresence(World& world, const QString& from, const QString& to)
{
    for (auto* session : world.sessions.available(from))
        sendToAvailable(world, to, presence(session->fullJid(), to, {}).raw(session->presence.content));
    const auto* persona = world.persona(from);
    if (persona && persona->online)
        sendToAvailable(world, to, presenceOf(*persona, to));
}

void hidePresence(World& world, const QString& from, const QString& to)
{
    const QString type = QStringLiteral("unavailable");
    for (auto* session : world.sessions.available(from))
        sendToAvailable(world, to, presence(session->fullJid(), to, type));
    const auto* persona = world.persona(from);
    if (persona && persona->online)
        sendToAvailable(world, to, presence(persona->fullJid(), to, type));
}

// An item that holds nothing any more, and that its owner never saw, goes.
void tidy(Roster& roster, const QString& jid)
{
    const auto* item = roster.find(jid);
    if (item && !item->listed && !item->pendingIn)
        roster.remove(jid);
}

void deliverToAccount(World& world, const QString& from, Account& account, const QString& type)
{
    const QString to = address::local(account.user);
    if (type != u"subscribe" && !account.roster.find(from))
        return;
    const bool isNew = !account.roster.find(from);
    RosterItem& item = account.roster.item(from);
    item.listed &= !isNew;
    const auto effect = subscription::inbound(item, type);
    if (effect.passOn)
        sendToAvailable(world, to, presence(from, to, type));
    if (effect.changed)
        rosterpush::push(world, account.user, item.element());
    const bool agreed = type == u"subscribe" && item.from;
    tidy(account.roster, from);
    if (agreed)
        deliver(world, to, from, QStringLiteral("subscribed"));
    if (type == u"subscribed" && effect.passOn)
        showPresence(world, from, to);
    if (type == u"unsubscribe" && effect.changed)
        hidePresence(world, to, from);
}

void deliverToPersona(World& world, const QString& from, const Persona& persona, const QString& type)
{
    if (type == u"unsubscribe")
        return hidePresence(world, persona.jid, from);
    if (type != u"subscribe" || persona.whenAsked == Persona::Asked::StaysSilent)
        return;
    const bool accepts = persona.whenAsked == Persona::Asked::Accepts;
    deliver(world, persona.jid, from,
            accepts ? QStringLiteral("subscribed") : QStringLiteral("unsubscribed"));
}

} // namespace

void send(World& world, const QString& user, const QString& to, const QString& type, Push push)
{
    Roster& roster = world.account(user)->roster;
    if (type != u"subscribe" && !roster.find(to))
        return;
    RosterItem& item = roster.item(to);
    const auto effect = subscription::outbound(item, type);
    if (effect.changed && push == Push::Yes) {
        item.listed = true;
        rosterpush::push(world, user, item.element());
    }
    tidy(roster, to);
    if (effect.passOn)
        deliver(world, address::local(user), to, type);
    if (type == u"subscribed" && effect.changed)
        showPresence(world, address::local(user), to);
    if (type == u"unsubscribed" && effect.changed)
        hidePresence(world, address::local(user), to);
}

void deliver(World& world, const QString& from, const QString& to, const QString& type)
{
    if (auto* account = address::domain(to) == Host ? world.account(address::node(to)) : nullptr)
        return deliverToAccount(world, from, *account, type);
    if (const auto* persona = world.persona(to))
        return deliverToPersona(world, from, *persona, type);
    if (world.gateway(to) && type == u"subscribe")
        deliver(world, to, from, QStringLiteral("subscribed"));
}

void handle(const Call& call)
{
    send(call.world, call.client.user(), address::bare(call.stanza.to()), call.stanza.type());
}

} // namespace sandbox::subscribing
