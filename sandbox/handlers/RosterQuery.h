#pragma once

#include "sandbox/handlers/Call.h"

// jabber:iq:roster (RFC 3921, section 7): the list, and changes to it.
namespace sandbox::rosterquery
{

void handle(const Call& call);

} // namespace sandbox::rosterquery
