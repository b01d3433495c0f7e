#include "engine/bridge/queries/OwnCard.h"

#include "engine/Xml.h"

#include <QSet>
#include <QString>

#include <algorithm>
#include <array>
#include <string>

namespace owncard
{
namespace
{

constexpr std::array<std::string_view, 11> fields{"FN",    "N",    "NICKNAME", "URL", "BDAY", "ORG",
                                                  "TITLE", "ROLE", "TEL",      "ADR", "EMAIL"};

bool isField(pugi::xml_node node)
{
    return std::find(fields.begin(), fields.end(), std::string_view(node.name())) != fields.end();
}

// Which field of the client's an element fills; empty for none.
std::string slotOf(pugi::xml_node node)
{
    const std::string name = node.name();
    if (!isField(node))
        return {};
    if (name == "EMAIL")
        return node.child("PREF") ? name + " PREF" : name;
    if (name != "TEL" && name != "ADR")
        return name;
    const std::string place = node.child("HOME") ? " HOME" : node.child("WORK") ? " WORK" : "";
    const std::string kind = node.child("VOICE") ? " VOICE" : node.child("fax") ? " fax" : "";
    const bool isKnown = !place.empty() && (name == "ADR" || !kind.empty());
    return isKnown ? name + place + kind : std::string();
}

bool saysSomething(pugi::xml_node node)
{
    return !xml::text(node).trimmed().isEmpty();
}

// Of several elements for one field the first that says something counts.
pugi::xml_node inSlot(pugi::xml_node card, const std::string& slot)
{
    const auto fits = [&slot](pugi::xml_node node) { return slotOf(node) == slot; };
    const auto counts = [&](pugi::xml_node node) { return fits(node) && saysSomething(node); };
    const auto found = card.find_child(counts);
    return found ? found : card.find_child(fits);
}

int count(pugi::xml_node node, const char* name)
{
    const auto children = node.children(name);
    return static_cast<int>(std::distance(children.begin(), children.end()));
}

// What the element on the server says beside the client's parts.
void addParts(pugi::xml_node written, pugi::xml_node read)
{
    for (const auto part : read.children()) {
        const int before = count(written, part.name());
        int place = 0;
        for (auto sibling = part; sibling; sibling = sibling.previous_sibling(part.name()))
            ++place;
        if (part.type() == pugi::node_element && place > before)
            written.append_copy(part);
    }
}

// The texts of an element, each by itself.
void collect(pugi::xml_node node, QSet<QString>& texts)
{
    for (const auto child : node.children()) {
        if (child.type() != pugi::node_element && !QString::fromUtf8(child.value()).trimmed().isEmpty())
            texts << QString::fromUtf8(child.value()).trimmed();
        collect(child, texts);
    }
}

bool explains(pugi::xml_node copy, pugi::xml_node node)
{
    QSet<QString> ours;
    QSet<QString> texts;
    for (const auto own : copy.children(node.name()))
        collect(own, ours);
    collect(node, texts);
    return isField(node) && ours.contains(texts);
}

} // namespace

void addUnknown(pugi::xml_node written, pugi::xml_node read, pugi::xml_node copy)
{
    pugi::xml_document original;
    const auto before = original.append_copy(written);
    for (const auto node : read.children()) {
        const auto slot = slotOf(node);
        auto field = slot.empty() || inSlot(read, slot) != node ? pugi::xml_node() : inSlot(before, slot);
        if (field)
            addParts(inSlot(written, slot), node);
        else if (!explains(copy, node) && (saysSomething(node) || !isField(node)))
            written.append_copy(node);
    }
}

} // namespace owncard
