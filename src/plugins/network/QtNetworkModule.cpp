#include "plugins/network/QtNetworkModule.h"

#include "engine/wire/session/GatewayClient.h"
#include "plugins/network/QtHttp.h"
#include "plugins/network/SystemNetworkChecks.h"

std::unique_ptr<Gateway> QtNetworkModule::makeGateway(ConnectionHost& host)
{
    return std::make_unique<GatewayClient>(host);
}

std::unique_ptr<NetworkChecks> QtNetworkModule::makeChecks()
{
    return std::make_unique<SystemNetworkChecks>();
}

std::unique_ptr<HttpClient> QtNetworkModule::makeHttp()
{
    return std::make_unique<QtHttp>();
}

extern "C" Q_DECL_EXPORT void* breloMake()
{
    return static_cast<NetworkModule*>(new QtNetworkModule);
}
