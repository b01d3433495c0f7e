#include "messaging/LongLines.h"

namespace longlines
{

namespace
{

constexpr int heaviestLine = 4096; // as much as so many letters

// The last two are signs of the toolkit's own, for the edges of frames in a text.
bool beginsBlock(QChar c)
{
    return c == u'\n' || c == u'\r' || c == QChar::ParagraphSeparator || c == QChar(0xFDD0) ||
           c == QChar(0xFDD1);
}

// Makes one sign of its neighbours: the joiner and the key cap, and the halves of flags, skin tones and tags
// by their low or high surrogate.
bool joins(char16_t u)
{
    return u == 0x200D || u == 0x20E3 || u == 0xDB40 || (u >= 0xDDE6 && u <= 0xDDFF) ||
           (u >= 0xDFFB && u <= 0xDFFF);
}

// By what shaping costs: a colour font's ligatures are a hundred times as dear as letters, signs that combine
// and controls ten times, and both the dearer the more of them stand in a line.
int weightOf(QChar c)
{
    const auto u = c.unicode();
    if (u < 0x300)
        return 1;
    if (joins(u))
        return 400;
    const bool combines = c.isMark() || c.category() == QChar::Other_Format ||
                          u == QChar::ObjectReplacementCharacter || u == QChar::LineSeparator ||
                          (u >= 0x1100 && u < 0x1200);
    return combines ? 64 : c.isSurrogate() ? 4 : 1;
}

} // namespace

bool breaksLine(QChar c)
{
    return beginsBlock(c) || c == QChar::LineSeparator || c == QChar(0x85);
}

QString indented(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        out += c;
        if (breaksLine(c))
            out += QStringLiteral("    ");
    }
    return out;
}

qsizetype shownLength(QStringView text, qsizetype most, int mostLines)
{
    qsizetype length = qMin(text.size(), most);
    int lines = 0;
    for (qsizetype i = 0; i < length; ++i) {
        if (breaksLine(text[i]) && ++lines == mostLines)
            length = i;
    }
    const bool splits = length > 0 && length < text.size() && text[length - 1].isHighSurrogate();
    return splits ? length - 1 : length;
}

QString shownLine(const QString& line)
{
    const qsizetype length = Cutter().take(line);
    return length == line.size() ? line : line.left(length) + QStringLiteral("...");
}

qsizetype Cutter::take(QStringView text)
{
    qsizetype blank = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        weight_ = beginsBlock(c) ? 0 : weight_ + weightOf(c);
        if (weight_ == 0)
            blank = 0;
        if (weight_ > heaviestLine) {
            weight_ = 0;
            return blank > 0 ? blank : c.isLowSurrogate() && i > 0 ? i - 1 : i;
        }
        if (c == u' ' && weight_ > heaviestLine / 2)
            blank = i + 1;
    }
    return text.size();
}

} // namespace longlines
