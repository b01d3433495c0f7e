#include "engine/OutPacket.h"

#include "engine/StanzaQueue.h"
#include "engine/Xml.h"

OutPacket::OutPacket(std::shared_ptr<StanzaQueue> queue, QString peer)
    : queue_(std::move(queue)), peer_(std::move(peer))
{
}

void OutPacket::Clear()
{
    document_.reset();
    raw_.clear();
    lastError_.clear();
    view_ = View::None;
}

pugi::xml_node OutPacket::rootFor(View view, const char* name)
{
    if (view_ != view || !document_.document_element()) {
        document_.reset();
        document_.append_child(name);
        view_ = view;
    }
    return document_.document_element();
}

::MessageFields OutPacket::MessageFields()
{
    return ::MessageFields(rootFor(View::Message, "message"));
}
::PresenceFields OutPacket::PresenceFields()
{
    return ::PresenceFields(rootFor(View::Presence, "presence"));
}

::RawFields OutPacket::RawFields()
{
    view_ = View::Raw;
    return ::RawFields(raw_);
}

bool OutPacket::Send()
{
    lastError_.clear();
    switch (view_) {
    case View::Raw:
        return queue_->sendRaw(raw_, &lastError_);
    case View::Message:
    case View::Presence:
        return sendBuilt();
    case View::None:
        break;
    }
    lastError_ = QStringLiteral("nothing to send");
    return false;
}

bool OutPacket::sendBuilt()
{
    auto root = document_.document_element();
    if (!peer_.isEmpty() && !root.attribute("to"))
        root.prepend_attribute("to") = peer_.toUtf8().constData();
    const bool sent = queue_->sendBuilt(root, &lastError_);
    if (sent && view_ == View::Message)
        ::MessageFields(root).setFrom(queue_->ownFullJid());
    return sent;
}
