#pragma once

#include <QString>

namespace sandbox
{

// `value` ready to stand in an attribute or in character data. What XML 1.0 can't carry becomes U+FFFD.
QString escaped(const QString& value);

// A piece of XML being written: attributes stand in double quotes in the order in which they are set.
class Element
{
public:
    explicit Element(const char* name, const char* xmlns = nullptr);

    Element& set(const char* attribute, const QString& value);
    // Sets nothing where the value is empty.
    Element& option(const char* attribute, const QString& value);

    Element& add(const Element& child);
    // A child with text; an empty text makes an empty element.
    Element& add(const char* child, const QString& text = {});
    Element& text(const QString& value);
    // XML that is well-formed already.
    Element& raw(const QString& xml);

    QString xml() const;

private:
    QString name_;
    QString attributes_;
    QString content_;
};

} // namespace sandbox
