#pragma once

#include "sandbox/Persona.h"
#include "sandbox/handlers/Call.h"

// Invitations to telephone calls (jabber:iq:oob, XEP-0066).
namespace sandbox::telephone
{

// Somebody invites a persona, who refuses while it doesn't want to be disturbed.
void invited(const Call& call, const Persona& persona);
// A persona invites the client.
void invite(const Persona& persona, Connection& client);

} // namespace sandbox::telephone
