#pragma once

#include "sandbox/handlers/Call.h"

// jabber:iq:browse (XEP-0011): what there is at an address.
namespace sandbox::browse
{

void server(const Call& call);      // namespaces, and all services
void admin(const Call& call);       // who is signed in, for administrators
void roomService(const Call& call); // its rooms
void directory(const Call& call);
void gateway(const Call& call);
void user(const Call& call); // a person's resources

} // namespace sandbox::browse
