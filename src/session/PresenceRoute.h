#pragma once

struct Client;
class Stanza;

// What a received presence asks for, once the contact list is up.
enum class PresenceRoute {
    Drop,
    AskForAuthorization,
    Accepted,
    Removed,
    Refused,
    AcceptGateway,
    Notice,
    Contact,
};

PresenceRoute routeOfPresence(const Stanza& stanza, const Client& client);
