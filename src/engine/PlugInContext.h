#pragma once

#include "engine/OutPacket.h"
#include "engine/Session.h"
#include "engine/Stanza.h"

#include <memory>

// The argument of every plug-in event, and the way to send outside an event. A handle: copies share the
// stanza, the packet and the session, and may outlive the event.
class PlugInContext
{
public:
    PlugInContext(std::shared_ptr<StanzaQueue> queue, std::shared_ptr<::Stanza> stanza,
                  std::shared_ptr<::Session> session);

    // The stanza of the event; an empty presence where there is none.
    const ::Stanza& Stanza() const { return *d_->stanza; }
    ::OutPacket& OutPacket() const;
    ::Session& Session() const { return *d_->session; }

private:
    struct Data {
        std::shared_ptr<StanzaQueue> queue;
        std::shared_ptr<::Stanza> stanza;
        std::shared_ptr<::Session> session;
        std::unique_ptr<::OutPacket> packet;
    };
    std::shared_ptr<Data> d_;
};

// Clears the context's packet and sends `text` as it stands. False when the engine refused it.
bool SendStanza(const PlugInContext& context, const QString& text);
