#pragma once

#include "sandbox/World.h"

// Roster pushes (RFC 3921, section 7).
namespace sandbox::rosterpush
{

// Tells all resources of `user` of an <item/>.
void push(const World& world, const QString& user, const Element& item);

} // namespace sandbox::rosterpush
