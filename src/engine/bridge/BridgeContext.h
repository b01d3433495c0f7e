#pragma once

#include "engine/bridge/Audience.h"
#include "engine/bridge/BridgeTraffic.h"
#include "engine/bridge/Exchange.h"
#include "engine/bridge/HomeAddresses.h"
#include "engine/bridge/Knowledge.h"
#include "engine/bridge/PresenceRoutes.h"
#include "engine/bridge/Timers.h"

// What translators share in a session.
struct BridgeContext {
    BridgeContext() = default;
    Q_DISABLE_COPY_MOVE(BridgeContext)

    // A session begins: what was under way is forgotten, and nobody is called.
    void begin(const HomeAddresses& addresses, Audience::IsBlocked isBlocked = {})
    {
        home = addresses;
        audience.begin(std::move(isBlocked));
        out = {};
        timers.clear();
        exchange.begin();
        knowledge.begin();
        presences.clear();
    }

    HomeAddresses home;
    // Whatever follows from the stanza, the answer or the time that a translator is called with.
    BridgeOutput out;
    Timers timers;
    Exchange exchange{home, timers, out};
    Knowledge knowledge{home, exchange};
    PresenceRoutes presences;
    Audience audience;
};
