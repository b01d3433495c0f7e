#pragma once

#include <QByteArray>
#include <QStringDecoder>
#include <QXmlStreamReader>

namespace sandbox
{

// Cuts a client's stream into its stanzas, whatever pieces the bytes come in. Strict: a DTD, an instruction
// or anything that isn't well-formed breaks the stream.
class StreamReader
{
public:
    enum class Event { None, Opened, Stanza, Closed, Broken };

    void feed(const QByteArray& bytes);
    // The next thing found; None when more bytes are needed.
    Event next();

    // After Opened: the `to` of the stream header.
    QString host() const { return host_; }
    // After Opened and Stanza: the exact text.
    QByteArray raw() const { return raw_; }

private:
    Event started();
    Event ended();
    QString taken();

    QXmlStreamReader xml_;
    QStringDecoder decoder_{QStringDecoder::Utf8};
    QString text_;
    qint64 takenTo_ = 0; // offset in the stream of the first character of text_
    int depth_ = 0;
    QString host_;
    QByteArray raw_;
};

} // namespace sandbox
