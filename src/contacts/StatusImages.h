#pragma once

#include <QString>

// Pictures for the words that a contact's Status can hold.
namespace statusimages
{

// Empty for a word that is no status of an announced contact.
QString StatusImageKey(const QString& status);

} // namespace statusimages
