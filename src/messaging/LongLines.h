#pragma once

#include <QString>

// Lines of extreme length, cut into pieces for the text layout: its cost grows with the square of an unbroken
// line.
namespace longlines
{

bool endsLine(QChar c);
// Whether `text` holds a line too long for the layout.
bool mustBreak(const QString& text);
// How much of `text`, from `start`, the next piece takes: up to and with the end of a line, or a part of a
// long one. Prefers to cut behind a blank, and never splits a surrogate pair.
qsizetype pieceLength(QStringView text, qsizetype start);

} // namespace longlines
