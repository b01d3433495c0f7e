#include "contacts/RosterItemXml.h"

#include "engine/Xml.h"

QString rosteritem::group(pugi::xml_node item)
{
    QString text;
    for (const auto child : item.children()) {
        const QString part =
            child.type() == pugi::node_element ? xml::text(child) : xml::fromUtf8(child.value());
        // White space between the elements is layout.
        if (child.type() == pugi::node_element || !part.trimmed().isEmpty())
            text += part;
    }
    if (text.isEmpty() || item.child("group") || xml::serialised(item).contains(u"group"))
        return text;
    return {};
}
