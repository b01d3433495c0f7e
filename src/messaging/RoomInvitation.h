#pragma once

#include "engine/Stanza.h"

#include <QString>
#include <QStringList>

// An invitation to a conference room (jabber:x:conference, XEP-0249). One stanza may name several rooms: all
// their servers are offered, and the last room is the one that is joined.
struct RoomInvitation {
    QString from; // who invites
    QString text; // what the message says
    QString room; // the part before "@"
    QStringList servers;

    static RoomInvitation of(const Stanza& stanza);
};
