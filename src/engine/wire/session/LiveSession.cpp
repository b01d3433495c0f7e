#include "engine/wire/session/LiveSession.h"

#include "engine/Diagnostics.h"
#include "engine/Xml.h"
#include "engine/bridge/StanzaText.h"
#include "engine/wire/socket/LinkWords.h"

#include <QElapsedTimer>

namespace
{

constexpr qint64 budgetMs = 20;
// The wire waits while the client has this many stanzas before it.
constexpr std::size_t mostQueued = 400;
const QByteArray probePrefix = QByteArrayLiteral("brelo-ping-");
// Messages, for a server that never says a word.
constexpr std::size_t mostUnproven = 1'000;

// The types of the engine's own notices: no such presence exists on the wire (RFC 6121, 4.7.1).
bool posesAsNotice(const Stanza& stanza)
{
    const std::string_view type = stanza.root().attribute("type").value();
    return stanza.kind() == Stanza::Kind::Presence && (type == "connect" || type == "close");
}

} // namespace

LiveSession::LiveSession(std::shared_ptr<StanzaQueue> queue) : queue_(std::move(queue)) {}

void LiveSession::begin(std::shared_ptr<StreamLink> link, const Identity& identity, bool streamManagement)
{
    link_ = std::move(link);
    identity_ = identity;
    home_ = HomeAddresses(identity.boundJid, identity.server);
    unproven_.clear();
    queue_->setOwnJid(identity.requestedJid, identity.boundJid);
    tracker_.begin(identity.boundJid, identity.server);
    bridge_.begin({identity.boundJid, identity.server,
                   [queue = queue_](const QString& bareJid) { return queue->isBlocked(bareJid); }});
    management_.begin();
    keepAlive_.reset();
    if (streamManagement)
        link_->write(management_.enable());
    queue_->deliver(Stanza::notice("connect"));
    request("jabber:iq:roster", "brelo-roster", {});
    request("jabber:iq:agents", "brelo-agents", identity.server);
}

void LiveSession::request(const char* name, const QByteArray& id, const QString& to)
{
    const QByteArray address =
        to.isEmpty() ? QByteArray() : " to=\"" + xml::escaped(to).toUtf8() + QByteArrayLiteral("\"");
    pass(bridge_.down("<iq type=\"get\" id=\"" + id + "\"" + address + "><query xmlns=\"" + name +
                      "\"/></iq>"));
}

void LiveSession::resume(std::shared_ptr<StreamLink> link, const Stanza& resumed)
{
    link_ = std::move(link);
    keepAlive_.reset();
    management_.resumed(resumed);
    sendManagement();
}

void LiveSession::pump(qint64 nowMs)
{
    QElapsedTimer clock;
    clock.start();
    link_->tick(nowMs);
    isBehind_ = !link_->isClogged();
    while (isBehind_ && queue_->inboundCount() < mostQueued && clock.elapsed() < budgetMs) {
        auto stanza = link_->takeElement();
        isBehind_ = stanza != nullptr;
        countSkipped();
        if (stanza)
            receive(std::move(stanza));
    }
    pass(bridge_.tick(nowMs));
    sendQueued();
    if (queue_->inboundCount() < mostQueued)
        keepAlive(nowMs);
}

// Left out or not, the server counts them.
void LiveSession::countSkipped()
{
    for (int skipped = link_->takeSkipped(); skipped > 0; --skipped) {
        qCWarning(lcEngine) << "left out a stanza that is too deep or too long";
        management_.received();
    }
}

void LiveSession::receive(std::shared_ptr<Stanza> stanza)
{
    if (management_.handle(*stanza))
        return sendManagement();
    qCDebug(lcEngine).noquote() << "in: " << masked(stanza->Xml());
    if (stanza->kind() == Stanza::Kind::Other)
        return queue_->deliver(std::move(stanza));
    management_.received();
    unproven_.clear();
    const bool isSound = jid::fits(stanza->root().attribute("from").value()) && !posesAsNotice(*stanza);
    if (!isSound || !tracker_.accepts(*stanza)) {
        qCWarning(lcEngine) << "ignored what nobody asked for, from" << stanza->From().left(1000);
        return isSound ? pass(bridge_.decline(*stanza)) : void();
    }
    if (!isOwnProbe(*stanza))
        pass(bridge_.up(std::move(stanza)));
}

void LiveSession::pass(BridgeOutput output)
{
    for (const auto& stanza : std::as_const(output.wire))
        send(stanza);
    for (auto& stanza : output.up)
        queue_->deliver(std::move(stanza));
}

void LiveSession::send(const QByteArray& stanza)
{
    qCDebug(lcEngine).noquote() << "out:" << masked(QString::fromUtf8(stanza));
    tracker_.sent(stanza);
    link_->write(stanza);
    management_.sent(stanza);
    if (!management_.isOn() && unproven_.size() < mostUnproven && stanza.startsWith("<message"))
        unproven_.push_back(stanza);
    sendManagement();
}

void LiveSession::sendManagement()
{
    const auto texts = management_.takeOutput();
    for (const auto& text : texts)
        link_->write(text);
}

void LiveSession::sendQueued()
{
    while (queue_->hasOutbound() && link_->state() == StreamLink::State::Open && !link_->isClogged())
        pass(bridge_.down(queue_->takeFirstOutbound()));
}

std::shared_ptr<StreamLink> LiveSession::leave()
{
    sendQueued();
    link_->close();
    return std::exchange(link_, nullptr);
}

void LiveSession::giveBack()
{
    // A link that was left politely has taken all that was written.
    if (link_ && management_.isOn()) {
        for (const auto& stanza : management_.unacknowledged())
            giveBack(stanza, Stanza::Kind::Uncertain);
    } else if (link_ && link_->end() == StreamLink::End::Lost) {
        for (const auto& stanza : unproven_)
            giveBack(stanza, Stanza::Kind::Uncertain);
    }
    for (const auto& stanza : queue_->takeOutbound())
        giveBack(stanza, Stanza::Kind::Unsent);
}

void LiveSession::giveBack(const QByteArray& stanza, Stanza::Kind kind)
{
    if (auto message = Stanza::returned(stanza, kind))
        queue_->deliver(std::move(message));
}

void LiveSession::keepAlive(qint64 nowMs)
{
    if (link_->state() != StreamLink::State::Open)
        return;
    switch (keepAlive_.check(nowMs, link_->lastHeardMs())) {
    case KeepAlive::Verdict::Well:
        return;
    case KeepAlive::Verdict::Dead:
        return link_->drop(linkWords::dead(identity_.server));
    case KeepAlive::Verdict::Probe:
        break;
    }
    if (management_.isOn())
        return link_->write(management_.request());
    send("<iq type=\"get\" id=\"" + probePrefix + QByteArray::number(++probes_) + "\" to=\"" +
         xml::escaped(identity_.server).toUtf8() + "\"><ping xmlns=\"urn:xmpp:ping\"/></iq>");
}

// Any answer of the server's will do, an error too: it lives.
bool LiveSession::isOwnProbe(const Stanza& stanza) const
{
    const auto iq = stanza.root();
    const std::string_view id = iq.attribute("id").value();
    return stanza.kind() == Stanza::Kind::Iq && !stanza::isRequest(iq) &&
           id.starts_with(probePrefix.constData()) && home_.key(stanza.From()).isEmpty();
}
