#include "engine/bridge/OutboundMessagesPart.h"

#include "engine/bridge/MessageNamespaces.h"
#include "engine/bridge/StanzaText.h"

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

} // namespace

bool OutboundMessagesPart::down(const ClientStanza& stanza, BridgeState&, BridgeOutput& out)
{
    const auto message = stanza.root;
    if (!stanza::is(message, "message"))
        return false;
    const auto type = xml::attribute(message, "type");
    const auto* chat = chatState(message);
    if (!chat && type == type.toLower())
        return false;
    out.wire << stanza::changedText(message, [&](pugi::xml_node copy) {
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
