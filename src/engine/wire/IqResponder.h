#pragma once

#include "engine/Stanza.h"

#include <QByteArray>

// Answers the requests (iq get and set) that others make of us. RFC 6120, 8.2.3 wants an answer to each.
struct IqResponse {
    // The answer, UTF-8; empty where none is due.
    QByteArray reply;
    // Whether the client has a use for the stanza.
    bool forClient = true;
};

// Pings (XEP-0199) and roster pushes (RFC 6121, 2.1.6) are answered, requests of the dialect's namespaces are
// the client's own business, all others are not supported here.
IqResponse respondTo(const Stanza& stanza);
