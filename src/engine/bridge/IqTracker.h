#pragma once

#include "engine/Stanza.h"
#include "engine/bridge/HomeAddresses.h"

#include <QByteArray>
#include <QHash>
#include <QString>

// Which answers were asked for. An iq result or error is accepted from the address asked (any home address
// counting as one), and once; the lists that steer the client (roster, agents, sign-in) from a home address
// only.
class IqTracker
{
public:
    // A session begins: nothing is outstanding.
    void begin(const QString& ownFullJid, const QString& server);
    // Notes a stanza as it goes onto the wire (what the bridge gave out, not what it was given). UTF-8;
    // anything but an iq get or set is ignored.
    void sent(const QByteArray& stanza);
    // Whether a stanza from the wire may go on. True for everything that is no iq. Takes the request off the
    // list.
    bool accepts(const Stanza& stanza);

private:
    HomeAddresses home_;
    // The number of requests that still lack an answer.
    QHash<RequestKey, int> outstanding_;
};
