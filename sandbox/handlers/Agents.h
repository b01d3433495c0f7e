#pragma once

#include "sandbox/handlers/Call.h"

// jabber:iq:agents (XEP-0094): the server's gateways, its directory and its rooms.
namespace sandbox::agents
{

void handle(const Call& call);

} // namespace sandbox::agents
