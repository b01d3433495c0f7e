#pragma once

#include <QString>

// What a room's messages say.
namespace roomlines
{

// The body with the sender's nick in the place of every "/me", or else of every "/ME". Kept: inside of words
// too.
QString displayed(const QString& body, const QString& nick);
// Whether the words speak of this nick, as a word of its own, in any case.
bool namesNick(const QString& words, const QString& nick);

} // namespace roomlines
