#include "groupchat/RoomStanzas.h"

#include "contacts/RosterStanzas.h"
#include "engine/Xml.h"

namespace roomstanzas
{

QString roomServices(const QString& server)
{
    return stanzas::browse(QStringLiteral("VRX_CHATROOM?"), server);
}

QString askRoom(const QString& room)
{
    return QStringLiteral("<iq type=\"get\" id=\"VRX_CONF?\" to=\"%1\">"
                          "<query xmlns=\"jabber:iq:conference\"></query></iq>")
        .arg(xml::escaped(room));
}

QString nick(const QString& room, const QString& nick)
{
    return QStringLiteral("<iq to=\"%1\" type=\"set\" id=\"VRX_CONF_DATA\">"
                          "<query xmlns=\"jabber:iq:conference\"><nick>%2</nick></query></iq>")
        .arg(xml::escaped(room), xml::escaped(nick));
}

QString invitation(const QString& contact, const QString& room, const QString& text)
{
    return QStringLiteral("<message id=\"JCOM_50\" to=\"%1\"><x xmlns=\"jabber:x:conference\" jid=\"%2\"/>"
                          "<subject>Invitation to: %2</subject><body>%3</body></message>")
        .arg(xml::escaped(contact), xml::escaped(room), xml::escaped(text));
}

} // namespace roomstanzas
