#include "services/ServerAdmin.h"

#include "contacts/RosterStanzas.h"
#include "engine/Stanza.h"
#include "engine/Xml.h"

namespace serveradmin
{

QString onlineUsersQuery(const QString& server)
{
    return stanzas::browse(QStringLiteral("VRX_GET_ONLINEUSERS"), server + QStringLiteral("/admin"));
}

int onlineUsers(const Stanza& answer)
{
    int count = 0;
    for (const auto& match : answer.IqFields().Document().select_nodes("//user"))
        count += xml::attribute(match.node(), "name").contains(u'(');
    return count;
}

QString announceOnline(const QString& server)
{
    return server + QStringLiteral("/announce/online");
}

QString announceDay(const QString& server)
{
    return server + QStringLiteral("/announce/motd");
}

QString passwordChange(const QString& server, const QString& user, const QString& password)
{
    return QStringLiteral("<iq type=\"set\" id=\"VRX_CHANGE_USER_PWD\" to=\"%1\"><query "
                          "xmlns=\"jabber:iq:register\"><username>%2</username><password>%3</password>"
                          "<resource></resource></query></iq>")
        .arg(xml::escaped(server), xml::escaped(user), xml::escaped(password));
}

} // namespace serveradmin
