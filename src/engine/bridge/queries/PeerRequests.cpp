#include "engine/bridge/StanzaText.h"
#include "engine/bridge/queries/IqReply.h"
#include "engine/bridge/queries/Queries.h"

#include <optional>

namespace
{

bool clientHandles(std::string_view ns)
{
    return ns == "jabber:iq:roster" || ns == "jabber:iq:browse" || ns == "jabber:iq:conference" ||
           ns == "jabber:iq:oob";
}

bool goesUp(pugi::xml_node iq)
{
    if (!stanza::isType(iq, "set"))
        return false;
    bool handled = false;
    for (const auto child : iq.children()) {
        if (child.type() != pugi::node_element)
            continue;
        handled = clientHandles(xml::xmlns(child));
        if (!handled)
            break;
    }
    return handled;
}

QString features()
{
    QString text = QStringLiteral("<query xmlns=\"http://jabber.org/protocol/disco#info\">"
                                  "<identity category=\"client\" type=\"pc\" name=\"BreloIM\"/>");
    for (const auto* name :
         {"http://jabber.org/protocol/disco#info", "http://jabber.org/protocol/chatstates",
          "jabber:iq:version", "jabber:x:conference", "urn:xmpp:ping", "urn:xmpp:receipts"})
        text += QStringLiteral("<feature var=\"%1\"/>").arg(QLatin1String(name));
    return text + QStringLiteral("</query>");
}

// What a get is answered with; none for a question that this client doesn't know.
std::optional<QString> answer(pugi::xml_node iq)
{
    if (!stanza::isType(iq, "get"))
        return std::nullopt;
    if (stanza::child(iq, "urn:xmpp:ping"))
        return QString();
    if (stanza::child(iq, "http://jabber.org/protocol/disco#info"))
        return features();
    if (stanza::child(iq, "jabber:iq:version"))
        return QStringLiteral(
                   "<query xmlns=\"jabber:iq:version\"><name>BreloIM</name><version>%1</version></query>")
            .arg(QLatin1String(BRELO_VERSION));
    return std::nullopt;
}

// Questions that servers and other clients ask this one (RFC 6120, 8.2.3: each needs an answer): ping
// (XEP-0199), features (XEP-0030), version (XEP-0092). What the client itself handles goes up; the rest is
// declined here, since the client takes a card or a form for the answer to a question of its own. Whoever may
// not see the own presence learns nothing.
class PeerRequests : public Translator
{
public:
    bool up(std::shared_ptr<Stanza>& stanza, BridgeContext& context) override
    {
        const auto iq = stanza->root();
        const auto from = stanza->From();
        const bool isKnown = context.audience.includes(from, context.home);
        if (goesUp(iq) && (isKnown || !context.audience.isBlocked(from)))
            return false;
        if (!isKnown) {
            context.out.wire << reply::absent(iq);
            return true;
        }
        const auto payload = answer(iq);
        context.out.wire << (payload ? reply::result(iq, *payload) : reply::unavailable(iq));
        return true;
    }
};

} // namespace

std::shared_ptr<Translator> queries::peerRequests()
{
    return std::make_shared<PeerRequests>();
}
