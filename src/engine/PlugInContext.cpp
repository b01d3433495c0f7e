#include "engine/PlugInContext.h"

PlugInContext::PlugInContext(std::shared_ptr<StanzaQueue> queue, std::shared_ptr<::Stanza> stanza,
                             std::shared_ptr<::Session> session)
    : d_(std::make_shared<Data>(Data{std::move(queue), std::move(stanza), std::move(session), nullptr}))
{
}

::OutPacket& PlugInContext::OutPacket() const
{
    if (!d_->packet)
        d_->packet = std::make_unique<::OutPacket>(d_->queue, d_->stanza->From());
    return *d_->packet;
}

bool SendStanza(const PlugInContext& context, const QString& text)
{
    auto& packet = context.OutPacket();
    packet.Clear();
    packet.RawFields().setXml(text);
    return packet.Send();
}
