#pragma once

#include "engine/wire/socket/Utf8.h"

#include <QByteArray>

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
//
// A stanza beyond the bounds is left out: some stranger's server let it pass, and the stream is none the
// worse for it.
class MarkupGuard
{
public:
    static constexpr int maxAttributes = 64;
    // Of elements in one another, the stanza's own included.
    static constexpr int maxDepth = 64;
    static constexpr int maxElements = 200'000;
    // Bytes of one stanza, tags included; beyond the second bound it isn't even skipped.
    static constexpr qint64 maxStanza = 4 * 1024 * 1024;
    static constexpr qint64 maxSkipped = 64 * 1024 * 1024;

    // What a piece of the stream holds.
    struct Finding {
        // The stanza whose beginning went on with the pieces before is left out.
        bool forgets = false;
        // What may go on.
        QByteArray clean;
        // The breach behind that, if any.
        StreamFault fault;
        // How many stanzas have been left out, each counted at its end.
        int skipped = 0;
    };
    // `bytes` go on where the last ones ended, however they were cut.
    Finding check(const QByteArray& bytes);

private:
    enum class In { Start, Text, Opened, Declaration, DeclarationName, Bang, CData, Tag, Quote };

    struct Sorting;

    Finding sorted(const QByteArray& bytes, qsizetype size);
    StreamFault step(char c);
    void openElement();
    bool isTooLong(qint64 at) const { return depth_ > 1 && at - stanzaAt_ > maxStanza; }
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
    bool closing_ = false; // the tag at hand closes an element
    char last_ = 0;        // the character before in this tag
    int depth_ = 0;        // the stream's own element counts
    int elements_ = 0;
    qint64 stanzaAt_ = 0; // where the stanza begins, from the present piece's first byte on
    bool skipping_ = false;
};
