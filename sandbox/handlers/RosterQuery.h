#pragma once

#include "sandbox/handlers/Call.h"

// jabber:iq:roster (RFC 3921, section 7): the list, changes to it, and the pushes to every resource.
namespace sandbox::rosterquery
{

void handle(const Call& call);

// Tells all resources of `user` of an item.
void push(const World& world, const QString& user, const RosterItem& item);

} // namespace sandbox::rosterquery
