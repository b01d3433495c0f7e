#pragma once

#include <QString>

// The texts of the stanzas that find, enter and offer rooms. Values are escaped as they are placed.
namespace roomstanzas
{

// Asks a server for its room services (jabber:iq:browse, XEP-0011).
QString roomServices(const QString& server);
// Asks a room how it is entered (jabber:iq:conference).
QString askRoom(const QString& room);
// Gives the nick, which completes the entry.
QString nick(const QString& room, const QString& nick);
// Invites a contact to a room (jabber:x:conference, XEP-0249).
QString invitation(const QString& contact, const QString& room, const QString& text);

} // namespace roomstanzas
