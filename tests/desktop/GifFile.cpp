#include "desktop/GifFile.h"

GifFile::GifFile(QSize screen, int colourBits) : data_("GIF89a")
{
    word(screen.width());
    word(screen.height());
    data_ += char(0xf0 | (colourBits - 1));
    data_ += QByteArray(2, '\0');
    QByteArray palette = QByteArray::fromHex("000000ff000000ff000000ff");
    palette.resize(3 << colourBits, '\x55');
    data_ += palette;
}

GifFile& GifFile::loop(int times)
{
    data_ += "\x21\xff\x0bNETSCAPE2.0\x03\x01";
    word(times);
    data_ += '\0';
    return *this;
}

GifFile& GifFile::frame(int delay, int colour, QPoint place, QSize size)
{
    data_ += QByteArray::fromHex("21f90408");
    word(delay);
    data_ += QByteArray::fromHex("00002c");
    word(place.x());
    word(place.y());
    word(size.width());
    word(size.height());
    data_ += '\0';
    pixels(size.width() * size.height(), colour);
    return *this;
}

GifFile& GifFile::bareSeparator()
{
    data_ += QByteArray("\0\x21\xf9", 3);
    return *this;
}

void GifFile::word(int value)
{
    data_ += char(value & 255);
    data_ += char(value >> 8);
}

// A clear code before each pixel keeps all codes three bits wide, so that nothing need be compressed.
void GifFile::pixels(int count, int colour)
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
