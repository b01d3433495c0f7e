#include "groupchat/RoomLines.h"

namespace roomlines
{
namespace
{

// Of a hostile body only so much is rewritten, with so much of a nick: the result would be a thousand times
// as long. Characters.
constexpr qsizetype mostRewritten = 64 * 1024;
constexpr qsizetype longestNick = 200;

bool isPartOfWord(const QString& text, qsizetype place)
{
    return place >= 0 && place < text.size() && text.at(place).isLetterOrNumber();
}

} // namespace

QString displayed(const QString& body, const QString& nick)
{
    for (const auto& me : {QStringLiteral("/me"), QStringLiteral("/ME")}) {
        if (body.contains(me))
            return body.left(mostRewritten).replace(me, nick.left(longestNick)) + body.mid(mostRewritten);
    }
    return body;
}

bool namesNick(const QString& words, const QString& nick)
{
    if (nick.isEmpty())
        return false;
    for (auto at = words.indexOf(nick, 0, Qt::CaseInsensitive); at >= 0;
         at = words.indexOf(nick, at + nick.size(), Qt::CaseInsensitive)) {
        if (!isPartOfWord(words, at - 1) && !isPartOfWord(words, at + nick.size()))
            return true;
    }
    return false;
}

} // namespace roomlines
