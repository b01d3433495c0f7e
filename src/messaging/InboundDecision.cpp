#include "messaging/InboundDecision.h"

#include "engine/Jid.h"

namespace
{

InboundRoad roadOf(const QString& type)
{
    if (type.isEmpty())
        return InboundRoad::Plain;
    if (type == u"chat")
        return InboundRoad::Chat;
    return type == u"normal" ? InboundRoad::Normal : InboundRoad::Other;
}

} // namespace

InboundMessage InboundMessage::of(const Stanza& stanza)
{
    const auto fields = stanza.MessageFields();
    const QString from = stanza.From();
    return {roadOf(fields.Type()),
            from,
            jid::bare(from),
            jid::resource(from),
            stanza.To(),
            fields.Body(),
            stanza.XNamespace() == u"jabber:x:event",
            fields.XNamespace() == u"jabber:x:conference"};
}
