#include "messaging/MessageStanzas.h"

#include "engine/Xml.h"

namespace stanzas
{

QString composing(const QString& to)
{
    return QStringLiteral("<message to=\"") + xml::escaped(to) +
           QStringLiteral(
               "\" type=\"chat\"><x xmlns=\"jabber:x:event\"><composing></composing></x></message>");
}

QString addContact(const QString& jid)
{
    const QString value = xml::escaped(jid);
    return QStringLiteral("<iq id=\"VRX_Add\" type=\"set\"><query xmlns=\"jabber:iq:roster\"><item jid=\"") +
           value + QStringLiteral("\" name=\"") + value + QStringLiteral("\"/></query></iq>");
}

} // namespace stanzas
