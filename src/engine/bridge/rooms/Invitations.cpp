#include "engine/Jid.h"
#include "engine/bridge/StanzaText.h"
#include "engine/bridge/messages/Messages.h"
#include "engine/bridge/rooms/Rooms.h"

namespace
{

struct Invitation {
    QString inviter;
    QString room;
    QString reason;
};

// Only the room itself passes on what an occupant sends, and it names the occupant (XEP-0045, 7.8.2): in
// anybody else's word another person could stand as the inviter.
pugi::xml_node passedOn(pugi::xml_node message)
{
    const bool isRoom = !xml::attribute(message, "from").contains(u'/');
    return isRoom ? stanza::child(message, ns::roomUser, "x").child("invite") : pugi::xml_node();
}

Invitation mediated(pugi::xml_node message, pugi::xml_node invite)
{
    const auto sender = xml::attribute(message, "from");
    const auto inviter = xml::attribute(invite, "from");
    return {inviter.isEmpty() ? sender : inviter, jid::bare(sender), xml::text(invite.child("reason"))};
}

Invitation direct(pugi::xml_node message, pugi::xml_node x)
{
    return {xml::attribute(message, "from"), xml::attribute(x, "jid"), xml::attribute(x, "reason")};
}

// The client reads the room from every element named x, so there is only the one.
std::shared_ptr<Stanza> made(pugi::xml_node message, const Invitation& invitation)
{
    const auto body = xml::text(message.child("body"));
    auto document = std::make_unique<pugi::xml_document>();
    auto root = document->append_child("message");
    stanza::setAttribute(root, "from", invitation.inviter);
    stanza::setAttribute(root, "to", xml::attribute(message, "to"));
    const auto& text = invitation.reason.isEmpty() ? body : invitation.reason;
    root.append_child("body").text().set(text.toUtf8().constData());
    stanza::setAttribute(stanza::appendChild(root, "x", ns::conference), "jid", invitation.room);
    return std::make_shared<Stanza>(std::move(document));
}

// Invitations to rooms. A mediated one (XEP-0045) and a direct one (XEP-0249) reach the client as the
// dialect's: one <x/> with the room's JID, from the inviter, the reason as body. A stanza that holds both is
// one invitation.
class Invitations : public Translator
{
public:
    bool up(std::shared_ptr<Stanza>& stanza, BridgeContext& context) override;
};

bool Invitations::up(std::shared_ptr<Stanza>& stanza, BridgeContext& context)
{
    const auto message = stanza->root();
    if (stanza::isType(message, "error") || stanza::isType(message, "groupchat"))
        return false;
    const auto invite = passedOn(message);
    const auto x = stanza::child(message, ns::conference, "x");
    if (!invite && !x.attribute("jid"))
        return false;
    // The client will only see the inviter.
    if (!context.audience.isBlocked(xml::attribute(message, "from")))
        context.out.up << made(message, invite ? mediated(message, invite) : direct(message, x));
    return true;
}

} // namespace

std::shared_ptr<Translator> rooms::invitations()
{
    return std::make_shared<Invitations>();
}
