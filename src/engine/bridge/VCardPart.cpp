#include "engine/bridge/VCardPart.h"

#include "engine/bridge/StanzaText.h"
#include "engine/bridge/VCardNames.h"

#include <optional>

namespace
{

constexpr std::string_view cardNamespace = "vcard-temp";

// Takes the address that an answer belongs to off the list.
std::optional<QString> takeAsked(QMultiHash<QString, QString>& asked, const QString& id, const QString& from,
                                 const HomeAddresses& home)
{
    for (auto entry = asked.find(id); entry != asked.end() && entry.key() == id; ++entry) {
        if (home.key(entry.value()) != home.key(from))
            continue;
        const auto address = entry.value();
        asked.erase(entry);
        return address;
    }
    return std::nullopt;
}

} // namespace

bool VCardPart::down(const ClientStanza& stanza, BridgeState& state, BridgeOutput& out)
{
    if (!stanza::is(stanza.root, "iq") || !stanza::child(stanza.root, cardNamespace, "VCARD"))
        return false;
    const auto passOrTranslate = [this, &state, text = stanza.text](BridgeOutput& next) {
        pugi::xml_document document;
        document.load_buffer(text.constData(), static_cast<std::size_t>(text.size()),
                             pugi::parse_default | pugi::parse_ws_pcdata);
        if (state.knowledge.isOfToday())
            translateDown(document.document_element(), state, next);
        else
            next.wire << text;
    };
    state.knowledge.whenKnown(passOrTranslate, out);
    return true;
}

void VCardPart::translateDown(pugi::xml_node iq, const BridgeState& state, BridgeOutput& out)
{
    if (stanza::isType(iq, "get")) {
        const auto to = xml::attribute(iq, "to");
        asked_.insert(xml::attribute(iq, "id"), to.isEmpty() ? state.ownBareJid : to);
    }
    vcard::toWire(stanza::child(iq, cardNamespace, "VCARD"));
    out.wire << xml::serialised(iq).toUtf8();
}

// The client finds the window of a card by its sender, and by the element that an error may lack.
bool VCardPart::up(std::shared_ptr<Stanza>& stanza, BridgeState& state, BridgeOutput&)
{
    const auto iq = stanza->root();
    if (asked_.isEmpty() || stanza->kind() != Stanza::Kind::Iq)
        return false;
    if (!stanza::isType(iq, "result") && !stanza::isType(iq, "error"))
        return false;
    const auto address = takeAsked(asked_, xml::attribute(iq, "id"), stanza->From(), state.home);
    if (!address)
        return false;
    stanza = stanza::changed(iq, [&](pugi::xml_node copy) {
        stanza::setAttribute(copy, "from", *address);
        if (const auto card = stanza::child(copy, cardNamespace))
            vcard::toDialect(card);
        else
            copy.prepend_child("VCARD").append_attribute("xmlns") = cardNamespace.data();
    });
    return false;
}
