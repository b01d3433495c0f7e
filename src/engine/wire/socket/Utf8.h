#pragma once

#include <QByteArrayView>
#include <QStringView>

#include <string>

// Appends `text` to `out` in UTF-8, without an allocation where `out` has room. Lone surrogates, which no
// decoder makes, become U+FFFD.
inline void appendUtf8(std::string& out, QStringView text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t c = text[i].unicode();
        if (c < 0x80) {
            out += static_cast<char>(c);
            continue;
        }
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            c = QChar::surrogateToUcs4(static_cast<char16_t>(c), text[++i].unicode());
        else if (QChar::isSurrogate(c))
            c = QChar::ReplacementCharacter;
        if (c < 0x800) {
            out += static_cast<char>(0xC0 | (c >> 6));
        } else {
            if (c < 0x10000) {
                out += static_cast<char>(0xE0 | (c >> 12));
            } else {
                out += static_cast<char>(0xF0 | (c >> 18));
                out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            }
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        }
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

inline const std::string& toUtf8(std::string& scratch, QStringView text)
{
    scratch.clear();
    appendUtf8(scratch, text);
    return scratch;
}

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
