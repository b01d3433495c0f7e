#pragma once

#include <QByteArray>
#include <QPoint>
#include <QSize>

// Builds small GIF files by hand: frames of one colour, delays and places at will, broken ones too.
class GifFile
{
public:
    // 2 to the power of `colourBits` colours; the first four are black, red, green and blue.
    explicit GifFile(QSize screen, int colourBits = 2) : data_("GIF89a")
    {
        word(screen.width());
        word(screen.height());
        data_ += char(0xf0 | (colourBits - 1));
        data_ += QByteArray(2, '\0');
        QByteArray palette = QByteArray::fromHex("000000ff000000ff000000ff");
        palette.resize(3 << colourBits, '\x55');
        data_ += palette;
    }

    GifFile& loop(int times)
    {
        data_ += "\x21\xff\x0bNETSCAPE2.0\x03\x01";
        word(times);
        data_ += '\0';
        return *this;
    }
    // `delay` in hundredths of a second. `colour` below 4.
    GifFile& frame(int delay, int colour, QPoint place = {}, QSize size = {2, 2})
    {
        data_ += QByteArray::fromHex("21f90408");
        word(delay);
        data_ += QByteArray::fromHex("00002c");
        for (const int number : {place.x(), place.y(), size.width(), size.height()})
            word(number);
        data_ += '\0';
        pixels(size.width() * size.height(), colour);
        return *this;
    }
    // What ends a block and starts a graphic control extension, with nothing behind it.
    GifFile& bareSeparator()
    {
        data_ += QByteArray("\0\x21\xf9", 3);
        return *this;
    }
    QByteArray bytes() const { return data_ + ';'; }

private:
    void word(int value)
    {
        data_ += char(value & 255);
        data_ += char(value >> 8);
    }
    // A clear code before each pixel keeps all codes three bits wide, so that nothing need be compressed.
    void pixels(int count, int colour)
    {
        QByteArray codes;
        int buffer = 0;
        int filled = 0;
        const auto put = [&](int code) {
            buffer |= code << filled;
            for (filled += 3; filled >= 8; filled -= 8, buffer >>= 8)
                codes += char(buffer & 255);
        };
        for (int i = 0; i < count; ++i) {
            put(4);
            put(colour);
        }
        put(5);
        codes += char(buffer & 255);
        data_ += '\x02';
        data_ += char(codes.size()) + codes + '\0';
    }

    QByteArray data_;
};
