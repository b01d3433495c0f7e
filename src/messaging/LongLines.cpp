#include "messaging/LongLines.h"

#include <algorithm>

namespace longlines
{

namespace
{

constexpr qsizetype longestLine = 4096; // UTF-16 units

} // namespace

bool endsLine(QChar c)
{
    return c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

bool mustBreak(const QString& text)
{
    if (text.size() <= longestLine)
        return false;
    qsizetype length = 0;
    for (const QChar c : text) {
        length = endsLine(c) ? 0 : length + 1;
        if (length > longestLine)
            return true;
    }
    return false;
}

qsizetype pieceLength(QStringView text, qsizetype start)
{
    const qsizetype most = qMin(longestLine, text.size() - start);
    const auto piece = text.mid(start, most);
    const auto lineEnd = std::find_if(piece.begin(), piece.end(), endsLine);
    if (lineEnd != piece.end())
        return lineEnd - piece.begin() + 1;
    if (start + most == text.size())
        return most;
    const auto space = piece.lastIndexOf(u' ');
    if (space > longestLine / 2)
        return space + 1;
    return piece.back().isHighSurrogate() ? most - 1 : most;
}

} // namespace longlines
