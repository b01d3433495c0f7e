#include "services/ServerAdmin.h"

#include "contacts/RosterStanzas.h"
#include "engine/Stanza.h"
#include "engine/Xml.h"

namespace serveradmin
{
namespace
{

constexpr qsizetype mostUsers = 20'000;

template <typename Visit>
void forEachOnline(const Stanza& answer, Visit visit)
{
    for (const auto& match : answer.IqFields().Document().select_nodes("//user")) {
        const QString name = xml::attribute(match.node(), "name");
        if (name.contains(u'('))
            visit(xml::attribute(match.node(), "jid"), name);
    }
}

} // namespace

QString onlineUsersQuery(const QString& server)
{
    return stanzas::browse(QStringLiteral("VRX_GET_ONLINEUSERS"), server + QStringLiteral("/admin"));
}

int onlineUsers(const Stanza& answer)
{
    int count = 0;
    forEachOnline(answer, [&count](const QString&, const QString&) { ++count; });
    return count;
}

searchanswers::Results usersOnline(const Stanza& answer)
{
    searchanswers::Results users{{QStringLiteral("jid"), QStringLiteral("name")}, {}};
    forEachOnline(answer, [&users](const QString& jid, const QString& name) {
        if (users.rows.size() < mostUsers)
            users.rows += QStringList{jid, name};
        else
            ++users.leftOut;
    });
    return users;
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
