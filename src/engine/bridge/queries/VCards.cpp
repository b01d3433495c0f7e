#include "engine/bridge/StanzaText.h"
#include "engine/bridge/queries/OwnCard.h"
#include "engine/bridge/queries/Queries.h"
#include "engine/bridge/queries/VCardNames.h"

#include <QCryptographicHash>

namespace
{

constexpr const char* cardNamespace = "vcard-temp";

constexpr const char* copyNamespace = "brelo:card";

const QString cardQuery = QStringLiteral("<vCard xmlns=\"vcard-temp\"/>");
const QString copyQuery =
    QStringLiteral("<query xmlns=\"jabber:iq:private\"><card xmlns=\"brelo:card\"/></query>");

pugi::xml_node cardOf(const std::shared_ptr<Stanza>& iq)
{
    return iq ? stanza::child(iq->root(), cardNamespace) : pugi::xml_node();
}

// A server's card as it stands, in a few letters.
QString fingerprint(pugi::xml_node card)
{
    const auto text = xml::serialised(card).toUtf8();
    return QString::fromLatin1(QCryptographicHash::hash(text, QCryptographicHash::Sha1).toHex());
}

// vcard-temp (XEP-0054): the dialect writes VCARD where the wire of today has vCard, and three of its element
// names differ. An old server would take the one for the other's absence, so the server's kind decides.
//
// Of the own card the client's part isn't all there is. What other programs put there is sent along with each
// change. What the server itself drops is kept in a copy in the account's private storage (XEP-0049), which
// holds as long as the card on the server is the one that this change left there.
class VCards : public Translator
{
public:
    void begin(BridgeContext&) override { own_ = {}; }
    bool down(const ClientStanza& stanza, BridgeContext& context) override;

private:
    // In the dialect: what the server has, and the client's card of which that is what was left.
    struct OwnCard {
        bool isKnown = false;
        std::shared_ptr<Stanza> server;
        std::shared_ptr<Stanza> copy;
    };

    void translate(const ClientStanza& stanza, BridgeContext& context);
    void learnOwn(const std::shared_ptr<Stanza>& server, const std::function<void()>& learnt,
                  BridgeContext& context);
    void save(const ClientStanza& stanza, BridgeContext& context);
    void send(const ClientStanza& stanza, BridgeContext& context);
    static void keepCopy(const ClientStanza& stanza, const QString& sent, BridgeContext& context);
    static std::shared_ptr<Stanza> inDialect(pugi::xml_node iq, const QString& address);

    OwnCard own_;
};

bool VCards::down(const ClientStanza& stanza, BridgeContext& context)
{
    if (!stanza::child(stanza.root(), cardNamespace, "VCARD"))
        return false;
    context.knowledge.whenKnown(context.home.server(),
                                [this, stanza, &context](const Knowledge::Service& server) {
                                    if (server.kind == Knowledge::Kind::OfToday)
                                        translate(stanza, context);
                                    else
                                        context.out.wire << stanza.text;
                                });
    return true;
}

// The window of a card waits as long as a foreign server takes.
void VCards::translate(const ClientStanza& stanza, BridgeContext& context)
{
    const auto iq = stanza.root();
    if (!stanza::isType(iq, "get"))
        return save(stanza, context);
    const auto to = xml::attribute(iq, "to");
    const auto address = to.isEmpty() ? context.home.ownBareJid() : to;
    const bool isOwn = context.home.key(address).isEmpty() && !context.home.isServer(address);
    const auto answered = [this, address, isOwn, &context](const Exchange::Answer& answer) {
        const auto made = inDialect(answer.stanza->root(), address);
        if (!isOwn || !cardOf(answer.stanza)) {
            context.out.up << made;
            return;
        }
        learnOwn(
            answer.stanza,
            [this, made, &context] {
                context.out.up << stanza::changed(made->root(), [this](pugi::xml_node copy) {
                    if (!own_.copy)
                        return;
                    copy.remove_child("VCARD");
                    copy.append_copy(cardOf(own_.copy));
                });
            },
            context);
    };
    const auto text = stanza::changedText(
        iq, [](pugi::xml_node copy) { vcard::toWire(stanza::child(copy, cardNamespace, "VCARD")); });
    context.exchange.forward(text, iq, answered, std::nullopt);
}

void VCards::learnOwn(const std::shared_ptr<Stanza>& server, const std::function<void()>& learnt,
                      BridgeContext& context)
{
    own_ = {true, inDialect(server->root(), context.home.ownBareJid()), nullptr};
    if (!cardOf(server).first_child())
        return learnt();
    const auto mark = fingerprint(cardOf(server));
    const auto answered = [this, mark, learnt](const Exchange::Answer& answer) {
        const auto copy = stanza::child(answer.result().child("query"), copyNamespace, "card");
        if (copy.first_child() && mark == xml::attribute(copy, "of"))
            own_.copy =
                Stanza::fromXml(QStringLiteral("<iq>%1</iq>").arg(xml::serialised(copy.first_child())));
        learnt();
    };
    context.exchange.ask({.to = {}, .payload = copyQuery}, answered);
}

void VCards::save(const ClientStanza& stanza, BridgeContext& context)
{
    if (own_.isKnown)
        return send(stanza, context);
    context.exchange.ask({.to = {}, .payload = cardQuery}, [this, stanza, &context](const auto& answer) {
        const auto go = [this, stanza, &context] { send(stanza, context); };
        if (answer.isResult())
            learnOwn(answer.stanza, go, context);
        else if (answer.stanza)
            go();
        else // Who knows what would be lost.
            context.out.up << Stanza::fromXml(
                QStringLiteral("<iq type=\"error\" id=\"%1\"><error code=\"%2\">%3</error></iq>")
                    .arg(xml::escaped(xml::attribute(stanza.root(), "id")))
                    .arg(answer.error.code)
                    .arg(xml::escaped(answer.error.sentence())));
    });
}

void VCards::send(const ClientStanza& stanza, BridgeContext& context)
{
    QString sent;
    const auto text = stanza::changedText(stanza.root(), [&](pugi::xml_node copy) {
        auto card = stanza::child(copy, cardNamespace, "VCARD");
        owncard::addUnknown(card, cardOf(own_.server), cardOf(own_.copy));
        vcard::toWire(card);
        sent = fingerprint(card);
    });
    const auto answered = [this, stanza, sent, &context](const Exchange::Answer& answer) {
        context.out.up << answer.stanza;
        if (answer.isResult())
            keepCopy(stanza, sent, context);
    };
    own_ = {};
    context.exchange.forward(text, stanza.root(), answered, std::nullopt);
}

// Looks at what the server has made of the card that was sent.
void VCards::keepCopy(const ClientStanza& stanza, const QString& sent, BridgeContext& context)
{
    const auto answered = [stanza, sent, &context](const Exchange::Answer& answer) {
        const auto left = answer.isResult() ? cardOf(answer.stanza) : pugi::xml_node();
        if (!left || fingerprint(left) == sent)
            return;
        const auto card = xml::serialised(stanza::child(stanza.root(), cardNamespace, "VCARD"));
        const auto copy = QString(copyQuery).replace(QLatin1String("/></query>"),
                                                     QStringLiteral(" of=\"%1\">").arg(fingerprint(left)) +
                                                         card + QStringLiteral("</card></query>"));
        context.exchange.ask({.to = {}, .payload = copy, .type = "set"}, [](const Exchange::Answer&) {});
    };
    context.exchange.ask({.to = {}, .payload = cardQuery}, answered);
}

// The client finds the window of a card by its sender, and by the element that an error may lack.
std::shared_ptr<Stanza> VCards::inDialect(pugi::xml_node iq, const QString& address)
{
    return stanza::changed(iq, [&](pugi::xml_node copy) {
        stanza::setAttribute(copy, "from", address);
        if (const auto card = stanza::child(copy, cardNamespace)) {
            vcard::toDialect(card);
            // The client would show each one of a hundred thousand.
            for (auto other = card.next_sibling(); other;) {
                const auto next = other.next_sibling();
                if (xml::xmlns(other) == cardNamespace)
                    copy.remove_child(other);
                other = next;
            }
        } else
            copy.prepend_child("VCARD").append_attribute("xmlns") = cardNamespace;
    });
}

} // namespace

std::shared_ptr<Translator> queries::vCards()
{
    return std::make_shared<VCards>();
}
