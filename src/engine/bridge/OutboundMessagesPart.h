#pragma once

#include "engine/bridge/BridgePart.h"

// What the client writes to people, for a server of today: types in lower case, and chat states (XEP-0085)
// beside the typing event of the dialect.
class OutboundMessagesPart : public BridgePart
{
public:
    bool down(const ClientStanza& stanza, BridgeState& state, BridgeOutput& out) override;
};
