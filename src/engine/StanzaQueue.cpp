#include "engine/StanzaQueue.h"

#include "engine/Diagnostics.h"
#include "engine/Xml.h"

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

// The name of the one element of `document`, or empty when it holds anything beside it.
std::string_view soleElement(const pugi::xml_document& document)
{
    std::string_view name;
    for (const auto node : document.children()) {
        if (node.type() == pugi::node_element && name.empty())
            name = node.name();
        else if (node.type() != pugi::node_pcdata)
            return {};
    }
    return name;
}

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
    const auto document = xml::parsed(text);
    if (!document)
        return refuse(QStringLiteral("the stanza is not well-formed"), error);
    const auto name = soleElement(*document);
    if (name != "iq" && name != "message" && name != "presence")
        return refuse(QStringLiteral("the text is not exactly one iq, message or presence"), error);
    QString out = text.trimmed();
    if (name == "iq" && !document->document_element().attribute("id"))
        out.insert(3, QStringLiteral(" id=\"brelo%1\"").arg(++nextId_));
    outbound_.push_back(out.toUtf8());
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
    inbound_.clear();
}
