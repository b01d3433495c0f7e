#pragma once

#include <QByteArrayView>

// Whether bytes are UTF-8 (RFC 3629), however they are cut. The XML reader replaces what isn't; XMPP wants it
// refused.
class Utf8Check
{
public:
    // How many of `bytes` may go on; fewer than all at the first that doesn't fit.
    qsizetype validPrefix(QByteArrayView bytes)
    {
        for (qsizetype i = 0; i < bytes.size(); ++i) {
            const auto byte = static_cast<unsigned char>(bytes[i]);
            if (missing_ == 0 && byte < 0x80)
                continue;
            if (missing_ == 0 ? !lead(byte) : !follow(byte))
                return i;
        }
        return bytes.size();
    }

private:
    bool lead(unsigned char byte)
    {
        // Neither overlong forms nor surrogates nor what lies beyond U+10FFFF.
        lowest_ = byte == 0xE0 ? 0xA0 : byte == 0xF0 ? 0x90 : 0x80;
        highest_ = byte == 0xED ? 0x9F : byte == 0xF4 ? 0x8F : 0xBF;
        missing_ = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : 1;
        return byte >= 0xC2 && byte <= 0xF4;
    }
    bool follow(unsigned char byte)
    {
        const bool fits = byte >= lowest_ && byte <= highest_;
        lowest_ = 0x80;
        highest_ = 0xBF;
        --missing_;
        return fits;
    }

    int missing_ = 0;
    unsigned char lowest_ = 0x80;
    unsigned char highest_ = 0xBF;
};
