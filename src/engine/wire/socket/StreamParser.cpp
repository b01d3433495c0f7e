#include "engine/wire/socket/StreamParser.h"

#include "engine/wire/socket/Utf8.h"

#include <QXmlStreamReader>

#include <utility>

namespace
{

constexpr std::string_view clientNamespace = "jabber:client";
constexpr auto streamNamespace = u"http://etherx.jabber.org/streams";
constexpr auto xmlNamespace = u"http://www.w3.org/XML/1998/namespace";

constexpr StreamFault tooDeep{"policy-violation", "elements are nested too deeply"};
constexpr StreamFault tooLong{"policy-violation", "a stanza is too long"};
constexpr StreamFault notWellFormed{"not-well-formed", "the XML is not well-formed"};
constexpr StreamFault undeclared{"restricted-xml", "an entity that XMPP does not know"};
constexpr StreamFault strayText{"bad-format", "text between the stanzas"};
constexpr StreamFault noStream{"invalid-namespace", "the first element opens no stream"};
constexpr StreamFault otherEncoding{"unsupported-encoding", "the encoding is not UTF-8"};

} // namespace

StreamParser::StreamParser()
{
    reset();
}

void StreamParser::reset()
{
    reader_.clear();
    guard_ = {};
    header_ = {};
    fault_ = {};
    coming_ = {};
    closed_ = false;
    hungry_ = true;
    depth_ = 0;
    skipped_ = 0;
    document_.reset();
    current_ = {};
    text_.clear();
    namespaces_.resize(MarkupGuard::maxDepth + 2);
}

void StreamParser::feed(const QByteArray& bytes)
{
    if (fault_ || closed_ || bytes.isEmpty())
        return;
    const auto finding = guard_.check(bytes);
    if (finding.forgets)
        forgetStanza();
    reader_.addData(finding.clean);
    coming_ = finding.fault;
    skipped_ += finding.skipped;
    hungry_ = false;
}

// What the reader keeps of a stanza goes with the reader's state alone.
void StreamParser::forgetStanza()
{
    reader_.clear();
    reader_.addData(opening_);
    while (reader_.readNext() == QXmlStreamReader::StartDocument) {
    }
    depth_ = 1;
    stanzaStart_ = reader_.characterOffset();
    document_.reset();
    text_.clear();
}

StreamParser::Event StreamParser::next()
{
    if (fault_)
        return Event::Broken;
    if (closed_)
        return Event::Closed;
    while (!hungry_) {
        const auto event = token(reader_.readNext());
        if (event != Event::None)
            return event;
    }
    return Event::None;
}

StreamParser::Event StreamParser::token(QXmlStreamReader::TokenType type)
{
    switch (type) {
    case QXmlStreamReader::StartElement:
        return startElement();
    case QXmlStreamReader::EndElement:
        return endElement();
    case QXmlStreamReader::Characters:
        return characters();
    case QXmlStreamReader::Invalid:
        return starved();
    case QXmlStreamReader::StartDocument:
        if (!reader_.documentEncoding().isEmpty() &&
            reader_.documentEncoding().compare(u"utf-8", Qt::CaseInsensitive) != 0)
            return broken(otherEncoding);
        return Event::None;
    case QXmlStreamReader::EntityReference:
        return broken(undeclared);
    default:
        return broken(notWellFormed);
    }
}

StreamParser::Event StreamParser::starved()
{
    if (reader_.error() != QXmlStreamReader::PrematureEndOfDocumentError)
        return broken(notWellFormed);
    hungry_ = true;
    if (coming_)
        return broken(coming_);
    return isTooLong() ? broken(tooLong) : Event::None;
}

bool StreamParser::isTooLong() const
{
    return reader_.characterOffset() - stanzaStart_ > MarkupGuard::maxStanza;
}

StreamParser::Event StreamParser::broken(const StreamFault& fault)
{
    fault_ = fault;
    document_.reset();
    return Event::Broken;
}

StreamParser::Event StreamParser::startElement()
{
    if (++depth_ == 1)
        return openStream();
    if (depth_ > MarkupGuard::maxDepth + 1)
        return broken(tooDeep);
    if (depth_ == 2)
        beginStanza();
    flushText();
    appendElement();
    appendAttributes();
    return Event::None;
}

StreamParser::Event StreamParser::openStream()
{
    if (reader_.namespaceUri() != streamNamespace || reader_.name() != u"stream")
        return broken(noStream);
    const auto attributes = reader_.attributes();
    header_.from = attributes.value(QLatin1String("from")).toString();
    header_.id = attributes.value(QLatin1String("id")).toString();
    const auto version = attributes.value(QLatin1String("version"));
    header_.hasFeatures = version.left(version.indexOf(u'.')).toInt() >= 1;
    stanzaStart_ = reader_.characterOffset();
    opening_ = u'<' + reader_.qualifiedName().toString();
    const auto declarations = reader_.namespaceDeclarations();
    for (const auto& declaration : declarations) {
        const QString colon = declaration.prefix().isEmpty() ? QString() : QStringLiteral(":");
        opening_ +=
            QStringLiteral(" xmlns%1%2=\"%3\"")
                .arg(colon, declaration.prefix(), declaration.namespaceUri().toString().toHtmlEscaped());
    }
    opening_ += u'>';
    return Event::Opened;
}

void StreamParser::beginStanza()
{
    document_ = std::make_unique<pugi::xml_document>();
    current_ = *document_;
    namespaces_[1] = clientNamespace;
    text_.clear();
}

void StreamParser::appendElement()
{
    const auto level = static_cast<std::size_t>(depth_);
    auto& space = namespaces_[level];
    toUtf8(space, reader_.namespaceUri());
    current_ = current_.append_child(toUtf8(name_, reader_.name()).c_str());
    if (space != namespaces_[level - 1])
        current_.append_attribute("xmlns") = space.c_str();
}

void StreamParser::appendAttributes()
{
    const auto attributes = reader_.attributes();
    for (const auto& attribute : attributes) {
        name_.clear();
        if (attribute.namespaceUri() == xmlNamespace)
            name_ = "xml:";
        else if (!attribute.namespaceUri().isEmpty())
            continue;
        appendUtf8(name_, attribute.name());
        current_.append_attribute(name_.c_str()) = toUtf8(value_, attribute.value()).c_str();
    }
}

StreamParser::Event StreamParser::characters()
{
    if (depth_ >= 2)
        appendUtf8(text_, reader_.text());
    else if (!reader_.isWhitespace())
        return broken(strayText);
    else
        stanzaStart_ = reader_.characterOffset();
    return Event::None;
}

void StreamParser::flushText()
{
    if (text_.empty())
        return;
    current_.append_child(pugi::node_pcdata).set_value(text_.c_str());
    text_.clear();
}

StreamParser::Event StreamParser::endElement()
{
    if (--depth_ == 0) {
        closed_ = true;
        return Event::Closed;
    }
    flushText();
    current_ = current_.parent();
    if (depth_ > 1)
        return Event::None;
    stanzaStart_ = reader_.characterOffset();
    return Event::Element;
}

std::shared_ptr<Stanza> StreamParser::takeElement()
{
    return std::make_shared<Stanza>(std::move(document_));
}
