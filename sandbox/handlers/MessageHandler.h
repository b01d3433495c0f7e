#pragma once

#include "sandbox/handlers/Call.h"

// Messages: to people, into rooms, to all who are online; and those that wait for somebody who isn't.
namespace sandbox::messages
{

void handle(const Call& call);

// What waited for the account, with the time of its arrival (XEP-0091), and the message of the day if it is
// new.
void deliverWaiting(const World& world, Account& account, Connection& client);

// A headline from a service to all who are available.
void headline(const World& world, const QString& from, const QString& subject, const QString& body);

} // namespace sandbox::messages
