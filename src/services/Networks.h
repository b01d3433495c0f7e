#pragma once

#include <QString>
#include <QStringList>

class CAgents;

// The networks on which a contact can be added: the own server, the gateways to others, any other server.
namespace networks
{

// The last of the choices, which stands for none that is named.
QString otherServer();
// The own server, and the networks of the gateways that the account is registered with.
QStringList choices(const CAgents& agents, const QString& ownServer);
// Whether a service of the server has this name.
bool isGateway(const CAgents& agents, const QString& name);
// The server part of addresses on a network: its gateway's address, or the name of a server as it stands.
QString server(const CAgents& agents, const QString& name);

} // namespace networks
