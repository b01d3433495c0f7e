#pragma once

#include "engine/bridge/BridgePart.h"

// What people write from clients of today: typing (XEP-0085) becomes the event of the dialect, receipts
// (XEP-0184) are answered, delays (XEP-0203) gain their old form, and messages that only carry signals stay
// in the engine, since the client would open a window with an empty line.
class InboundMessagesPart : public BridgePart
{
public:
    bool up(std::shared_ptr<Stanza>& stanza, BridgeState& state, BridgeOutput& out) override;
};
