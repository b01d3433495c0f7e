#pragma once

#include "engine/bridge/BridgeContext.h"
#include "engine/bridge/BridgeTraffic.h"

#include <memory>

// The translator of one namespace, which the table asks about the stanzas that concern it. It says true when
// it has dealt with one: all that follows stands in the context's output then, or will, and no other
// translator sees it.
class Translator
{
public:
    virtual ~Translator() = default;

    // A session begins: nothing is under way.
    virtual void begin(BridgeContext&) {}
    virtual bool down(const ClientStanza&, BridgeContext&) { return false; }
    // May put another stanza in the place of `stanza` for those that follow.
    virtual bool up(std::shared_ptr<Stanza>&, BridgeContext&) { return false; }
};
