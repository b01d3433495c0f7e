#include "sandbox/handlers/GatewayHandler.h"

#include "sandbox/Address.h"
#include "sandbox/handlers/RosterPush.h"
#include "sandbox/handlers/Subscribing.h"

namespace sandbox::gateways
{
namespace
{

void announce(const Gateway& gateway, Connection& client, const char* type = nullptr)
{
    Element presence("presence");
    presence.set("from", gateway.onlineJid()).set("to", client.fullJid());
    client.send(type ? presence.set("type", QLatin1String(type)) : presence);
}

// The people of the other network, at the gateway's address.
QList<const Persona*> contactsOf(const World& world, const Gateway& gateway)
{
    QList<const Persona*> contacts;
    for (const auto& [jid, persona] : world.personas()) {
        if (address::domain(jid) == gateway.jid)
            contacts += &persona;
    }
    return contacts;
}

// They come to whoever registers, and go with the registration.
void bringContacts(const Call& call, const Gateway& gateway)
{
    for (const auto* contact : contactsOf(call.world, gateway)) {
        RosterItem& item = call.owner().roster.item(contact->jid);
        item.name = contact->name;
        item.groups = QStringList(gateway.network);
        item.setSubscription(QStringLiteral("both"));
        rosterpush::push(call.world, call.client.user(), item.element());
    }
}

void takeContacts(const Call& call, const Gateway& gateway)
{
    for (const auto* contact : contactsOf(call.world, gateway)) {
        call.owner().roster.remove(contact->jid);
        Element item("item");
        item.set("jid", contact->jid).set("subscription", QStringLiteral("remove"));
        rosterpush::push(call.world, call.client.user(), item);
    }
}

// They are seen while the gateway is logged on.
void showContacts(const World& world, const Gateway& gateway, Connection& client, bool loggedOn)
{
    for (const auto* contact : contactsOf(world, gateway)) {
        Persona seen = *contact;
        seen.online = seen.online && loggedOn;
        client.send(presenceOf(seen, client.fullJid()));
    }
}

Element form(const Gateway& gateway, const QString& user)
{
    Element query("query", "jabber:iq:register");
    query.add("key", gateway.key);
    query.add("instructions", QStringLiteral("Enter your user name and password for %1.").arg(gateway.title));
    const bool isRegistered = gateway.registered.contains(user);
    if (isRegistered)
        query.add("registered");
    for (const auto& field : gateway.fields) {
        const bool isShown = isRegistered && field != u"password";
        const QString value = isShown ? gateway.registered.value(user).value(field) : QString();
        query.add(field.toUtf8().constData(), value);
    }
    return query;
}

void enter(const Call& call, Gateway& gateway)
{
    QHash<QString, QString> values;
    for (const auto& field : gateway.fields)
        values.insert(field, call.stanza.queryText(field.toUtf8().constData()));
    if (values.value(gateway.fields.first()).isEmpty())
        return call.error(406, QStringLiteral("Not Acceptable"));
    const QString user = call.client.bareJid();
    const bool isNew = !gateway.registered.contains(user);
    gateway.registered.insert(user, values);
    call.result(form(gateway, user));
    if (isNew)
        subscribing::deliver(call.world, gateway.jid, user, QStringLiteral("subscribe"));
    announce(gateway, call.client);
    if (isNew)
        bringContacts(call, gateway);
    showContacts(call.world, gateway, call.client, true);
}

void leave(const Call& call, Gateway& gateway)
{
    const QString user = call.client.bareJid();
    if (gateway.registered.remove(user) == 0)
        return call.notFound();
    call.result();
    announce(gateway, call.client, "unavailable");
    takeContacts(call, gateway);
    for (const char* type : {"unsubscribe", "unsubscribed"})
        subscribing::deliver(call.world, gateway.jid, user, QLatin1String(type));
}

} // namespace

void registration(const Call& call)
{
    Gateway& gateway = *call.world.gateway(address::domain(call.stanza.to()));
    if (call.stanza.isGet())
        return call.result(form(gateway, call.client.bareJid()));
    if (call.stanza.queryText("key") != gateway.key)
        return call.error(406, QStringLiteral("Not Acceptable"));
    call.stanza.query().child("remove") ? leave(call, gateway) : enter(call, gateway);
}

void presence(const Call& call)
{
    const Gateway& gateway = *call.world.gateway(address::domain(call.stanza.to()));
    if (!gateway.registered.contains(call.client.bareJid()))
        return call.error(407, QStringLiteral("Registration Required"));
    const bool loggedOn = call.stanza.type() != u"unavailable";
    announce(gateway, call.client, loggedOn ? nullptr : "unavailable");
    showContacts(call.world, gateway, call.client, loggedOn);
}

void signOn(const World& world, Connection& client)
{
    for (const auto& [jid, gateway] : world.gateways()) {
        if (gateway.registered.contains(client.bareJid()))
            announce(gateway, client);
    }
}

} // namespace sandbox::gateways
