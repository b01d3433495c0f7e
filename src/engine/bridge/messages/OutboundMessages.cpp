#include "engine/bridge/StanzaText.h"
#include "engine/bridge/messages/Messages.h"

namespace
{

bool isTyping(pugi::xml_node message)
{
    return bool(stanza::child(message, ns::event, "x").child("composing"));
}

// The chat state that `message` should carry, or null.
const char* chatState(pugi::xml_node message)
{
    if (!stanza::isType(message, "chat") || stanza::child(message, ns::chatStates))
        return nullptr;
    if (message.child("body"))
        return "active";
    return isTyping(message) ? "composing" : nullptr;
}

// What the client writes to people, for a server of today: types in lower case, and chat states (XEP-0085)
// beside the typing event of the dialect.
class OutboundMessages : public Translator
{
public:
    bool down(const ClientStanza& stanza, BridgeContext& context) override;
};

bool OutboundMessages::down(const ClientStanza& stanza, BridgeContext& context)
{
    const auto message = stanza.root();
    const auto type = xml::attribute(message, "type");
    const auto* chat = chatState(message);
    if (!chat && type == type.toLower())
        return false;
    context.out.wire << stanza::changedText(message, [&](pugi::xml_node copy) {
        if (!type.isEmpty())
            stanza::setAttribute(copy, "type", type.toLower());
        if (!chat)
            return;
        stanza::appendChild(copy, chat, ns::chatStates);
        // Typing is news for the moment only: no archive, no offline store (XEP-0334).
        if (!copy.child("body"))
            stanza::appendChild(copy, "no-store", ns::hints);
    });
    return true;
}

} // namespace

std::shared_ptr<Translator> messages::outbound()
{
    return std::make_shared<OutboundMessages>();
}
