#pragma once

#include "sandbox/World.h"

// The world for measurements: the account bench/bench with many contacts, and a contact "control" who on the
// message "presences", or "messages COUNT SIZE SENDERS", or "talk", lets loose a flood and says "done" at its
// end. The directory finds 5,000 people by the first name "Seeker".
namespace sandbox::bench
{

void populate(World& world, int contacts, int groups);

} // namespace sandbox::bench
