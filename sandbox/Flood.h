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

// `count` lines in a room, in turn from so many occupants "guest N".
std::function<QByteArray()> roomTalk(const Connection& client, const QString& room, int count, int occupants,
                                     const QString& last = {});

// What somebody sends who means ill, from the first contact: "brackets", one link with 200,000 of them;
// "emoji", 160 KB of joined ones; "lines", 2,000,000 in one message; "combining", 100,000 marks in an address
// and in a text; "links", 100,000 characters of them; "queries", 100,000 in one request of a long id;
// "requests", a hundred of one stranger and one each of 900; "strangers", a message of each of 1,000; and for
// any other `kind` 100,000 resources.
std::function<QByteArray()> hostile(World& world, const Connection& client, const QString& kind,
                                    const QString& last = {});

} // namespace sandbox::flood
