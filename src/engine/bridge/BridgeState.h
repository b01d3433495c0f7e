#pragma once

#include "engine/bridge/HomeAddresses.h"
#include "engine/bridge/OwnRequests.h"
#include "engine/bridge/ServerKnowledge.h"

// What the parts of the bridge share in a session.
struct BridgeState {
    QString ownBareJid;
    QString server;
    HomeAddresses home;
    OwnRequests requests;
    ServerKnowledge knowledge;
};
