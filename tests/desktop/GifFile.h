#pragma once

#include <QByteArray>
#include <QPoint>
#include <QSize>

// Builds small GIF files by hand: frames of one colour, delays and places at will, broken ones too.
class GifFile
{
public:
    // 2 to the power of `colourBits` colours; the first four are black, red, green and blue.
    explicit GifFile(QSize screen, int colourBits = 2);

    GifFile& loop(int times);
    // `delay` in hundredths of a second. `colour` below 4.
    GifFile& frame(int delay, int colour, QPoint place = {}, QSize size = {2, 2});
    // What ends a block and starts a graphic control extension, with nothing behind it.
    GifFile& bareSeparator();
    QByteArray bytes() const { return data_ + ';'; }

private:
    void word(int value);
    void pixels(int count, int colour);

    QByteArray data_;
};
