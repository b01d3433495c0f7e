#include "engine/bridge/RosterPushPart.h"

#include "engine/bridge/IqReply.h"
#include "engine/bridge/StanzaText.h"

bool RosterPushPart::up(std::shared_ptr<Stanza>& stanza, BridgeState&, BridgeOutput& out)
{
    const auto iq = stanza->root();
    if (stanza->kind() == Stanza::Kind::Iq && stanza::isType(iq, "set") && iq.attribute("id") &&
        stanza::child(iq, "jabber:iq:roster"))
        out.wire << reply::result(iq);
    return false;
}
