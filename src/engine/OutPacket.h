#pragma once

#include "engine/Fields.h"

#include <QString>
#include <pugixml.hpp>

#include <memory>

class StanzaQueue;

// The builder of outbound stanzas: one per context, reused for every send. The view that was written last
// decides what Send puts on the wire; Clear forgets everything.
class OutPacket
{
public:
    // `peer` is where a stanza without a `to` goes; empty for a context without a peer.
    OutPacket(std::shared_ptr<StanzaQueue> queue, QString peer);

    // False when the stanza was refused: lastError() says why. A message's `from` is the own full JID
    // afterwards.
    bool Send();
    void Clear();
    ::MessageFields MessageFields();
    ::PresenceFields PresenceFields();
    ::RawFields RawFields();
    const QString& lastError() const { return lastError_; }

private:
    enum class View { None, Message, Presence, Raw };

    pugi::xml_node rootFor(View view, const char* name);
    bool sendBuilt();

    std::shared_ptr<StanzaQueue> queue_;
    QString peer_;
    pugi::xml_document document_;
    QString raw_;
    QString lastError_;
    View view_ = View::None;
};
