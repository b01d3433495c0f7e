#pragma once

#include "engine/bridge/BridgeTraffic.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

struct TranslatorRow;

// Between the authenticated stream and the client, who speaks only the old jabber:iq dialect. A server that
// speaks it too gets and gives every stanza untouched; for a server of today each namespace has its
// translator. What the server is, is learnt once a session by asking it for its features (XEP-0030).
class Bridge
{
public:
    struct Account {
        QString ownFullJid;
        QString server;
        // Asked at each stanza that matters; empty for nobody.
        std::function<bool(const QString& bareJid)> isBlocked = {};
    };

    // With the standard table.
    Bridge();
    explicit Bridge(std::vector<TranslatorRow> table);
    ~Bridge();

    // A session begins: forgets what was learnt and drops what was under way. A resumed session doesn't
    // begin.
    void begin(const Account& account);
    // A stanza that the client sends (UTF-8, one well-formed element).
    BridgeOutput down(const QByteArray& stanza);
    // A stanza from the wire that the IqTracker has accepted.
    BridgeOutput up(std::shared_ptr<Stanza> stanza);
    // A stanza that it has refused: a request is answered as by one who is not there, since silence would
    // tell a stranger that somebody is.
    BridgeOutput decline(const Stanza& stanza);
    // Time-outs. `nowMs` is any steady clock; to be called often.
    BridgeOutput tick(qint64 nowMs);

private:
    class Private;
    std::unique_ptr<Private> d_;
};
