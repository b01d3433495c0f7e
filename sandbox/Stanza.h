#pragma once

#include "sandbox/Element.h"

#include <QByteArray>
#include <pugixml.hpp>

#include <memory>

namespace sandbox
{

// One stanza of a client. Its addresses are in the world's form: the host's name has become the mark.
class Stanza
{
public:
    // `raw` as it came, `host` the name that this client uses. Null if it isn't a well-formed element.
    static std::unique_ptr<Stanza> parsed(const QByteArray& raw, const QString& host);

    // The bytes as they came on the wire.
    const QByteArray& raw() const { return raw_; }

    QString name() const;
    QString to() const { return attribute("to"); }
    QString id() const { return attribute("id"); }
    QString type() const { return attribute("type"); }
    bool isGet() const { return type() == u"get"; }
    bool isSet() const { return type() == u"set"; }

    QString attribute(const char* name) const;
    // The first child element and its namespace: an iq's request.
    pugi::xml_node query() const;
    QString xmlns() const;
    // The text of a child of the root, or of the request.
    QString text(const char* child) const;
    QString queryText(const char* child) const;

    // All children as XML.
    QString content() const;

private:
    Stanza() = default;

    QByteArray raw_;
    pugi::xml_document document_;
    pugi::xml_node root_;
};

QString attributeOf(pugi::xml_node node, const char* name);
QString textOf(pugi::xml_node node);
QString xmlOf(pugi::xml_node node);

} // namespace sandbox
