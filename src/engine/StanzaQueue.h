#pragma once

#include "engine/Stanza.h"

#include <QByteArray>
#include <QString>

#include <deque>
#include <functional>
#include <memory>

// The queue through which the two engine objects pass stanzas: the gateway fills `inbound` from the wire and
// empties `outbound` onto it, the plug-in manager takes from `inbound`. Everything that is to be sent is
// checked here.
class StanzaQueue
{
public:
    // Bytes that may wait to be sent; more is refused, so that a server that takes nothing in can't fill the
    // memory.
    static constexpr qsizetype mostOutbound = 4 * 1024 * 1024;

    // The requested full JID and the one that the server gave; both count as own.
    void setOwnJid(const QString& requested, const QString& bound);
    const QString& ownFullJid() const { return bound_; }

    // Puts a stanza's text into `outbound` unchanged, but for a missing iq id. False, with the reason in
    // `error`, for anything that isn't exactly one well-formed iq, message or presence element, or when too
    // much waits already.
    bool sendRaw(const QString& text, QString* error);
    // The same for a stanza that the client built. A message to the own full JID never leaves the machine: it
    // stands at the head of `inbound` with its `from` as it is.
    bool sendBuilt(pugi::xml_node root, QString* error);

    // Stanzas that jump the queue, such as a message to oneself, come before those of the wire.
    void deliverNext(std::shared_ptr<Stanza> stanza);
    void deliver(std::shared_ptr<Stanza> stanza);
    std::shared_ptr<Stanza> takeInbound();
    std::size_t inboundCount() const { return inbound_.size() + ahead_.size(); }
    // Messages that came back stay: the person has to hear of them.
    void clearInbound();

    // UTF-8, one whole stanza each.
    std::deque<QByteArray> takeOutbound();
    // At least one must wait.
    QByteArray takeFirstOutbound();
    bool hasOutbound() const { return !outbound_.empty(); }
    void clearOutbound() { takeOutbound(); }

    // Whom the client has blocked, by the bare JID. Empty for nobody.
    void setBlocked(std::function<bool(const QString&)> isBlocked) { isBlocked_ = std::move(isBlocked); }
    bool isBlocked(const QString& bareJid) const { return isBlocked_ && isBlocked_(bareJid); }

    // Called as often as there is work for a tick: a stanza was put in, or whoever holds the queue says so by
    // wakeUp(), such as a gateway whose socket has news. It may only ask for a later tick.
    void setWakeUp(std::function<void()> wakeUp) { wakeUp_ = std::move(wakeUp); }
    void wakeUp() const;

private:
    bool isOwnFullJid(const QString& jid) const;

    std::deque<std::shared_ptr<Stanza>> ahead_;
    std::deque<std::shared_ptr<Stanza>> inbound_;
    std::deque<QByteArray> outbound_;
    qsizetype outboundSize_ = 0;
    QString requested_;
    QString bound_;
    quint64 nextId_ = 0;
    std::function<void()> wakeUp_;
    std::function<bool(const QString&)> isBlocked_;
};
