#include "contacts/RosterStanzas.h"

#include "contacts/Client.h"
#include "engine/Xml.h"

namespace stanzas
{
namespace
{

// One change of one contact. `iqExtra` and `itemExtra` are attributes with a leading blank.
QString change(const QString& id, const QString& iqExtra, const QString& itemExtra, const QString& JID,
               const QString& nick, const QString& group)
{
    return QStringLiteral("<iq id=\"%1\" type=\"set\"%2><query xmlns=\"jabber:iq:roster\">"
                          "<item jid=\"%4\" name=\"%5\"%3><group>%6</group></item></query></iq>")
        .arg(id, iqExtra, itemExtra, xml::escaped(JID), xml::escaped(nick), xml::escaped(group));
}

} // namespace

QString addContact(const QString& jid)
{
    const QString value = xml::escaped(jid);
    return QStringLiteral("<iq id=\"VRX_Add\" type=\"set\"><query xmlns=\"jabber:iq:roster\"><item jid=\"") +
           value + QStringLiteral("\" name=\"") + value + QStringLiteral("\"/></query></iq>");
}

QString removeContact(const QString& JID, const QString& nick, const QString& group)
{
    return change(QStringLiteral("VRX_Del"), {}, QStringLiteral(" subscription=\"remove\""), JID, nick,
                  group);
}

QString moveContact(const QString& JID, const QString& nick, const QString& group)
{
    return change(QStringLiteral("UP_ITEM"), {}, {}, JID, nick, group);
}

QString renameContact(const QString& JID, const QString& nick, const QString& group)
{
    return change(QStringLiteral("UP_NICK"), {}, {}, JID, nick, group);
}

QString keepUnsubscribed(const QString& JID, const QString& nick, const QString& group)
{
    return change(QStringLiteral("UP_ITEM"), QStringLiteral(" subscription=\"none\""), {}, JID, nick, group);
}

QString wholeRoster()
{
    return QStringLiteral(
        "<iq id=\"fullroster_REFRESH\" type=\"get\"><query xmlns=\"jabber:iq:roster\"/></iq>");
}

QString vCard(const QString& JID)
{
    return QStringLiteral("<iq type=\"get\" id=\"vcard_wj_3\" to=\"%1\"><VCARD xmlns=\"vcard-temp\"/></iq>")
        .arg(xml::escaped(JID));
}

QString browse(const QString& id, const QString& JID)
{
    return QStringLiteral(
               "<iq type=\"get\" id=\"%1\" to=\"%2\"><query xmlns=\"jabber:iq:browse\"></query></iq>")
        .arg(id, xml::escaped(JID));
}

QString browseServices(const QString& server)
{
    return browse(QStringLiteral("VRX_GET_SERVICE"), server);
}

QString presence(const QString& show, const QString& status)
{
    return QStringLiteral("<presence><show>%1</show><status>%2</status></presence>")
        .arg(show, xml::escaped(status));
}

bool send(const Client& client, const QString& text)
{
    return client.Application && SendStanza(*client.Application, text);
}

} // namespace stanzas
