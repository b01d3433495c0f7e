#pragma once

#include "engine/Jid.h"
#include "engine/Xml.h"

#include <QPair>
#include <QString>

// What an iq answer is matched by: the id, and the key of the address.
using RequestKey = QPair<QString, QString>;

// The addresses behind which the own server stands: the own account, the own full JID, the server, and none
// at all (RFC 6120, 8.1.2.1 and 10.3). Nobody else can send from them, so an answer may come from any of the
// four.
class HomeAddresses
{
public:
    HomeAddresses() = default;
    HomeAddresses(const QString& ownFullJid, const QString& server)
        : ownBareJid_(jid::bare(ownFullJid)), serverJid_(server), ownFullKey_(prepared(ownFullJid)),
          ownBareKey_(jid::bare(ownFullKey_)), serverKey_(prepared(server))
    {
    }

    // As they were given.
    const QString& ownBareJid() const { return ownBareJid_; }
    const QString& server() const { return serverJid_; }

    // A key that is equal for addresses whose answers are exchangeable; empty for home.
    QString key(const QString& jid) const
    {
        auto address = prepared(jid);
        return address == ownBareKey_ || address == ownFullKey_ || address == serverKey_ ? QString()
                                                                                         : address;
    }
    // `peer` is the attribute that names the other side: "to" of a request, "from" of an answer.
    RequestKey requestKey(pugi::xml_node iq, const char* peer) const
    {
        return {xml::attribute(iq, "id"), key(xml::attribute(iq, peer))};
    }
    bool isServer(const QString& jid) const { return jid.isEmpty() || prepared(jid) == serverKey_; }

private:
    // Node and domain without regard to case, as a server prepares them; the resource as it stands.
    static QString prepared(const QString& jid)
    {
        const auto slash = jid.indexOf(u'/');
        return slash < 0 ? jid.toLower() : jid.left(slash).toLower() + jid.mid(slash);
    }

    QString ownBareJid_;
    QString serverJid_;
    QString ownFullKey_;
    QString ownBareKey_;
    QString serverKey_;
};
