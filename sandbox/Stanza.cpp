#include "sandbox/Stanza.h"

#include "sandbox/Address.h"

#include <string>

namespace sandbox
{
namespace
{

struct Writer : pugi::xml_writer {
    std::string text;
    void write(const void* data, std::size_t size) override
    {
        text.append(static_cast<const char*>(data), size);
    }
};

// Exchanges the host's name for the mark in every address of the element and of those below it.
void markHost(pugi::xml_node node, const QString& host)
{
    for (const char* name : {"to", "from", "jid"}) {
        auto attribute = node.attribute(name);
        if (attribute)
            attribute.set_value(
                address::rehosted(QString::fromUtf8(attribute.value()), host, Host).toUtf8().constData());
    }
    for (const auto child : node.children())
        markHost(child, host);
}

} // namespace

std::unique_ptr<Stanza> Stanza::parsed(const QByteArray& raw, const QString& host)
{
    std::unique_ptr<Stanza> stanza(new Stanza);
    stanza->raw_ = raw;
    QByteArray text = raw;
    text.replace(Host.toUtf8(), QString(QChar(QChar::ReplacementCharacter)).toUtf8());
    constexpr unsigned options = pugi::parse_default | pugi::parse_ws_pcdata;
    if (!stanza->document_.load_buffer(text.constData(), std::size_t(text.size()), options,
                                       pugi::encoding_utf8))
        return nullptr;
    stanza->root_ = stanza->document_.document_element();
    markHost(stanza->root_, host);
    return stanza;
}

QString Stanza::name() const
{
    return QString::fromUtf8(root_.name());
}

QString Stanza::attribute(const char* name) const
{
    return attributeOf(root_, name);
}

pugi::xml_node Stanza::query() const
{
    return root_.find_child([](pugi::xml_node child) { return child.type() == pugi::node_element; });
}

QString Stanza::xmlns() const
{
    return attributeOf(query(), "xmlns");
}

QString Stanza::text(const char* child) const
{
    return textOf(root_.child(child));
}

QString Stanza::queryText(const char* child) const
{
    return textOf(query().child(child));
}

QString Stanza::content() const
{
    QString all;
    for (const auto child : root_.children())
        all += xmlOf(child);
    return all;
}

QString attributeOf(pugi::xml_node node, const char* name)
{
    return QString::fromUtf8(node.attribute(name).value());
}

QString textOf(pugi::xml_node node)
{
    std::string all;
    for (const auto child : node.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
            all += child.value();
    }
    return QString::fromStdString(all);
}

QString xmlOf(pugi::xml_node node)
{
    Writer writer;
    node.print(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    return QString::fromStdString(writer.text);
}

} // namespace sandbox
