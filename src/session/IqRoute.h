#pragma once

#include <QString>

#include <string_view>

// What the children and the id of an IQ ask for. The tables of the dispatch, without any window.
enum class IqStep {
    None,
    Roster,
    Agents,
    Auth,
    Browse,
    CheckServer,
    SupportedNamespaces,
    Pass,
};

// A step of the dispatch, with the place in Routes for CheckServer and Pass.
struct IqRoute {
    IqStep step = IqStep::None;
    const char* place = nullptr;
};

// The route of a child element by its namespace; exact and case-sensitive.
IqRoute routeOfNamespace(std::string_view ns);

// Where a jabber:iq:browse goes: by the fixed ids, in the order in which they are tested; `isGroupChat` tells
// whether the session of the sender is a room's.
IqRoute routeOfBrowse(const QString& id, bool isGroupChat);
