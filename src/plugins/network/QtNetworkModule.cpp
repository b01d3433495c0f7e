#include "plugins/network/QtNetworkModule.h"

#include "desktop/SystemNetworkChecks.h"
#include "engine/GatewayClient.h"

std::unique_ptr<Gateway> QtNetworkModule::makeGateway(ConnectionHost& host)
{
    return std::make_unique<GatewayClient>(host);
}

std::unique_ptr<NetworkChecks> QtNetworkModule::makeChecks()
{
    return std::make_unique<SystemNetworkChecks>();
}

extern "C" Q_DECL_EXPORT void* breloMake()
{
    return static_cast<NetworkModule*>(new QtNetworkModule);
}
