#include "engine/bridge/StanzaText.h"
#include "engine/bridge/messages/Messages.h"

#include <QDateTime>

namespace
{

bool hasText(pugi::xml_node element)
{
    const auto isText = [](pugi::xml_node node) {
        return (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) && *node.value();
    };
    return bool(element.find_node(isText));
}

// An emptied room subject is news; elsewhere an empty one is nothing.
bool hasContent(pugi::xml_node message)
{
    const auto subject = message.child("subject");
    return hasText(message.child("body")) || hasText(subject) ||
           (subject && stanza::isType(message, "groupchat"));
}

// Types that a person's client sends to a person.
bool isPersonal(pugi::xml_node message)
{
    return stanza::isType(message, "chat") || stanza::isType(message, "normal") ||
           stanza::isType(message, "");
}

bool isDelayed(pugi::xml_node message)
{
    return stanza::child(message, ns::delay) || stanza::child(message, ns::oldDelay);
}

// Of the events of the dialect the client knows typing; it takes any other for it.
bool isOldTyping(pugi::xml_node message)
{
    return bool(stanza::child(message, ns::event, "x").child("composing"));
}

// Typing that ended without a message.
bool isOldStop(pugi::xml_node message)
{
    const auto event = stanza::child(message, ns::event, "x");
    const auto isNews = [](pugi::xml_node child) { return std::string_view(child.name()) != "id"; };
    return event && !event.find_child(isNews);
}

bool isStop(pugi::xml_node message)
{
    const auto isState = [](pugi::xml_node child) { return xml::xmlns(child) == ns::chatStates; };
    return message.find_child(isState) && !stanza::child(message, ns::chatStates, "composing");
}

// XEP-0203's time as jabber:x:delay writes it, in UTC; empty when it isn't a time.
QString oldStamp(pugi::xml_node delay)
{
    const auto time = QDateTime::fromString(xml::attribute(delay, "stamp"), Qt::ISODateWithMs);
    return time.isValid() ? time.toUTC().toString(QStringLiteral("yyyyMMdd'T'HH:mm:ss")) : QString();
}

std::shared_ptr<Stanza> withOldDelay(pugi::xml_node message, pugi::xml_node delay)
{
    const auto stamp = oldStamp(delay);
    if (stamp.isEmpty())
        return nullptr;
    return stanza::changed(message, [&](pugi::xml_node copy) {
        auto x = stanza::appendChild(copy, "x", ns::oldDelay);
        if (delay.attribute("from"))
            stanza::setAttribute(x, "from", xml::attribute(delay, "from"));
        stanza::setAttribute(x, "stamp", stamp);
    });
}

void answerReceipt(pugi::xml_node message, BridgeContext& context)
{
    const auto id = xml::attribute(message, "id");
    if (id.isEmpty() || !isPersonal(message) || !stanza::child(message, ns::receipts, "request") ||
        !context.audience.includes(xml::attribute(message, "from"), context.home))
        return;
    const auto type = message.attribute("type")
                          ? QStringLiteral(" type=\"%1\"").arg(xml::attribute(message, "type"))
                          : QString();
    context.out.wire
        << QStringLiteral("<message to=\"%1\"%2><received xmlns=\"urn:xmpp:receipts\" id=\"%3\"/></message>")
               .arg(xml::escaped(xml::attribute(message, "from")), type, xml::escaped(id))
               .toUtf8();
}

// The event of a chat state: typing, or the end of it.
std::shared_ptr<Stanza> typingEvent(pugi::xml_node message, bool stops)
{
    auto document = std::make_unique<pugi::xml_document>();
    auto copy = document->append_child("message");
    for (const auto attribute : message.attributes())
        copy.append_copy(attribute);
    stanza::setAttribute(copy, "type", QStringLiteral("chat"));
    stanza::appendChild(copy, "x", ns::event).append_child(stops ? "id" : "composing");
    return std::make_shared<Stanza>(std::move(document));
}

// What people write from clients of today: typing (XEP-0085) becomes the event of the dialect, receipts
// (XEP-0184) are answered, delays (XEP-0203) gain their old form, and messages that only carry signals stay
// in the engine, since the client would open a window with an empty line.
class InboundMessages : public Translator
{
public:
    bool up(std::shared_ptr<Stanza>& stanza, BridgeContext& context) override;
};

bool InboundMessages::up(std::shared_ptr<Stanza>& stanza, BridgeContext& context)
{
    const auto message = stanza->root();
    if (stanza::isType(message, "error"))
        return false;
    if (hasContent(message)) {
        answerReceipt(message, context);
        const auto delay = stanza::child(message, ns::delay, "delay");
        if (auto stamped =
                delay && !stanza::child(message, ns::oldDelay) ? withOldDelay(message, delay) : nullptr)
            stanza = std::move(stamped);
        return false;
    }
    if (!isPersonal(message) || isDelayed(message))
        return true;
    if (isOldTyping(message) || isOldStop(message))
        return false;
    const bool stops = isStop(message);
    if (stops || stanza::child(message, ns::chatStates, "composing"))
        context.out.up << typingEvent(message, stops);
    return true;
}

} // namespace

std::shared_ptr<Translator> messages::inbound()
{
    return std::make_shared<InboundMessages>();
}
