#pragma once

#include <QString>
#include <pugixml.hpp>

#include <memory>
#include <string_view>

// The few things that everybody who reads or writes XML needs: escaping, text, namespaces.
namespace xml
{

// `value` ready to stand in an attribute or in character data. Characters that XML 1.0 can't carry at all are
// replaced by U+FFFD, so that the result is well-formed whatever `value` holds.
QString escaped(const QString& value);

// Whether a name from the network can be that of an element of ours: well-formed, and with no prefix that
// only somebody else declared.
bool isElementName(const QString& name);

// The namespace of `node`, from the nearest `xmlns` upwards; empty for none.
std::string_view xmlns(pugi::xml_node node);

// All character data below `node`, in document order.
QString text(pugi::xml_node node);

QString attribute(pugi::xml_node node, const char* name);

inline QString fromUtf8(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

// `node` as XML text with double-quoted attributes and no added white space.
QString serialised(pugi::xml_node node);

// The parsed text, or null if it isn't a well-formed document. White space is kept as it stands.
std::unique_ptr<pugi::xml_document> parsed(const QString& text);

} // namespace xml
