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
    void Trigger() override
    {
        if (!connected)
            return queue_->clearOutbound();
        for (const auto& stanza : queue_->takeOutbound())
            take(bridge_.down(stanza));
    }
    // A session begins: the client is told, the roster and the agents are asked for.
    void open(const QString& fullJid, const QString& server)
    {
        connected = true;
        queue_->setOwnJid(fullJid, fullJid);
        tracker_.begin(fullJid, server);
        bridge_.begin({fullJid, server});
        parser_.reset();
        receive("<stream:stream xmlns='jabber:client' xmlns:stream='http://etherx.jabber.org/streams' "
                "id='s1' version='1.0'>");
        queue_->deliver(Stanza::notice("connect"));
        for (const auto* request : {"roster", "agents"})
            take(bridge_.down("<iq type=\"get\" id=\"brelo-" + QByteArray(request) +
                              "\"><query xmlns=\"jabber:iq:" + request + "\"/></iq>"));
    }
    void lose()
    {
        connected = false;
        queue_->deliver(Stanza::notice("close"));
    }
    // Bytes of the stream. False when they broke it: the session is lost then.
    bool receive(const QByteArray& bytes)
    {
        using enum StreamParser::Event;
        parser_.feed(bytes);
        for (auto event = parser_.next(); event != None; event = parser_.next()) {
            if (event == Broken || event == Closed) {
                lose();
                return false;
            }
            if (event == Element)
                deliver(parser_.takeElement());
        }
        return true;
    }
    void pass(qint64 nowMs) { take(bridge_.tick(nowMs)); }
    // Everything that went out, one stanza each.
    QStringList takeWire() { return std::exchange(wire_, {}); }

private:
    void deliver(std::shared_ptr<Stanza> stanza)
    {
        if (stanza->kind() != Stanza::Kind::Other && tracker_.accepts(*stanza))
            take(bridge_.up(std::move(stanza)));
    }
    void take(const BridgeOutput& out)
    {
        for (const auto& text : out.wire) {
            tracker_.sent(text);
            wire_ << QString::fromUtf8(text);
        }
        for (const auto& stanza : out.up)
            queue_->deliver(stanza);
    }

    std::shared_ptr<StanzaQueue> queue_;
    Bridge bridge_;
    IqTracker tracker_;
    StreamParser parser_;
    QStringList wire_;
};
