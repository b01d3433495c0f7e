#include "sandbox/handlers/Place.h"

#include "sandbox/Address.h"

#include <algorithm>

namespace sandbox
{
namespace
{

Place atHost(const QString& jid)
{
    if (!address::node(jid).isEmpty())
        return Place::User;
    const QString resource = address::resource(jid);
    if (resource == u"admin")
        return Place::Admin;
    return resource.startsWith(u"announce/") ? Place::Announce : Place::Server;
}

Place atRooms(const QString& jid)
{
    if (address::node(jid).isEmpty())
        return Place::RoomService;
    return address::resource(jid).isEmpty() && !jid.endsWith(u'/') ? Place::Room : Place::Occupant;
}

} // namespace

Place placeOf(World& world, const QString& jid)
{
    const QString domain = address::domain(jid);
    if (jid.isEmpty() || domain == Host)
        return atHost(jid);
    if (world.persona(jid))
        return Place::User;
    if (domain == world.directoryJid())
        return Place::Directory;
    if (world.gateway(domain))
        return Place::Gateway;
    const auto& services = world.roomServices();
    if (std::any_of(services.begin(), services.end(),
                    [&](const auto& service) { return service.jid == domain; }))
        return atRooms(jid);
    return domain.endsWith(u'.' + Host) ? Place::Nowhere : Place::Elsewhere;
}

} // namespace sandbox
