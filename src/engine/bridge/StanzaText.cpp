#include "engine/bridge/StanzaText.h"

namespace stanza
{

pugi::xml_node child(pugi::xml_node root, std::string_view ns, std::string_view name)
{
    for (const auto child : root.children()) {
        if (child.type() == pugi::node_element && (name.empty() || name == child.name()) &&
            xml::xmlns(child) == ns)
            return child;
    }
    return {};
}

pugi::xml_node appendChild(pugi::xml_node parent, const char* name, const char* ns)
{
    auto node = parent.append_child(name);
    node.append_attribute("xmlns") = ns;
    return node;
}

void setAttribute(pugi::xml_node node, const char* name, const QString& value)
{
    auto attribute = node.attribute(name);
    if (!attribute)
        attribute = node.append_attribute(name);
    attribute.set_value(value.toUtf8().constData());
}

} // namespace stanza
