#pragma once

#include <QString>

#include <string_view>

// What the children and the id of an IQ ask for. The tables of the dispatch, without any window.
enum class IqRoute {
    None,
    Roster,
    Agents,
    Register,
    Auth,
    Browse,
    Search,
    VCard,
    Conference,
    OutOfBand,
};

// The route of a child element by its namespace; exact and case-sensitive.
IqRoute routeOfNamespace(std::string_view ns);

// Where a jabber:iq:browse goes.
enum class BrowseRoute {
    None,
    CheckServer,
    SearchServices,
    SearchBrowser,
    ChatRooms,
    GroupChat,
    SupportedNamespaces,
    OnlineUsers,
};

// By the fixed ids, in the order in which they are tested; `isGroupChat` tells whether the session of the
// sender is a room's.
BrowseRoute routeOfBrowse(const QString& id, bool isGroupChat);
