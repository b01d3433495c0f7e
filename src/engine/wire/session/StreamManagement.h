#pragma once

#include "engine/Stanza.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <deque>

// Stream management (XEP-0198): counts the stanzas of both ways, keeps what the server has not yet
// acknowledged, and takes the session up again on a new connection. Elements in, texts out.
class StreamManagement
{
public:
    // A session begins: nothing is counted until enable() was sent.
    void begin();
    // The request to switch it on.
    QByteArray enable();
    // Whether `element` belongs to stream management. It is dealt with: takeOutput() has the answer.
    bool handle(const Stanza& element);
    // A stanza of the server's was taken in.
    void received();
    // A stanza goes onto the wire. A request for acknowledgement follows from time to time.
    void sent(const QByteArray& stanza);
    QList<QByteArray> takeOutput() { return std::exchange(output_, {}); }
    // Asks the server for a sign of life.
    QByteArray request() const { return QByteArrayLiteral("<r xmlns=\"urn:xmpp:sm:3\"/>"); }

    bool isOn() const { return enabled_; }
    bool canResume() const { return !id_.isEmpty(); }
    QByteArray resumeRequest() const;
    // The server's answer to that, whatever it is: it may tell how much it had received.
    void answered(const Stanza& element);
    // The server has taken the session up: what it has not received is in takeOutput().
    void resumed(const Stanza& element);
    // Stanzas that the server has not acknowledged.
    const std::deque<QByteArray>& unacknowledged() const { return unacknowledged_; }

private:
    void acknowledged(quint32 count);
    void forgetFirst();

    bool counting_ = false;
    bool enabled_ = false;
    QString id_;
    // Both counts wrap at 2^32, as the protocol has it.
    quint32 received_ = 0;
    quint32 acknowledged_ = 0;
    std::deque<QByteArray> unacknowledged_;
    qsizetype keptBytes_ = 0;
    int sinceRequest_ = 0;
    QList<QByteArray> output_;
};
