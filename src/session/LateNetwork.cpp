#include "session/LateNetwork.h"

#include "engine/Gateway.h"
#include "settings/Module.h"

LateNetwork::~LateNetwork() = default;

NetworkModule* LateNetwork::module()
{
    if (!module_)
        module_ = module::make<NetworkModule>(QStringLiteral("breloim_network"));
    return module_.get();
}

NetworkChecks* LateNetwork::checks()
{
    if (!checks_ && module())
        checks_ = module()->makeChecks();
    return checks_.get();
}

std::unique_ptr<Gateway> LateNetwork::makeGateway(ConnectionHost& host)
{
    return module() ? module()->makeGateway(host) : nullptr;
}

bool LateNetwork::isConnected()
{
    return !checks() || checks()->isConnected();
}

bool LateNetwork::dial(bool unattended)
{
    return checks() && checks()->dial(unattended);
}
