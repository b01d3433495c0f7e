#include "sandbox/handlers/Registration.h"

namespace sandbox::registration
{
namespace
{

void tellFields(const Call& call)
{
    Element query("query", "jabber:iq:register");
    query.add("instructions", QStringLiteral("Choose a user name and a password for this server."));
    if (call.client.isBound())
        query.add("registered");
    query.add("username", call.client.user()).add("password");
    call.result(query);
}

// The client may give the whole address.
QString userOf(const Call& call)
{
    return call.stanza.queryText("username").section(u'@', 0, 0);
}

void makeAccount(const Call& call)
{
    const QString user = userOf(call);
    const QString password = call.stanza.queryText("password");
    if (!call.world.registrationOpen)
        return call.error(405, QStringLiteral("Not Allowed"));
    if (user.isEmpty() || password.isEmpty())
        return call.error(406, QStringLiteral("Not Acceptable"));
    if (call.world.account(user))
        return call.error(409, QStringLiteral("Username Not Available"));
    call.world.addAccount(user, password);
    call.result();
}

void changePassword(const Call& call)
{
    Account* account = call.world.account(userOf(call));
    const QString password = call.stanza.queryText("password");
    if (!call.owner().admin && account != &call.owner())
        return call.error(403, QStringLiteral("Forbidden"));
    if (!account)
        return call.notFound();
    if (password.isEmpty())
        return call.error(406, QStringLiteral("Not Acceptable"));
    account->password = password;
    call.result();
}

void removeAccount(const Call& call)
{
    call.result();
    const QString user = call.client.user();
    for (auto* session : call.world.sessions.of(call.client.bareJid()))
        session->close(QStringLiteral("Account removed"));
    call.world.removeAccount(user);
}

} // namespace

void handle(const Call& call)
{
    if (call.stanza.isGet())
        return tellFields(call);
    if (!call.client.isBound())
        return makeAccount(call);
    return call.stanza.query().child("remove") ? removeAccount(call) : changePassword(call);
}

} // namespace sandbox::registration
