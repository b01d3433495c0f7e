#include "sandbox/World.h"

#include "sandbox/Address.h"
#include "sandbox/Connection.h"

namespace sandbox
{
namespace
{

template <typename Map>
auto* valueAt(Map& map, const QString& key)
{
    const auto found = map.find(key);
    return found == map.end() ? nullptr : &found->second;
}

} // namespace

World::World()
    : roomServices_{{address::service(QStringLiteral("conference")), QStringLiteral("Public rooms"), true},
                    {address::service(QStringLiteral("private")), QStringLiteral("Private rooms"), false}}
{
}

Account& World::addAccount(const QString& user, const QString& password, bool admin)
{
    Account& account = accounts_[user];
    account.user = user;
    account.password = password;
    account.admin = admin;
    return account;
}

Account* World::account(const QString& user)
{
    return valueAt(accounts_, user);
}

bool World::removeAccount(const QString& user)
{
    return accounts_.erase(user) > 0;
}

Persona& World::addContact(const QString& user, const QString& jid, const QString& name, const QString& group,
                           const QString& subscription)
{
    const QString bare = whole(jid);
    Account* owner = account(user);
    Q_ASSERT_X(owner, "addContact", "no such account");
    RosterItem& item = owner->roster.item(bare);
    item.name = name;
    item.groups = group.isEmpty() ? QStringList() : QStringList(group);
    item.setSubscription(subscription);
    return addPersona(bare, name.isEmpty() ? address::node(bare) : name);
}

void World::addRoster(const QString& user, int contacts, int groups)
{
    for (int i = 0; i < contacts; ++i) {
        const QString number = QString::number(i + 1);
        const QString group = groups > 0 ? QStringLiteral("Group %1").arg(i % groups + 1) : QString();
        addContact(user, QLatin1String("contact") + number, QLatin1String("Contact ") + number, group)
            .online = true;
    }
}

Persona& World::addPersona(const QString& jid, const QString& name)
{
    const QString bare = whole(jid);
    Persona& persona = personas_[bare];
    persona.jid = bare;
    persona.name = name;
    return persona;
}

Persona* World::persona(const QString& jid)
{
    return valueAt(personas_, whole(address::bare(jid)));
}

void World::setOnline(const QString& jid, const QString& show, const QString& status)
{
    auto* who = persona(jid);
    Q_ASSERT_X(who, "setOnline", "no such persona");
    who->online = true;
    who->show = show;
    who->status = status;
    announce(*who);
}

void World::setOffline(const QString& jid)
{
    auto* who = persona(jid);
    Q_ASSERT_X(who, "setOffline", "no such persona");
    who->online = false;
    announce(*who);
}

void World::announce(const Persona& persona) const
{
    for (auto* connection : sessions.all()) {
        const auto owner = accounts_.find(connection->user());
        if (!connection->presence.available || owner == accounts_.end())
            continue;
        const auto* item = owner->second.roster.find(persona.jid);
        if (item && item->to)
            connection->send(presenceOf(persona, connection->fullJid()));
    }
}

Gateway& World::addGateway(const QString& name, const QString& title, const QString& network)
{
    const QString jid = address::service(name);
    Gateway& gateway = gateways_[jid];
    gateway.jid = jid;
    gateway.title = title;
    gateway.network = network;
    gateway.key = QString::number(qHash(jid), 16);
    return gateway;
}

Gateway* World::gateway(const QString& jid)
{
    return valueAt(gateways_, address::bare(jid));
}

Room& World::addRoom(const QString& name, const QString& title)
{
    const QString jid = name + u'@' + roomServices_.first().jid;
    return rooms_.insert_or_assign(jid, Room(jid, title, Room::Life::Lasting)).first->second;
}

Room& World::roomFor(const QString& jid)
{
    const QString bare = address::bare(jid);
    return rooms_.try_emplace(bare, bare, address::node(bare), Room::Life::WhileUsed).first->second;
}

void World::leaveRoom(const QString& jid, const Connection& connection)
{
    Room* left = room(jid);
    if (!left)
        return;
    left->leave(connection);
    if (left->isOver())
        rooms_.erase(address::bare(jid));
}

void World::leaveRooms(const Connection& connection)
{
    for (auto at = rooms_.begin(); at != rooms_.end();) {
        at->second.leave(connection);
        at = at->second.isOver() ? rooms_.erase(at) : std::next(at);
    }
}

Room* World::room(const QString& jid)
{
    return valueAt(rooms_, address::bare(jid));
}

QString World::directoryJid() const
{
    return address::service(QStringLiteral("users"));
}

void World::adoptHost(const QString& host)
{
    if (host.isEmpty() || adopted_.contains(host))
        return;
    adopted_ += host;
    for (auto& [user, account] : accounts_)
        account.roster.adoptHost(host);
    std::map<QString, Persona> moved; // by node handles, so that references to personas stay good
    while (!personas_.empty()) {
        auto node = personas_.extract(personas_.begin());
        node.mapped().jid = node.key() = address::rehosted(node.key(), host, Host);
        moved.insert(std::move(node));
    }
    personas_.swap(moved);
}

QString World::whole(const QString& jid) const
{
    if (!jid.contains(u'@') && !jid.contains(u'.'))
        return address::local(jid);
    QString known = jid;
    for (const auto& host : adopted_)
        known = address::rehosted(known, host, Host);
    return known;
}

Element presenceOf(const Persona& persona, const QString& to)
{
    Element presence("presence");
    presence.set("from", persona.fullJid()).set("to", to);
    if (!persona.online)
        return presence.set("type", QStringLiteral("unavailable"));
    if (!persona.show.isEmpty())
        presence.add("show", persona.show);
    return persona.status.isEmpty() ? presence : presence.add("status", persona.status);
}

} // namespace sandbox
