#pragma once

#include <QString>

class CRoster;

// Pictures for the words that a contact's Status can hold.
namespace statusimages
{

// Empty for a word that is no status of an announced contact.
QString StatusImageKey(const QString& status);
// The picture for the status of the contact with this JID, as the list has it.
QString FindStatusImg(const CRoster& roster, const QString& JID);

} // namespace statusimages
