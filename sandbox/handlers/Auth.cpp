#include "sandbox/handlers/Auth.h"

#include "sandbox/Address.h"

#include <QCryptographicHash>

namespace sandbox::auth
{
namespace
{

QString digest(const QString& streamId, const QString& password)
{
    const QByteArray seed = (streamId + password).toUtf8();
    return QString::fromLatin1(QCryptographicHash::hash(seed, QCryptographicHash::Sha1).toHex());
}

void tellFields(const Call& call)
{
    Element query("query", "jabber:iq:auth");
    query.add("username", call.stanza.queryText("username")).add("password").add("digest").add("resource");
    call.result(query);
}

bool isRight(const Call& call, const Account& account)
{
    const QString given = call.stanza.queryText("digest");
    if (!given.isEmpty())
        return given.compare(digest(call.client.streamId(), account.password), Qt::CaseInsensitive) == 0;
    return call.stanza.queryText("password") == account.password;
}

void signIn(const Call& call, const Account& account, const QString& resource)
{
    const QString fullJid = address::local(account.user) + u'/' + resource;
    if (auto* older = call.world.sessions.exact(fullJid))
        older->close(QStringLiteral("Replaced by new connection"));
    call.result();
    call.client.bind(account.user, resource);
    call.world.sessions.add(&call.client);
}

} // namespace

void handle(const Call& call)
{
    if (call.stanza.isGet())
        return tellFields(call);
    const QString resource = call.stanza.queryText("resource");
    if (resource.isEmpty() || call.client.isBound())
        return call.error(406, QStringLiteral("Not Acceptable"));
    const Account* account = call.world.account(call.stanza.queryText("username"));
    if (call.script.refuseAuth || !account || !isRight(call, *account))
        return call.error(401, QStringLiteral("Unauthorized"));
    signIn(call, *account, resource);
}

} // namespace sandbox::auth
