#pragma once

#include "sandbox/handlers/Call.h"

// vcard-temp in its old spelling, `VCARD`: the own card is kept as it is set, others' can be read.
namespace sandbox::vcards
{

void handle(const Call& call);

} // namespace sandbox::vcards
