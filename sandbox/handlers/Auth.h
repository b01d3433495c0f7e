#pragma once

#include "sandbox/handlers/Call.h"

// jabber:iq:auth (XEP-0078): the password as a digest over the stream's id, or in clear.
namespace sandbox::auth
{

void handle(const Call& call);

} // namespace sandbox::auth
