#include "services/Networks.h"

#include "contacts/Collections.h"

namespace networks
{
namespace
{

QString nameOf(const CAgentsItem& agent)
{
    return agent.ExtName.isEmpty() ? agent.JID : agent.ExtName;
}

const CAgentsItem* named(const CAgents& agents, const QString& name)
{
    for (int position = 1; position <= agents.Count(); ++position) {
        if (nameOf(*agents.Item(position)) == name)
            return agents.Item(position);
    }
    return nullptr;
}

} // namespace

QString otherServer()
{
    return QStringLiteral("Other Server ...");
}

QStringList choices(const CAgents& agents, const QString& ownServer)
{
    QStringList names(ownServer);
    for (int position = 1; position <= agents.Count(); ++position) {
        if (agents.Item(position)->registered)
            names += nameOf(*agents.Item(position));
    }
    return names + QStringList(otherServer());
}

bool isGateway(const CAgents& agents, const QString& name)
{
    return named(agents, name);
}

QString server(const CAgents& agents, const QString& name)
{
    const auto* agent = named(agents, name);
    return agent ? agent->JID : name;
}

} // namespace networks
