#include "sandbox/Sessions.h"

#include "sandbox/Address.h"
#include "sandbox/Connection.h"

namespace sandbox
{

void Sessions::add(Connection* connection)
{
    byJid_[connection->bareJid()].append(connection);
}

void Sessions::remove(Connection* connection)
{
    const auto found = byJid_.find(connection->bareJid());
    if (found == byJid_.end())
        return;
    found->removeAll(connection);
    if (found->isEmpty())
        byJid_.erase(found);
}

Connection* Sessions::exact(const QString& fullJid) const
{
    for (auto* connection : of(address::bare(fullJid))) {
        if (connection->fullJid() == fullJid)
            return connection;
    }
    return nullptr;
}

Connection* Sessions::best(const QString& jid) const
{
    if (auto* named = exact(jid))
        return named;
    Connection* best = nullptr;
    for (auto* connection : available(address::bare(jid))) {
        if (!best || connection->presence.priority > best->presence.priority)
            best = connection;
    }
    return best;
}

QList<Connection*> Sessions::available(const QString& bareJid) const
{
    QList<Connection*> found;
    for (auto* connection : of(bareJid)) {
        if (connection->presence.available)
            found += connection;
    }
    return found;
}

QList<Connection*> Sessions::all() const
{
    QList<Connection*> everybody;
    for (const auto& resources : byJid_)
        everybody += resources;
    return everybody;
}

void Sessions::send(const QString& bareJid, const Element& stanza) const
{
    for (auto* connection : of(bareJid))
        connection->send(stanza);
}

} // namespace sandbox
