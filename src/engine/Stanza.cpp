#include "engine/Stanza.h"

#include "engine/Xml.h"

namespace
{

Stanza::Kind kindOf(std::string_view name)
{
    if (name == "iq")
        return Stanza::Kind::Iq;
    if (name == "message")
        return Stanza::Kind::Message;
    return name == "presence" ? Stanza::Kind::Presence : Stanza::Kind::Other;
}

} // namespace

Stanza::Stanza(std::unique_ptr<pugi::xml_document> document)
    : document_(std::move(document)), kind_(kindOf(document_->document_element().name()))
{
}

std::shared_ptr<Stanza> Stanza::notice(const char* type)
{
    auto document = std::make_unique<pugi::xml_document>();
    document->append_child("presence").append_attribute("type") = type;
    return std::make_shared<Stanza>(std::move(document));
}

std::shared_ptr<Stanza> Stanza::returned(const QByteArray& text, Kind kind)
{
    auto stanza = text.startsWith("<message") ? fromXml(QString::fromUtf8(text)) : nullptr;
    if (!stanza || stanza->MessageFields().Body().isEmpty())
        return nullptr;
    stanza->kind_ = kind;
    return stanza;
}

std::shared_ptr<Stanza> Stanza::fromXml(const QString& text)
{
    auto document = xml::parsed(text);
    return document ? std::make_shared<Stanza>(std::move(document)) : nullptr;
}

QString Stanza::From() const
{
    return xml::attribute(root(), "from");
}
QString Stanza::To() const
{
    return xml::attribute(root(), "to");
}

const QString& Stanza::Xml() const
{
    if (xml_.isNull())
        xml_ = xml::serialised(root());
    return xml_;
}

QString Stanza::XNamespace() const
{
    if (kind_ != Kind::Iq)
        return MessageFields().XNamespace();
    const auto extension = root().find_child([](pugi::xml_node child) { return child.attribute("xmlns"); });
    return xml::attribute(extension, "xmlns");
}

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
