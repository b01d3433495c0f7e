#include "engine/bridge/StanzaText.h"
#include "engine/bridge/queries/Queries.h"
#include "engine/bridge/queries/VCardNames.h"

namespace
{

constexpr const char* cardNamespace = "vcard-temp";

// vcard-temp (XEP-0054): the dialect writes VCARD where the wire of today has vCard, and three of its element
// names differ. An old server would take the one for the other's absence, so the server's kind decides.
class VCards : public Translator
{
public:
    bool down(const ClientStanza& stanza, BridgeContext& context) override;

private:
    static void translate(pugi::xml_node iq, BridgeContext& context);
    static std::shared_ptr<Stanza> inDialect(pugi::xml_node iq, const QString& address);
};

bool VCards::down(const ClientStanza& stanza, BridgeContext& context)
{
    if (!stanza::child(stanza.root(), cardNamespace, "VCARD"))
        return false;
    context.knowledge.whenKnown(context.home.server(), [stanza, &context](const Knowledge::Service& server) {
        if (server.kind == Knowledge::Kind::OfToday)
            translate(stanza.root(), context);
        else
            context.out.wire << stanza.text;
    });
    return true;
}

// The window of a card waits as long as a foreign server takes.
void VCards::translate(pugi::xml_node iq, BridgeContext& context)
{
    const auto text = stanza::changedText(
        iq, [](pugi::xml_node copy) { vcard::toWire(stanza::child(copy, cardNamespace, "VCARD")); });
    if (!stanza::isType(iq, "get")) {
        context.out.wire << text;
        return;
    }
    const auto to = xml::attribute(iq, "to");
    const auto address = to.isEmpty() ? context.home.ownBareJid() : to;
    const auto answered = [address, &context](const Exchange::Answer& answer) {
        context.out.up << inDialect(answer.stanza->root(), address);
    };
    context.exchange.forward(text, iq, answered, std::nullopt);
}

// The client finds the window of a card by its sender, and by the element that an error may lack.
std::shared_ptr<Stanza> VCards::inDialect(pugi::xml_node iq, const QString& address)
{
    return stanza::changed(iq, [&](pugi::xml_node copy) {
        stanza::setAttribute(copy, "from", address);
        if (const auto card = stanza::child(copy, cardNamespace))
            vcard::toDialect(card);
        else
            copy.prepend_child("VCARD").append_attribute("xmlns") = cardNamespace;
    });
}

} // namespace

std::shared_ptr<Translator> queries::vCards()
{
    return std::make_shared<VCards>();
}
