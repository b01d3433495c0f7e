#pragma once

#include "desktop/Desktop.h"
#include "desktop/Http.h"
#include "session/NetworkModule.h"

// The module `network`, loaded when it is first asked for something, and what it makes.
class LateNetwork : public NetworkChecks, public HttpClient
{
public:
    ~LateNetwork() override;

    // Null when the module is missing. `host` must outlive the gateway.
    std::unique_ptr<Gateway> makeGateway(ConnectionHost& host);

    // A machine whose interfaces can't be asked counts as connected: the attempt will tell.
    bool isConnected() override;
    bool dial(bool unattended) override;
    OwnAddress ownAddress() override;

    // Without the module nobody can be reached.
    std::unique_ptr<QObject> ask(const HttpQuestion& question, Done done) override;

private:
    NetworkModule* module();
    NetworkChecks* checks();

    std::unique_ptr<NetworkModule> module_;
    std::unique_ptr<NetworkChecks> checks_;
    std::unique_ptr<HttpClient> http_;
};
