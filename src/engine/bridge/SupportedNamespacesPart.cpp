#include "engine/bridge/SupportedNamespacesPart.h"

#include "engine/bridge/StanzaText.h"

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

} // namespace

void SupportedNamespacesPart::begin()
{
    *this = {};
}

bool SupportedNamespacesPart::down(const ClientStanza& stanza, BridgeState& state, BridgeOutput& out)
{
    const auto iq = stanza.root;
    if (!stanza::is(iq, "iq") || !stanza::isType(iq, "get") ||
        std::string_view(iq.attribute("id").value()) != requestId || !stanza::child(iq, "jabber:iq:browse"))
        return false;
    const auto to = xml::attribute(iq, "to");
    if (!state.home.isServer(to))
        return false;
    const auto passOrAnswer = [this, &state, to, text = stanza.text](BridgeOutput& next) {
        if (state.knowledge.isOfToday() && !state.knowledge.info().has(browseNamespace))
            answer(to.isEmpty() ? state.server : to, state, next);
        else
            next.wire << text;
    };
    state.knowledge.whenKnown(passOrAnswer, out);
    return true;
}

void SupportedNamespacesPart::answer(const QString& from, BridgeState& state, BridgeOutput& out)
{
    if (rights_ == Rights::Known) {
        out.up << made(from, state.knowledge.info().features);
        return;
    }
    waiting_ << from;
    if (rights_ == Rights::Unknown)
        askForRights(state, out);
}

void SupportedNamespacesPart::askForRights(BridgeState& state, BridgeOutput& out)
{
    rights_ = Rights::Asked;
    openQuestions_ = 2;
    const auto aboutAccount = [this, &state](pugi::xml_node result, BridgeOutput& next) {
        learntRight(disco::Info::read(result).hasIdentity(QStringLiteral("account"), QStringLiteral("admin")),
                    state, next);
    };
    const auto aboutCommands = [this, &state](pugi::xml_node result, BridgeOutput& next) {
        learntRight(listsAdminCommands(result), state, next);
    };
    const auto commands = QStringLiteral("<query xmlns=\"http://jabber.org/protocol/disco#items\" "
                                         "node=\"http://jabber.org/protocol/commands\"/>");
    state.requests.ask(state.ownBareJid, disco::infoQuery, aboutAccount, out);
    state.requests.ask(state.server, commands, aboutCommands, out);
}

void SupportedNamespacesPart::learntRight(bool isAdmin, BridgeState& state, BridgeOutput& out)
{
    isAdmin_ = isAdmin_ || isAdmin;
    if (--openQuestions_ > 0)
        return;
    rights_ = Rights::Known;
    for (const auto& from : std::exchange(waiting_, {}))
        out.up << made(from, state.knowledge.info().features);
}

std::shared_ptr<Stanza> SupportedNamespacesPart::made(const QString& from, const QStringList& features) const
{
    QString inner;
    for (const auto& feature : features)
        inner += QStringLiteral("<ns>%1</ns>").arg(xml::escaped(feature));
    if (isAdmin_ && !features.contains(adminNamespace))
        inner += QStringLiteral("<ns>%1</ns>").arg(adminNamespace);
    return Stanza::fromXml(QStringLiteral("<iq type=\"result\" id=\"%1\" from=\"%2\">"
                                          "<query xmlns=\"jabber:iq:browse\">%3</query></iq>")
                               .arg(QLatin1String(requestId), xml::escaped(from), inner));
}
