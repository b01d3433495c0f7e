#include "WireGateway.h"

void WireGateway::Trigger()
{
    if (!connected)
        return queue_->clearOutbound();
    for (const auto& stanza : queue_->takeOutbound())
        take(bridge_.down(stanza));
}

void WireGateway::open(const QString& fullJid, const QString& server)
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

void WireGateway::lose()
{
    connected = false;
    queue_->deliver(Stanza::notice("close"));
}

bool WireGateway::receive(const QByteArray& bytes)
{
    parser_.feed(bytes);
    for (auto event = parser_.next(); event != StreamParser::Event::None; event = parser_.next()) {
        if (event == StreamParser::Event::Broken || event == StreamParser::Event::Closed) {
            lose();
            return false;
        }
        if (event == StreamParser::Event::Element)
            deliver(parser_.takeElement());
    }
    return true;
}

void WireGateway::deliver(std::shared_ptr<Stanza> stanza)
{
    if (stanza->kind() != Stanza::Kind::Other && tracker_.accepts(*stanza))
        take(bridge_.up(std::move(stanza)));
}

void WireGateway::take(const BridgeOutput& out)
{
    for (const auto& text : out.wire) {
        tracker_.sent(text);
        wire_ << QString::fromUtf8(text);
    }
    for (const auto& stanza : out.up)
        queue_->deliver(stanza);
}
