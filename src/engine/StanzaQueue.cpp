#include "engine/StanzaQueue.h"

#include "engine/Diagnostics.h"
#include "engine/Xml.h"

#include <QCoreApplication>
#include <QXmlStreamReader>

#include <utility>

namespace
{

bool refuse(const QString& why, QString* error)
{
    qCWarning(lcEngine).noquote() << "refused to send:" << why;
    if (error)
        *error = why;
    return false;
}

// What a text for the wire holds, as a strict reader finds it: one element and nothing else, no more than
// what XMPP allows (RFC 6120, 11.1). Empty for anything else.
struct SoleElement {
    explicit SoleElement(const QString& text)
    {
        QXmlStreamReader reader(text);
        int depth = 0;
        for (auto token = reader.readNext(); !reader.hasError() && mayStand(reader);
             token = reader.readNext()) {
            if (token == QXmlStreamReader::EndDocument)
                return;
            if (token == QXmlStreamReader::StartElement && ++depth == 1)
                take(reader);
            depth -= token == QXmlStreamReader::EndElement;
        }
        name.clear();
    }

    QString name;
    bool hasId = false;

private:
    static bool mayStand(const QXmlStreamReader& reader)
    {
        switch (reader.tokenType()) {
        case QXmlStreamReader::StartDocument:
            return reader.documentVersion().isEmpty(); // a declaration has its place at the stream's start
        case QXmlStreamReader::Comment:
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
        case QXmlStreamReader::ProcessingInstruction:
            return false;
        default:
            return true;
        }
    }
    void take(const QXmlStreamReader& reader)
    {
        name = reader.qualifiedName().toString();
        hasId = reader.attributes().hasAttribute(QLatin1String("id"));
    }
};

} // namespace

void StanzaQueue::setOwnJid(const QString& requested, const QString& bound)
{
    requested_ = requested;
    bound_ = bound;
}

bool StanzaQueue::isOwnFullJid(const QString& jid) const
{
    return !jid.isEmpty() && (jid == bound_ || jid == requested_);
}

bool StanzaQueue::sendRaw(const QString& text, QString* error)
{
    const SoleElement element(text);
    if (element.name != u"iq" && element.name != u"message" && element.name != u"presence")
        return refuse(QStringLiteral("the text is not exactly one well-formed iq, message or presence"),
                      error);
    QString out = text.trimmed();
    if (element.name == u"iq" && !element.hasId)
        out.insert(3, QStringLiteral(" id=\"brelo%1\"").arg(++nextId_));
    auto bytes = out.toUtf8();
    if (outboundSize_ + bytes.size() > mostOutbound)
        return refuse(QCoreApplication::translate("StanzaQueue", "too much waits to be sent already"), error);
    outboundSize_ += bytes.size();
    outbound_.push_back(std::move(bytes));
    wakeUp();
    return true;
}

bool StanzaQueue::sendBuilt(pugi::xml_node root, QString* error)
{
    if (std::string_view(root.name()) == "message" && isOwnFullJid(xml::attribute(root, "to"))) {
        auto document = std::make_unique<pugi::xml_document>();
        document->append_copy(root);
        deliverNext(std::make_shared<Stanza>(std::move(document)));
        return true;
    }
    // The server stamps the sender (RFC 6120, 8.1.2.1): the client's own word on it stays at home.
    pugi::xml_document wire;
    auto copy = wire.append_copy(root);
    copy.remove_attribute("from");
    return sendRaw(xml::serialised(copy), error);
}

void StanzaQueue::deliverNext(std::shared_ptr<Stanza> stanza)
{
    ahead_.push_back(std::move(stanza));
    wakeUp();
}

void StanzaQueue::deliver(std::shared_ptr<Stanza> stanza)
{
    inbound_.push_back(std::move(stanza));
    wakeUp();
}

void StanzaQueue::wakeUp() const
{
    if (wakeUp_)
        wakeUp_();
}

std::shared_ptr<Stanza> StanzaQueue::takeInbound()
{
    auto& source = ahead_.empty() ? inbound_ : ahead_;
    if (source.empty())
        return nullptr;
    auto stanza = std::move(source.front());
    source.pop_front();
    return stanza;
}

void StanzaQueue::clearInbound()
{
    ahead_.clear();
    std::erase_if(inbound_, [](const auto& stanza) { return !stanza->isReturned(); });
}

std::deque<QByteArray> StanzaQueue::takeOutbound()
{
    outboundSize_ = 0;
    return std::exchange(outbound_, {});
}

QByteArray StanzaQueue::takeFirstOutbound()
{
    auto stanza = std::move(outbound_.front());
    outbound_.pop_front();
    outboundSize_ -= stanza.size();
    return stanza;
}
