#pragma once

#include "sandbox/handlers/Call.h"

// jabber:iq:search (XEP-0055) in the directory of all people whom the server knows.
namespace sandbox::search
{

void handle(const Call& call);

} // namespace sandbox::search
