#include "engine/Fields.h"

#include "engine/Stanza.h"
#include "engine/Xml.h"

#include <cstring>

namespace
{

void setAttribute(pugi::xml_node root, const char* name, const QString& value)
{
    if (value.isEmpty()) {
        root.remove_attribute(name);
        return;
    }
    auto attribute = root.attribute(name);
    if (!attribute)
        attribute = root.append_attribute(name);
    attribute.set_value(value.toUtf8().constData());
}

void setChildText(pugi::xml_node root, const char* name, const QString& value)
{
    auto child = root.child(name);
    if (!child)
        child = root.append_child(name);
    child.text().set(value.toUtf8().constData());
}

bool hasType(pugi::xml_node root, const char* type)
{
    return std::strcmp(root.attribute("type").value(), type) == 0;
}

} // namespace

const pugi::xml_document& IqFields::Document() const
{
    return stanza_->document();
}
const QString& IqFields::Xml() const
{
    return stanza_->Xml();
}
QString IqFields::From() const
{
    return stanza_->From();
}
QString IqFields::Id() const
{
    return xml::attribute(stanza_->root(), "id");
}
QString IqFields::Type() const
{
    return xml::attribute(stanza_->root(), "type");
}

QString MessageFields::Xml() const
{
    return xml::serialised(root_);
}
QString MessageFields::Subject() const
{
    return xml::text(root_.child("subject"));
}
QString MessageFields::Body() const
{
    return xml::text(root_.child("body"));
}
QString MessageFields::To() const
{
    return xml::attribute(root_, "to");
}
QString MessageFields::From() const
{
    return xml::attribute(root_, "from");
}
QString MessageFields::Type() const
{
    return xml::attribute(root_, "type");
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

void MessageFields::setSubject(const QString& text)
{
    setChildText(root_, "subject", text);
}
void MessageFields::setBody(const QString& text)
{
    setChildText(root_, "body", text);
}
void MessageFields::setTo(const QString& jid)
{
    setAttribute(root_, "to", jid);
}
void MessageFields::setFrom(const QString& jid)
{
    setAttribute(root_, "from", jid);
}
void MessageFields::setType(const QString& type)
{
    setAttribute(root_, "type", type);
}

QString PresenceFields::Xml() const
{
    return xml::serialised(root_);
}
QString PresenceFields::Status() const
{
    return xml::text(root_.child("status"));
}
QString PresenceFields::Show() const
{
    return xml::text(root_.child("show"));
}
QString PresenceFields::From() const
{
    return xml::attribute(root_, "from");
}
QString PresenceFields::Type() const
{
    return xml::attribute(root_, "type");
}

void PresenceFields::setStatus(const QString& text)
{
    setChildText(root_, "status", text);
}
void PresenceFields::setShow(const QString& word)
{
    setChildText(root_, "show", word);
}
void PresenceFields::setTo(const QString& jid)
{
    setAttribute(root_, "to", jid);
}
void PresenceFields::setFrom(const QString& jid)
{
    setAttribute(root_, "from", jid);
}

void PresenceFields::SetSubscribe()
{
    setAttribute(root_, "type", QStringLiteral("subscribe"));
}
void PresenceFields::SetSubscribed()
{
    setAttribute(root_, "type", QStringLiteral("subscribed"));
}
void PresenceFields::SetUnsubscribe()
{
    setAttribute(root_, "type", QStringLiteral("unsubscribe"));
}
void PresenceFields::SetUnsubscribed()
{
    setAttribute(root_, "type", QStringLiteral("unsubscribed"));
}
void PresenceFields::SetUnavailable()
{
    setAttribute(root_, "type", QStringLiteral("unavailable"));
}
void PresenceFields::SetAvailable()
{
    root_.remove_attribute("type");
}
void PresenceFields::SetProbe()
{
    setAttribute(root_, "type", QStringLiteral("probe"));
}

bool PresenceFields::IsSubscribe() const
{
    return hasType(root_, "subscribe");
}
bool PresenceFields::IsSubscribed() const
{
    return hasType(root_, "subscribed");
}
bool PresenceFields::IsUnsubscribe() const
{
    return hasType(root_, "unsubscribe");
}
bool PresenceFields::IsUnsubscribed() const
{
    return hasType(root_, "unsubscribed");
}
bool PresenceFields::IsUnavailable() const
{
    return hasType(root_, "unavailable");
}
bool PresenceFields::IsAvailable() const
{
    return hasType(root_, "");
}
