#pragma once

#include "sandbox/handlers/Call.h"

// Gateways to other networks: registration by the form that the gateway gives (jabber:iq:register), and their
// presence, which tells a registered user that the other network is reached.
namespace sandbox::gateways
{

void registration(const Call& call);
// A client signs on to a gateway, or off, by presence to it.
void presence(const Call& call);
// The client has come online: so do its gateways.
void signOn(const World& world, Connection& client);

} // namespace sandbox::gateways
