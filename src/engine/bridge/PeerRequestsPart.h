#pragma once

#include "engine/bridge/BridgePart.h"

// Questions that servers and other clients ask this one (RFC 6120, 8.2.3: each needs an answer): ping
// (XEP-0199), features (XEP-0030), version (XEP-0092). What the client itself handles goes up; the rest is
// declined here, since the client takes a card or a form for the answer to a question of its own.
class PeerRequestsPart : public BridgePart
{
public:
    bool up(std::shared_ptr<Stanza>& stanza, BridgeState& state, BridgeOutput& out) override;
};
