#pragma once

#include "services/SearchAnswers.h"

#include <QString>

class Stanza;

// What administrators of the server ask of it.
namespace serveradmin
{

// Asks who is on line (jabber:iq:browse, XEP-0011).
QString onlineUsersQuery(const QString& server);
// How many users an answer names. Kept: of a user who is on line the name ends in brackets.
int onlineUsers(const Stanza& answer);
// These users' addresses and names.
searchanswers::Results usersOnline(const Stanza& answer);

// Where messages to all who are on line go, and the message of the day.
QString announceOnline(const QString& server);
QString announceDay(const QString& server);

// Gives a user, named by the whole JID, a new password (jabber:iq:register, XEP-0077).
QString passwordChange(const QString& server, const QString& user, const QString& password);

} // namespace serveradmin
