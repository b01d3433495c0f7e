#include "sandbox/handlers/RosterPush.h"

#include "sandbox/Address.h"
#include "sandbox/Connection.h"

namespace sandbox::rosterpush
{

void push(const World& world, const QString& user, const Element& item)
{
    static int pushes = 0;
    Element query("query", "jabber:iq:roster");
    query.add(item);
    const QString id = QStringLiteral("push_%1").arg(++pushes);
    for (auto* session : world.sessions.of(address::local(user))) {
        Element iq("iq");
        iq.set("type", QStringLiteral("set")).set("id", id).set("to", session->fullJid());
        session->send(iq.add(query));
    }
}

} // namespace sandbox::rosterpush
