#pragma once

#include "engine/wire/socket/Utf8.h"

#include <QByteArray>
#include <QByteArrayView>

// A breach of the stream by its other end (RFC 6120, 4.9).
struct StreamFault {
    // The name of the stream error, such as "policy-violation".
    const char* condition = nullptr;
    // What was found, for the diagnostics.
    const char* detail = "";

    explicit operator bool() const { return condition != nullptr; }
    // The <stream:error/> that tells the other end.
    QByteArray xml() const
    {
        return QByteArrayLiteral("<stream:error><") + condition +
               QByteArrayLiteral(" xmlns=\"urn:ietf:params:xml:ns:xmpp-streams\"/></stream:error>");
    }
};

// Looks at the raw bytes of a stream before the XML reader does, so that what XMPP forbids (RFC 6120, 11.1)
// is never parsed at all: document types, processing instructions, comments, other encodings. It also counts
// the attributes of a tag, since a reader compares each with every other. One pass, no buffer.
class MarkupGuard
{
public:
    static constexpr int maxAttributes = 64;

    // What a piece of the stream holds: the bytes that may go on, and the breach behind them, if any.
    struct Finding {
        qsizetype clean = 0;
        StreamFault fault;
    };
    // `bytes` go on where the last ones ended, however they were cut.
    Finding check(QByteArrayView bytes);

private:
    enum class In { Start, Text, Opened, Declaration, DeclarationName, Bang, CData, Tag, Quote };

    Finding checkMarkup(QByteArrayView bytes);
    StreamFault step(char c);
    StreamFault opened(char c);
    StreamFault tag(char c);
    StreamFault literal(char c, const char* expected, In next);
    void cdata(char c);

    Utf8Check utf8_;
    In in_ = In::Start;
    bool atStart_ = true;
    char quote_ = 0;
    int matched_ = 0;
    int attributes_ = 0;
};
