#include "sandbox/handlers/Agents.h"

namespace sandbox::agents
{
namespace
{

Element agent(const QString& jid, const QString& name, const QString& service)
{
    Element element("agent");
    return element.set("jid", jid).add("name", name).add("service", service);
}

} // namespace

void handle(const Call& call)
{
    Element query("query", "jabber:iq:agents");
    for (const auto& [jid, gateway] : call.world.gateways())
        query.add(agent(jid, gateway.title, gateway.network)
                      .add("transport", QStringLiteral("Enter your user name"))
                      .add("register"));
    query.add(agent(call.world.directoryJid(), QStringLiteral("User Directory"), QStringLiteral("jud"))
                  .add("search"));
    for (const auto& service : call.world.roomServices())
        query.add(agent(service.jid, service.name, QStringLiteral("public")).add("groupchat"));
    call.result(query);
}

} // namespace sandbox::agents
