#pragma once

#include <QString>

// The texts of the stanzas that message windows send raw.
namespace stanzas
{

// A typing event (XEP-0022).
QString composing(const QString& to);
// Adds a contact to the roster (RFC 6121, 2.3) under its JID as name.
QString addContact(const QString& jid);

} // namespace stanzas
