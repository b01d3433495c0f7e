#include "engine/Xml.h"

#include <QXmlStreamReader>

namespace xml
{
namespace
{

bool allowed(char32_t c)
{
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
           (c >= 0x10000 && c <= 0x10FFFF);
}

struct StringWriter : pugi::xml_writer {
    std::string text;
    void write(const void* data, std::size_t size) override
    {
        text.append(static_cast<const char*>(data), size);
    }
};

struct TextCollector : pugi::xml_tree_walker {
    std::string text;
    bool for_each(pugi::xml_node& node) override
    {
        if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata)
            text += node.value();
        return true;
    }
};

} // namespace

QString escaped(const QString& value)
{
    QString out;
    out.reserve(value.size() + 16);
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar c = value.at(i);
        if (c.isHighSurrogate() && i + 1 < value.size() && value.at(i + 1).isLowSurrogate()) {
            out += c;
            out += value.at(++i);
        } else if (!allowed(c.unicode())) {
            out += QChar::ReplacementCharacter;
        } else if (c == u'&') {
            out += u"&amp;";
        } else if (c == u'<') {
            out += u"&lt;";
        } else if (c == u'>') {
            out += u"&gt;";
        } else if (c == u'"') {
            out += u"&quot;";
        } else {
            out += c;
        }
    }
    return out;
}

bool isElementName(const QString& name)
{
    QXmlStreamReader reader(u'<' + name + QStringLiteral("/>"));
    if (!reader.readNextStartElement() || reader.qualifiedName() != name)
        return false;
    while (!reader.atEnd())
        reader.readNext();
    return !reader.hasError();
}

std::string_view xmlns(pugi::xml_node node)
{
    for (; node; node = node.parent()) {
        if (const auto attribute = node.attribute("xmlns"))
            return attribute.value();
    }
    return {};
}

QString text(pugi::xml_node node)
{
    const auto child = node.first_child();
    if (!child.next_sibling() && child.type() == pugi::node_pcdata)
        return QString::fromUtf8(child.value());
    TextCollector collector;
    node.traverse(collector);
    return QString::fromStdString(collector.text);
}

QString attribute(pugi::xml_node node, const char* name)
{
    return QString::fromUtf8(node.attribute(name).value());
}

QString serialised(pugi::xml_node node)
{
    StringWriter writer;
    node.print(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    return QString::fromStdString(writer.text);
}

std::unique_ptr<pugi::xml_document> parsed(const QString& text)
{
    auto document = std::make_unique<pugi::xml_document>();
    const QByteArray utf8 = text.toUtf8();
    constexpr unsigned options = pugi::parse_default | pugi::parse_ws_pcdata;
    if (!document->load_buffer(utf8.constData(), static_cast<std::size_t>(utf8.size()), options,
                               pugi::encoding_utf8))
        return nullptr;
    return document;
}

} // namespace xml
