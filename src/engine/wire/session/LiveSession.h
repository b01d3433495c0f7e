#pragma once

#include "engine/StanzaQueue.h"
#include "engine/bridge/Bridge.h"
#include "engine/bridge/HomeAddresses.h"
#include "engine/bridge/IqTracker.h"
#include "engine/wire/session/KeepAlive.h"
#include "engine/wire/session/StreamManagement.h"
#include "engine/wire/socket/StreamLink.h"

#include <memory>

// The session on a bound stream: passes stanzas between the link and the client's queue, through the bridge.
class LiveSession
{
public:
    struct Identity {
        QString requestedJid;
        QString boundJid;
        QString server;
    };

    explicit LiveSession(std::shared_ptr<StanzaQueue> queue);

    // Takes a link whose stream is bound: tells the client, asks for the roster and the agents.
    void begin(std::shared_ptr<StreamLink> link, const Identity& identity, bool streamManagement);
    // The server took the session up again on this link; `resumed` is its answer.
    void resume(std::shared_ptr<StreamLink> link, const Stanza& resumed);
    // The server knows the session no more; `answer` may say how much it had received.
    void notResumed(const Stanza& answer) { management_.answered(answer); }
    // Works for some milliseconds at most: takes in what arrived while the client keeps up, sends what it
    // queued.
    void pump(qint64 nowMs);
    // The last pump() ended before it had taken in all that had arrived.
    bool isBehind() const { return isBehind_; }
    // Sends what is queued and ends the stream politely. The link is handed back to be waited for.
    std::shared_ptr<StreamLink> leave();
    // The session is over. The messages that did not go out, or that the server may have missed, return to
    // the client.
    void giveBack();

    const StreamLink& link() const { return *link_; }
    // A lost link leaves the session in a state that a new link may take up.
    bool canResume() const { return link_->end() == StreamLink::End::Lost && management_.canResume(); }
    const StreamManagement& management() const { return management_; }

private:
    void request(const char* name, const QByteArray& id, const QString& to);
    void countSkipped();
    void receive(std::shared_ptr<Stanza> stanza);
    void pass(BridgeOutput output);
    void send(const QByteArray& stanza);
    void sendQueued();
    void sendManagement();
    void keepAlive(qint64 nowMs);
    bool isOwnProbe(const Stanza& stanza) const;
    void giveBack(const QByteArray& stanza, Stanza::Kind kind);

    std::shared_ptr<StanzaQueue> queue_;
    std::shared_ptr<StreamLink> link_;
    Identity identity_;
    HomeAddresses home_;
    Bridge bridge_;
    IqTracker tracker_;
    StreamManagement management_;
    // Where nobody counts: messages written since the server last sent anything.
    std::deque<QByteArray> unproven_;
    KeepAlive keepAlive_;
    int probes_ = 0;
    bool isBehind_ = false;
};
