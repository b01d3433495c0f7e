#pragma once

#include "engine/bridge/BridgePart.h"

// Errors. The client reads a code (XEP-0086) and the text of <error/>; servers of today send a condition,
// often without a word.
class ErrorsPart : public BridgePart
{
public:
    bool up(std::shared_ptr<Stanza>& stanza, BridgeState& state, BridgeOutput& out) override;
};
