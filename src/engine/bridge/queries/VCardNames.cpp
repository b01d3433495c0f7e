#include "engine/bridge/queries/VCardNames.h"

#include <string>
#include <string_view>

namespace vcard
{
namespace
{

void rename(pugi::xml_node parent, const char* from, const char* to)
{
    for (auto child : parent.children(from))
        child.set_name(to);
}

// The dialect writes a number or an address straight into its element; XEP-0054 wants it in a child, even
// when it is empty.
void wrapText(pugi::xml_node node, const char* wrapper)
{
    if (node.child(wrapper))
        return;
    std::string text;
    for (auto child = node.first_child(); child;) {
        const auto next = child.next_sibling();
        if (child.type() != pugi::node_element) {
            text += child.value();
            node.remove_child(child);
        }
        child = next;
    }
    const auto wrapped = node.append_child(wrapper);
    if (!text.empty())
        wrapped.text().set(text.c_str());
}

void unwrapText(pugi::xml_node node, const char* wrapper)
{
    const auto child = node.child(wrapper);
    if (!child)
        return;
    const std::string text = child.text().get();
    node.remove_child(child);
    if (!text.empty())
        node.append_child(pugi::node_pcdata).set_value(text.c_str());
}

// Some servers keep cards in a form that has no such marks, and clients leave them out; the dialect's client
// finds a number by VOICE and the main address by PREF.
void markVoice(pugi::xml_node telephone)
{
    for (const auto child : telephone.children()) {
        const std::string_view name = child.name();
        if (child.type() == pugi::node_element && name != "HOME" && name != "WORK" && name != "PREF")
            return;
    }
    telephone.prepend_child("VOICE");
}

void markMainAddress(pugi::xml_node card)
{
    for (const auto email : card.children("EMAIL")) {
        if (email.child("PREF"))
            return;
    }
    if (auto first = card.child("EMAIL"))
        first.prepend_child("PREF");
}

} // namespace

void toWire(pugi::xml_node card)
{
    card.set_name("vCard");
    for (const auto address : card.children("ADR"))
        rename(address, "COUNTRY", "CTRY");
    for (const auto telephone : card.children("TEL")) {
        rename(telephone, "fax", "FAX");
        wrapText(telephone, "NUMBER");
    }
    for (const auto email : card.children("EMAIL"))
        wrapText(email, "USERID");
}

void toDialect(pugi::xml_node card)
{
    card.set_name("VCARD");
    for (const auto address : card.children("ADR")) {
        rename(address, "CTRY", "COUNTRY");
        rename(address, "EXTADR", "EXTADD");
    }
    for (const auto telephone : card.children("TEL")) {
        rename(telephone, "FAX", "fax");
        unwrapText(telephone, "NUMBER");
        markVoice(telephone);
    }
    for (const auto email : card.children("EMAIL"))
        unwrapText(email, "USERID");
    markMainAddress(card);
}

} // namespace vcard
