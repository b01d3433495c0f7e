#pragma once

struct Client;
class Stanza;

// Where a received message goes.
enum class MessageRoute { Drop, Notice, GroupChat, Chat };

MessageRoute routeOfMessage(const Stanza& stanza, const Client& client);
