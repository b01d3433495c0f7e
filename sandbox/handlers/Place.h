#pragma once

#include "sandbox/World.h"

namespace sandbox
{

// What an address is the address of.
enum class Place {
    Server,
    Admin,    // host/admin
    Announce, // host/announce/...
    User,     // a person, with or without a resource; also a persona elsewhere
    Gateway,
    Directory,
    RoomService,
    Room,
    Occupant,
    Nowhere, // a service that this server doesn't have
    Elsewhere,
};

Place placeOf(World& world, const QString& jid);

} // namespace sandbox
