#include "engine/bridge/Disco.h"

#include "engine/Xml.h"

#include <algorithm>

namespace disco
{
namespace
{

// The disco query among an answer's children, by its namespace.
pugi::xml_node query(pugi::xml_node iq, std::string_view ns)
{
    for (const auto query : iq.children("query")) {
        if (xml::xmlns(query) == ns)
            return query;
    }
    return {};
}

} // namespace

Info Info::read(pugi::xml_node iq)
{
    Info info;
    const auto answer = query(iq, "http://jabber.org/protocol/disco#info");
    for (const auto node : answer.children("identity"))
        info.identities << Identity{xml::attribute(node, "category"), xml::attribute(node, "type"),
                                    xml::attribute(node, "name")};
    for (const auto node : answer.children("feature"))
        info.features << xml::attribute(node, "var");
    return info;
}

bool Info::hasIdentity(const QString& category, const QString& type) const
{
    return std::any_of(identities.begin(), identities.end(), [&](const Identity& identity) {
        return identity.category == category && (type.isEmpty() || identity.type == type);
    });
}

QList<Item> items(pugi::xml_node iq)
{
    QList<Item> all;
    for (const auto node : query(iq, "http://jabber.org/protocol/disco#items").children("item")) {
        Item item{xml::attribute(node, "jid"), xml::attribute(node, "node"), xml::attribute(node, "name")};
        if (!item.jid.isEmpty())
            all << std::move(item);
    }
    return all;
}

} // namespace disco
