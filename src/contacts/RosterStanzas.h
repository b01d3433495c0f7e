#pragma once

#include <QString>

struct Client;

// The texts of the stanzas that the contact list sends. Values are escaped as they are placed.
namespace stanzas
{

// Adds a contact under its JID as name (RFC 6121, 2.3).
QString addContact(const QString& JID);
// Asks the server to remove a contact (jabber:iq:roster, RFC 6121, 2.5).
QString removeContact(const QString& JID, const QString& nick, const QString& group);
// Sets a contact's group; an empty one takes it out of all groups (RFC 6121, 2.4).
QString moveContact(const QString& JID, const QString& nick, const QString& group);
// Sets a contact's name.
QString renameContact(const QString& JID, const QString& nick, const QString& group);
// Keeps a contact after it took its subscription back.
QString keepUnsubscribed(const QString& JID, const QString& nick, const QString& group);
QString wholeRoster();
// Asks for a vCard (vcard-temp, XEP-0054).
QString vCard(const QString& JID);
// Asks an address what it offers (jabber:iq:browse, XEP-0011); the id tells what the answer is for.
QString browse(const QString& id, const QString& JID);
// Asks the server what services it has.
QString browseServices(const QString& server);
// The own presence; an empty `show` is plain availability.
QString presence(const QString& show, const QString& status);

// Sends a text outside of an event. False when the engine refused it or isn't there yet.
bool send(const Client& client, const QString& text);

} // namespace stanzas
