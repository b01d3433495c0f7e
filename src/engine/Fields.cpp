#include "engine/Fields.h"

#include "engine/Xml.h"

QString AddressedFields::Xml() const
{
    return xml::serialised(root_);
}
QString AddressedFields::To() const
{
    return xml::attribute(root_, "to");
}
QString AddressedFields::From() const
{
    return xml::attribute(root_, "from");
}
QString AddressedFields::Type() const
{
    return xml::attribute(root_, "type");
}

void AddressedFields::setTo(const QString& jid)
{
    setAttribute("to", jid);
}
void AddressedFields::setFrom(const QString& jid)
{
    setAttribute("from", jid);
}

void AddressedFields::setAttribute(const char* name, const QString& value)
{
    if (value.isEmpty()) {
        root_.remove_attribute(name);
        return;
    }
    auto attribute = root_.attribute(name);
    if (!attribute)
        attribute = root_.append_attribute(name);
    attribute.set_value(value.toUtf8().constData());
}

QString AddressedFields::childText(const char* name) const
{
    return xml::text(root_.child(name));
}

void AddressedFields::setChildText(const char* name, const QString& value)
{
    auto child = root_.child(name);
    if (!child)
        child = root_.append_child(name);
    child.text().set(value.toUtf8().constData());
}

QString MessageFields::XNamespace() const
{
    std::string_view first;
    for (const auto x : root_.children("x")) {
        const auto ns = xml::xmlns(x);
        if (ns == "jabber:x:event" || ns == "jabber:x:conference")
            return QString::fromUtf8(ns.data(), static_cast<qsizetype>(ns.size()));
        if (first.empty())
            first = ns;
    }
    return QString::fromUtf8(first.data(), static_cast<qsizetype>(first.size()));
}

QDateTime MessageFields::Written() const
{
    for (const auto x : root_.children("x")) {
        if (xml::xmlns(x) != "jabber:x:delay")
            continue;
        auto time = QDateTime::fromString(xml::attribute(x, "stamp"), QStringLiteral("yyyyMMdd'T'HH:mm:ss"));
        time.setTimeSpec(Qt::UTC);
        return time.toLocalTime();
    }
    return {};
}
