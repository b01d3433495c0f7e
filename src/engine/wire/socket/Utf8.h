#pragma once

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
