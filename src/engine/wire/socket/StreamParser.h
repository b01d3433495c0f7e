#pragma once

#include "engine/Stanza.h"
#include "engine/wire/socket/MarkupGuard.h"

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>

#include <memory>
#include <string>
#include <vector>

// The opening tag of the other end's stream (RFC 6120, 4.7).
struct StreamHeader {
    QString from;
    QString id;
    // False for a server from before XMPP 1.0, which sends no features.
    bool hasFeatures = false;
};

// Cuts the bytes of a stream, split anywhere, into its top-level elements. Strict and bounded: the first
// breach ends it, and an element beyond the bounds is left out. Prefixes are resolved: an element has its
// local name and an `xmlns` where its namespace differs from its parent's, a top-level element where it
// differs from jabber:client. Attributes of foreign namespaces are left out.
class StreamParser
{
public:
    enum class Event { None, Opened, Element, Closed, Broken };

    StreamParser();

    // Forgets everything: the next bytes begin a new stream.
    void reset();
    // To be called when next() has given None, in pieces of some kilobytes: a stanza that is too long is
    // noticed between two pieces.
    void feed(const QByteArray& bytes);
    // What comes next in the bytes fed; None when more are needed. Closed and Broken are final.
    Event next();
    // The document of the last Element.
    std::shared_ptr<Stanza> takeElement();
    // How many elements were left out since the last call.
    int takeSkipped() { return std::exchange(skipped_, 0); }
    const StreamHeader& header() const { return header_; }
    const StreamFault& fault() const { return fault_; }

private:
    Event token(QXmlStreamReader::TokenType type);
    Event startElement();
    Event endElement();
    Event openStream();
    Event characters();
    Event starved();
    Event broken(const StreamFault& fault);
    bool isTooLong() const;
    void beginStanza();
    void forgetStanza();
    void appendElement();
    void appendAttributes();
    void flushText();

    QXmlStreamReader reader_;
    MarkupGuard guard_;
    StreamHeader header_;
    StreamFault fault_;
    // Stands behind the bytes that were fed.
    StreamFault coming_;
    bool closed_ = false;
    bool hungry_ = true;
    int depth_ = 0;
    int skipped_ = 0;
    // The stream's opening tag, for a reader that begins anew behind a stanza.
    QString opening_;
    qint64 stanzaStart_ = 0;
    std::unique_ptr<pugi::xml_document> document_;
    pugi::xml_node current_;
    std::string text_;
    std::string name_;
    std::string value_;
    // The namespace at each depth; strings are kept for reuse.
    std::vector<std::string> namespaces_;
};
