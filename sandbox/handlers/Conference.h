#pragma once

#include "sandbox/handlers/Call.h"

// jabber:iq:conference: what a room is called, and the nick that completes an entry.
namespace sandbox::conference
{

void handle(const Call& call);

} // namespace sandbox::conference
