#pragma once

#include "engine/bridge/BridgePart.h"

// Invitations to rooms. A mediated one (XEP-0045) and a direct one (XEP-0249) reach the client as the
// dialect's: one <x/> with the room's JID, from the inviter, the reason as body. A stanza that holds both is
// one invitation.
class InvitationsPart : public BridgePart
{
public:
    bool up(std::shared_ptr<Stanza>& stanza, BridgeState& state, BridgeOutput& out) override;
};
