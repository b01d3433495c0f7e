#pragma once

#include "sandbox/Connection.h"
#include "sandbox/World.h"

#include <functional>

// Many stanzas at once, made as the socket takes them. Each function gives a source for `Connection::pour`;
// `last` is poured at the end.
namespace sandbox::flood
{

// One presence from each contact in the client's roster, of changing kinds.
std::function<QByteArray()> presences(World& world, const Connection& client, const QString& last = {});

// `count` chat messages with bodies of `size` bytes, in turn from the first `senders` contacts.
std::function<QByteArray()> messages(World& world, const Connection& client, int count, int size, int senders,
                                     const QString& last = {});

} // namespace sandbox::flood
