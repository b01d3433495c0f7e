#pragma once

#include "engine/bridge/Bridge.h"
#include "engine/bridge/IqTracker.h"
#include "engine/wire/socket/StreamParser.h"
#include "support/FakeEngine.h"

// A gateway whose wire is in the test's hand: what comes in passes the stream's parser, the tracker of
// answers and the bridge, and what goes out passes the bridge, as behind a socket.
class WireGateway : public FakeGateway
{
public:
    void setQueue(std::shared_ptr<StanzaQueue> queue) override { queue_ = std::move(queue); }
    void Trigger() override;

    // A session begins: the client is told, the roster and the agents are asked for.
    void open(const QString& fullJid, const QString& server);
    void lose();
    // Bytes of the stream. False when they broke it: the session is lost then.
    bool receive(const QByteArray& bytes);
    void pass(qint64 nowMs) { take(bridge_.tick(nowMs)); }

    // Everything that went out, one stanza each.
    QStringList takeWire() { return std::exchange(wire_, {}); }

private:
    void take(const BridgeOutput& out);
    void deliver(std::shared_ptr<Stanza> stanza);

    std::shared_ptr<StanzaQueue> queue_;
    Bridge bridge_;
    IqTracker tracker_;
    StreamParser parser_;
    QStringList wire_;
};
