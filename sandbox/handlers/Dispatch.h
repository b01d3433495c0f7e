#pragma once

#include "sandbox/handlers/Call.h"

namespace sandbox
{

// Takes a stanza to its handler, by what it is, where it goes and what it asks.
void dispatch(const Call& call);

} // namespace sandbox
