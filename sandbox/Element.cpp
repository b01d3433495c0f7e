#include "sandbox/Element.h"

namespace sandbox
{
namespace
{

QStringView entityOf(char16_t c)
{
    switch (c) {
    case u'&':
        return u"&amp;";
    case u'<':
        return u"&lt;";
    case u'>':
        return u"&gt;";
    case u'"':
        return u"&quot;";
    case u'\'':
        return u"&apos;";
    default:
        return {};
    }
}

bool forbidden(char16_t c)
{
    return (c < 0x20 && c != u'\t' && c != u'\n' && c != u'\r') || c == 0xFFFE || c == 0xFFFF;
}

} // namespace

QString escaped(const QString& value)
{
    QString out;
    out.reserve(value.size() + 16);
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar c = value.at(i);
        const QStringView entity = entityOf(c.unicode());
        if (!entity.isEmpty()) {
            out += entity;
        } else if (c.isHighSurrogate() && i + 1 < value.size() && value.at(i + 1).isLowSurrogate()) {
            out += c;
            out += value.at(++i);
        } else {
            out += c.isSurrogate() || forbidden(c.unicode()) ? QChar(QChar::ReplacementCharacter) : c;
        }
    }
    return out;
}

Element::Element(const char* name, const char* xmlns) : name_(QLatin1String(name))
{
    if (xmlns)
        set("xmlns", QLatin1String(xmlns));
}

Element& Element::set(const char* attribute, const QString& value)
{
    attributes_ += u' ' + QLatin1String(attribute) + QLatin1String("=\"") + escaped(value) + u'"';
    return *this;
}

Element& Element::option(const char* attribute, const QString& value)
{
    return value.isEmpty() ? *this : set(attribute, value);
}

Element& Element::add(const Element& child)
{
    return raw(child.xml());
}

Element& Element::add(const char* child, const QString& text)
{
    return add(Element(child).text(text));
}

Element& Element::text(const QString& value)
{
    return raw(escaped(value));
}

Element& Element::raw(const QString& xml)
{
    content_ += xml;
    return *this;
}

QString Element::xml() const
{
    const QString start = u'<' + name_ + attributes_;
    if (content_.isEmpty())
        return start + QLatin1String("/>");
    return start + u'>' + content_ + QLatin1String("</") + name_ + u'>';
}

} // namespace sandbox
