#pragma once

#include "sandbox/handlers/Call.h"

// Presence (RFC 3921, section 5): what a client says of itself, and what it says to one address.
namespace sandbox::presences
{

void handle(const Call& call);

// The connection is lost or closed: all who saw it learn that it has gone.
void gone(World& world, Connection& client);

} // namespace sandbox::presences
