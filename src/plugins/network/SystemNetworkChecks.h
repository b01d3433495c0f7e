#pragma once

#include "desktop/Desktop.h"

// The machine's network interfaces. There is no dial-up on this platform: whatever connects the machine does
// so by itself.
class SystemNetworkChecks : public NetworkChecks
{
public:
    // An interface other than the loopback is up, runs and has an address; a local network counts.
    bool isConnected() override;
    bool dial(bool) override { return false; }
    OwnAddress ownAddress() override;
};
