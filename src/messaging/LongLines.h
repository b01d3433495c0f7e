#pragma once

#include <QString>

// What the text layout can't take: its cost grows with the square of an unbroken line, and with every line
// that a text holds.
namespace longlines
{

// How much of `text` is shown where `most` UTF-16 units and so many lines have room, at first what a
// transcript shows of one message: never half of a surrogate pair.
qsizetype shownLength(QStringView text, qsizetype most = 65'536, int mostLines = 1000);

// Whether what follows the character begins a new line on the screen.
bool breaksLine(QChar c);

// The same text with its lines but the first one indented.
QString indented(const QString& text);

// A line from somebody else for a field or a list, cut with "..." where the layout would not take it.
QString shownLine(const QString& line);

// Cuts lines of extreme length into pieces that the layout takes in no time, over texts that are inserted one
// behind the other. Signs that join their neighbours weigh more than letters.
class Cutter
{
public:
    void beginLine() { weight_ = 0; }
    // How much of `text` goes in before the line has to be broken: all of it when it needn't. Prefers to cut
    // behind a blank, and never splits a surrogate pair.
    qsizetype take(QStringView text);

private:
    int weight_ = 0; // of the line so far
};

} // namespace longlines
