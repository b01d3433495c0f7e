#pragma once

#include "sandbox/handlers/Call.h"

// Who may see whose presence (RFC 3921, section 8): requests, consents and their ends, between accounts,
// personas and gateways.
namespace sandbox::subscribing
{

enum class Push { Yes, No };

// `type` from the account `user` to the address `to`, with what it does to both rosters.
void send(World& world, const QString& user, const QString& to, const QString& type, Push push = Push::Yes);

// `type` from the address `from` arrives at the bare address `to`.
void deliver(World& world, const QString& from, const QString& to, const QString& type);

// A subscription presence of a client.
void handle(const Call& call);

} // namespace sandbox::subscribing
