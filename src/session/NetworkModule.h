#pragma once

#include <memory>

class ConnectionHost;
class Gateway;
class HttpClient;
class NetworkChecks;

// What the program needs Qt Network for: the interface of the module `network`. That library and those that
// it brings are a sixth of the time that the first window takes, and nothing before Connect has a use for
// them.
class NetworkModule
{
public:
    virtual ~NetworkModule() = default;
    // `host` must outlive the gateway.
    virtual std::unique_ptr<Gateway> makeGateway(ConnectionHost& host) = 0;
    virtual std::unique_ptr<NetworkChecks> makeChecks() = 0;
    virtual std::unique_ptr<HttpClient> makeHttp() = 0;
};
