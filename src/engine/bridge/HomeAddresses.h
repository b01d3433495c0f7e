#pragma once

#include "engine/Jid.h"

#include <QString>

// The addresses behind which the own server stands: the own account, the own full JID, the server, and none
// at all (RFC 6120, 8.1.2.1 and 10.3). Nobody else can send from them, so an answer may come from any of the
// four.
class HomeAddresses
{
public:
    HomeAddresses() = default;
    HomeAddresses(const QString& ownFullJid, const QString& server)
        : ownFull_(prepared(ownFullJid)), ownBare_(jid::bare(ownFull_)), server_(prepared(server))
    {
    }

    // A key that is equal for addresses whose answers are exchangeable; empty for home.
    QString key(const QString& jid) const
    {
        auto address = prepared(jid);
        return address == ownBare_ || address == ownFull_ || address == server_ ? QString() : address;
    }
    bool isHome(const QString& jid) const { return key(jid).isEmpty(); }
    bool isServer(const QString& jid) const { return jid.isEmpty() || prepared(jid) == server_; }

private:
    // Node and domain without regard to case, as a server prepares them; the resource as it stands.
    static QString prepared(const QString& jid)
    {
        const auto slash = jid.indexOf(u'/');
        return slash < 0 ? jid.toLower() : jid.left(slash).toLower() + jid.mid(slash);
    }

    QString ownFull_;
    QString ownBare_;
    QString server_;
};
