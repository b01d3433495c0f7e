#pragma once

#include "engine/Stanza.h"
#include "engine/Xml.h"

#include <QString>
#include <pugixml.hpp>

#include <memory>
#include <string_view>

// Small helps to read and change stanzas in the bridge.
namespace stanza
{

inline bool hasValue(pugi::xml_node node, const char* attribute, std::string_view value)
{
    return std::string_view(node.attribute(attribute).value()) == value;
}

inline bool isType(pugi::xml_node root, std::string_view type)
{
    return hasValue(root, "type", type);
}

inline bool is(pugi::xml_node root, std::string_view name)
{
    return std::string_view(root.name()) == name;
}

inline bool isRequest(pugi::xml_node root)
{
    return is(root, "iq") && (isType(root, "get") || isType(root, "set"));
}

// The first child of that namespace, and of that name unless it is empty.
pugi::xml_node child(pugi::xml_node root, std::string_view ns, std::string_view name = {});

pugi::xml_node appendChild(pugi::xml_node parent, const char* name, const char* ns);

// A copy whose root `change` may work on.
template <typename Change>
std::shared_ptr<Stanza> changed(pugi::xml_node root, Change change)
{
    auto document = std::make_unique<pugi::xml_document>();
    change(document->append_copy(root));
    return std::make_shared<Stanza>(std::move(document));
}

// `root` as a text for the wire after `change` worked on a copy of it.
template <typename Change>
QByteArray changedText(pugi::xml_node root, Change change)
{
    return changed(root, change)->Xml().toUtf8();
}

void setAttribute(pugi::xml_node node, const char* name, const QString& value);

} // namespace stanza
