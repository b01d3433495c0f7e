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
    // The requested full JID and the one that the server gave; both count as own.
    void setOwnJid(const QString& requested, const QString& bound);
    const QString& ownFullJid() const { return bound_; }

    // Puts a stanza's text into `outbound` unchanged, but for a missing iq id. False, with the reason in
    // `error`, for anything that isn't exactly one well-formed iq, message or presence element.
    bool sendRaw(const QString& text, QString* error);
    // The same for a stanza that the client built. A message to the own full JID never leaves the machine: it
    // stands at the head of `inbound` with its `from` as it is.
    bool sendBuilt(pugi::xml_node root, QString* error);

    // Stanzas that jump the queue, such as a message to oneself, come before those of the wire.
    void deliverNext(std::shared_ptr<Stanza> stanza);
    void deliver(std::shared_ptr<Stanza> stanza);
    std::shared_ptr<Stanza> takeInbound();
    std::size_t inboundCount() const { return inbound_.size() + ahead_.size(); }
    void clearInbound();

    // UTF-8, one whole stanza each.
    std::deque<QByteArray> takeOutbound() { return std::exchange(outbound_, {}); }
    bool hasOutbound() const { return !outbound_.empty(); }
    void clearOutbound() { outbound_.clear(); }

    // Called as often as there is work for a tick: a stanza was put in, or whoever holds the queue says so by
    // wakeUp(), such as a gateway whose socket has news. It may only ask for a later tick.
    void setWakeUp(std::function<void()> wakeUp) { wakeUp_ = std::move(wakeUp); }
    void wakeUp() const;

private:
    bool isOwnFullJid(const QString& jid) const;

    std::deque<std::shared_ptr<Stanza>> ahead_;
    std::deque<std::shared_ptr<Stanza>> inbound_;
    std::deque<QByteArray> outbound_;
    QString requested_;
    QString bound_;
    quint64 nextId_ = 0;
    std::function<void()> wakeUp_;
};
