#pragma once

#include "engine/wire/StreamFault.h"

#include <QByteArrayView>

// Looks at the raw bytes of a stream before the XML reader does, so that what XMPP forbids (RFC 6120, 11.1)
// is never parsed at all: document types, processing instructions, comments, other encodings. It also counts
// the attributes of a tag, since a reader compares each with every other. One pass, no buffer.
class MarkupGuard
{
public:
    static constexpr int maxAttributes = 64;

    // The first breach in `bytes`, which go on where the last ones ended, however they were cut.
    StreamFault check(QByteArrayView bytes);

private:
    enum class In { Start, Text, Opened, Declaration, DeclarationName, Bang, CData, Tag, Quote };

    StreamFault step(char c);
    StreamFault opened(char c);
    StreamFault tag(char c);
    StreamFault literal(char c, const char* expected, In next);
    void cdata(char c);

    In in_ = In::Start;
    bool atStart_ = true;
    char quote_ = 0;
    int matched_ = 0;
    int attributes_ = 0;
};
