#pragma once

#include "session/NetworkModule.h"

// Makes the real ones.
class QtNetworkModule : public NetworkModule
{
public:
    std::unique_ptr<Gateway> makeGateway(ConnectionHost& host) override;
    std::unique_ptr<NetworkChecks> makeChecks() override;
    std::unique_ptr<HttpClient> makeHttp() override;
};
