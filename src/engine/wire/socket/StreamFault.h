#pragma once

#include <QByteArray>

// A breach of the stream by its other end (RFC 6120, 4.9).
struct StreamFault {
    // The name of the stream error, such as "policy-violation".
    const char* condition = nullptr;
    // What was found, for the diagnostics.
    const char* detail = "";

    explicit operator bool() const { return condition != nullptr; }
    // The <stream:error/> that tells the other end.
    QByteArray xml() const
    {
        return QByteArrayLiteral("<stream:error><") + condition +
               QByteArrayLiteral(" xmlns=\"urn:ietf:params:xml:ns:xmpp-streams\"/></stream:error>");
    }
};
