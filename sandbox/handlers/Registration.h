#pragma once

#include "sandbox/handlers/Call.h"

// jabber:iq:register with the server itself (XEP-0077): a new account before signing in; afterwards its
// password, its removal, and for an administrator the passwords of others.
namespace sandbox::registration
{

void handle(const Call& call);

} // namespace sandbox::registration
