#pragma once

#include "engine/bridge/BridgePart.h"

// Roster pushes (RFC 6121, 2.1.6) are acknowledged here; the client, which never answers one, still gets
// them.
class RosterPushPart : public BridgePart
{
public:
    bool up(std::shared_ptr<Stanza>& stanza, BridgeState& state, BridgeOutput& out) override;
};
