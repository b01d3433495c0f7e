#pragma once

#include <QStringEncoder>

class QFile;

// One line of a log, written as its text comes. What follows a line break is indented, so that it can't look
// like another line. A text can be millions of line breaks: it goes in slices, and the line never stands
// whole in the memory a second time.
class LogLine
{
public:
    // The file, open and unbuffered, must outlive the object.
    explicit LogLine(QFile& file) : file_(file) {}

    void add(QStringView text);
    // Ends the line. False when it could not be written whole.
    bool end();

private:
    void addSlice(QStringView text);
    void write();

    QFile& file_;
    QStringEncoder utf8_{QStringEncoder::Utf8};
    QByteArray waiting_;
    bool afterReturn_ = false; // a line feed that follows belongs to the break before it
    bool isWhole_ = true;
};
