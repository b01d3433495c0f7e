#include "engine/bridge/StanzaText.h"
#include "engine/bridge/queries/Queries.h"

#include <QStringList>

#include <algorithm>

namespace
{

constexpr const char* requestId = "VRX_GET_SUPPORTEDNS";
const QString adminNamespace = QStringLiteral("jabber:iq:admin");
const QString browseNamespace = QStringLiteral("jabber:iq:browse");

bool listsAdminCommands(pugi::xml_node answer)
{
    const auto items = disco::items(answer);
    return std::any_of(items.begin(), items.end(), [](const disco::Item& item) {
        return item.node.startsWith(QLatin1String("http://jabber.org/protocol/admin#"));
    });
}

// The browse by which the client learns what its server offers. The client tells an administrator by the
// namespace jabber:iq:admin, which no server of today has: it stands for an account that is one (XEP-0030,
// XEP-0133).
class SupportedNamespaces : public Translator
{
public:
    void begin(BridgeContext&) override { *this = {}; }
    bool down(const ClientStanza& stanza, BridgeContext& context) override;

private:
    void answer(const QString& from, BridgeContext& context);
    void askForRights(BridgeContext& context);
    void learntRight(bool isAdmin, BridgeContext& context);
    std::shared_ptr<Stanza> made(const QString& from, const BridgeContext& context) const;

    enum class Rights { Unknown, Asked, Known };

    Rights rights_ = Rights::Unknown;
    bool isAdmin_ = false;
    int openQuestions_ = 0;
    // Senders that the askers expect, while the rights aren't known.
    QStringList waiting_;
};

bool SupportedNamespaces::down(const ClientStanza& stanza, BridgeContext& context)
{
    const auto iq = stanza.root();
    const auto to = xml::attribute(iq, "to");
    if (!stanza::isType(iq, "get") || std::string_view(iq.attribute("id").value()) != requestId ||
        !context.home.isServer(to))
        return false;
    const auto from = to.isEmpty() ? context.home.server() : to;
    const auto passOrAnswer = [this, &context, from, text = stanza.text](const Knowledge::Service& server) {
        if (server.kind == Knowledge::Kind::OfToday && !server.info.has(browseNamespace))
            answer(from, context);
        else
            context.out.wire << text;
    };
    context.knowledge.whenKnown(context.home.server(), passOrAnswer);
    return true;
}

void SupportedNamespaces::answer(const QString& from, BridgeContext& context)
{
    if (rights_ == Rights::Known) {
        context.out.up << made(from, context);
        return;
    }
    waiting_ << from;
    if (rights_ == Rights::Unknown)
        askForRights(context);
}

void SupportedNamespaces::askForRights(BridgeContext& context)
{
    rights_ = Rights::Asked;
    openQuestions_ = 2;
    const auto aboutAccount = [this, &context](const Exchange::Answer& answer) {
        const auto info = disco::Info::read(answer.result());
        learntRight(info.hasIdentity(QStringLiteral("account"), QStringLiteral("admin")), context);
    };
    const auto aboutCommands = [this, &context](const Exchange::Answer& answer) {
        learntRight(listsAdminCommands(answer.result()), context);
    };
    const auto commands = QStringLiteral("<query xmlns=\"http://jabber.org/protocol/disco#items\" "
                                         "node=\"http://jabber.org/protocol/commands\"/>");
    context.exchange.ask({.to = context.home.ownBareJid(), .payload = disco::infoQuery}, aboutAccount);
    context.exchange.ask({.to = context.home.server(), .payload = commands}, aboutCommands);
}

void SupportedNamespaces::learntRight(bool isAdmin, BridgeContext& context)
{
    isAdmin_ = isAdmin_ || isAdmin;
    if (--openQuestions_ > 0)
        return;
    rights_ = Rights::Known;
    for (const auto& from : std::exchange(waiting_, {}))
        context.out.up << made(from, context);
}

std::shared_ptr<Stanza> SupportedNamespaces::made(const QString& from, const BridgeContext& context) const
{
    const auto features = context.knowledge.at(context.home.server()).info.features;
    QString inner;
    for (const auto& feature : features)
        inner += QStringLiteral("<ns>%1</ns>").arg(xml::escaped(feature));
    if (isAdmin_ && !features.contains(adminNamespace))
        inner += QStringLiteral("<ns>%1</ns>").arg(adminNamespace);
    return Stanza::fromXml(QStringLiteral("<iq type=\"result\" id=\"%1\" from=\"%2\">"
                                          "<query xmlns=\"jabber:iq:browse\">%3</query></iq>")
                               .arg(QLatin1String(requestId), xml::escaped(from), inner));
}

} // namespace

std::shared_ptr<Translator> queries::supportedNamespaces()
{
    return std::make_shared<SupportedNamespaces>();
}
