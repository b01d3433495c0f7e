#pragma once

#include "engine/wire/socket/Resolver.h"
#include "engine/wire/socket/ServerAddress.h"

#include <QList>
#include <QString>

// One way to reach a server.
struct Candidate {
    QString host;
    quint16 port = 0;
    // TLS from the first byte (XEP-0368), not by STARTTLS.
    bool directTls = false;
    bool operator==(const Candidate&) const = default;
};

// What DNS said of _xmpps-client and _xmpp-client.
struct SrvAnswers {
    QList<SrvRecord> direct;
    QList<SrvRecord> plain;
};

// The ways to reach `address`, in the order in which they are to be tried; never more than a handful.
// `secure`: the person wants TLS or nothing. Empty when DNS says that the service is not offered there.
QList<Candidate> connectPlan(const ServerAddress& address, bool secure, const SrvAnswers& answers);
