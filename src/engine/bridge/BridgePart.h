#pragma once

#include "engine/Stanza.h"
#include "engine/bridge/BridgeOutput.h"
#include "engine/bridge/BridgeState.h"

#include <memory>

// A stanza that the client sends: as it wrote it, and parsed.
struct ClientStanza {
    const QByteArray& text;
    pugi::xml_node root;
};

// The translator of one namespace. It says true when it has dealt with a stanza: all that follows from it
// stands in `out` then, and the parts behind it don't see it.
class BridgePart
{
public:
    virtual ~BridgePart() = default;

    // A session begins: nothing is under way.
    virtual void begin() {}
    virtual bool down(const ClientStanza&, BridgeState&, BridgeOutput&) { return false; }
    // May put another stanza in the place of `stanza` for those that follow.
    virtual bool up(std::shared_ptr<Stanza>&, BridgeState&, BridgeOutput&) { return false; }
    virtual void tick(qint64, BridgeState&, BridgeOutput&) {}
};
