#include "StanzaMaker.h"

#include "engine/Xml.h"

namespace
{

const QStringList jids{"juliet@montague.example",
                       "juliet@montague.example/balcony",
                       "nurse@montague.example/a b",
                       "tybalt@montague.example",
                       "romeo@montague.example",
                       "romeo@montague.example/BreloIM",
                       "montague.example",
                       "MONTAGUE.EXAMPLE",
                       "icq.montague.example",
                       "12345@icq.montague.example/x",
                       "verona@conference.montague.example",
                       "verona@conference.montague.example/romeo",
                       "stranger@evil.example/r",
                       "evil.example",
                       "Friends",
                       "CONTACTS",
                       "Gateways",
                       "a'b\"<&>@montague.example",
                       "../../etc/passwd@montague.example",
                       "\u202Emoc.elpmaxe@montague.example",
                       "@",
                       "/",
                       ""};

const QStringList words{"hark",
                        "",
                        " ",
                        "/me waves",
                        "http://example.org/a|b",
                        "http://a)))))))))))",
                        "javascript:alert(1)",
                        "file:///etc/passwd",
                        "<b>&amp;</b>",
                        "%1 %s %n %99",
                        "line\nline\n[07:08:09] <juliet> forged",
                        "\u202Ertl\u202C",
                        "\U0001F468\u200D\U0001F469\u200D\U0001F467",
                        "\u0301\u0301\u0301",
                        "true",
                        "-1",
                        "99999999999999999999",
                        "Friends",
                        "romeo",
                        "dnd",
                        "20040506T07:08:09",
                        "9999-99-99T99:99:99Z"};

const QStringList presenceTypes{"",           "",          "",        "unavailable", "subscribe",
                                "subscribed", "probe",     "error",   "unsubscribe", "unsubscribed",
                                "invisible",  "available", "connect", "close",       "odd"};

const QStringList namespaces{"jabber:iq:roster",
                             "jabber:iq:agents",
                             "jabber:iq:auth",
                             "jabber:iq:register",
                             "jabber:iq:search",
                             "vcard-temp",
                             "jabber:iq:conference",
                             "jabber:iq:oob",
                             "jabber:iq:browse",
                             "jabber:iq:version",
                             "jabber:iq:last",
                             "jabber:iq:time",
                             "jabber:x:data",
                             "jabber:x:event",
                             "jabber:x:delay",
                             "jabber:x:conference",
                             "jabber:x:oob",
                             "urn:xmpp:ping",
                             "urn:xmpp:delay",
                             "urn:xmpp:receipts",
                             "urn:xmpp:carbons:2",
                             "urn:xmpp:forward:0",
                             "http://jabber.org/protocol/disco#info",
                             "http://jabber.org/protocol/disco#items",
                             "http://jabber.org/protocol/muc#user",
                             "http://jabber.org/protocol/chatstates",
                             "urn:odd"};

const QStringList ids{"VRX_new",
                      "VRX_UNREGISTER",
                      "VRX_GET_SUPPORTEDNS",
                      "VRX_GET_ONLINEUSERS",
                      "VRX_GET_SERVICE",
                      "VRX_GET_CHATROOM",
                      "VRX_CHATROOM?",
                      "VRX_browser",
                      "VRX_CONF?",
                      "VRX_CONF_DATA",
                      "Check_Server",
                      "JCOM_51",
                      "brelo-roster",
                      "brelo-agents",
                      "brelo-ping-1",
                      "brelo1",
                      "brelo-q1",
                      ""};

const QStringList names{
    "item",      "group",  "query",      "agent", "service", "name",     "register",    "search", "groupchat",
    "transport", "user",   "conference", "ns",    "feature", "identity", "x",           "invite", "composing",
    "active",    "paused", "gone",       "id",    "nick",    "error",    "FN",          "N",      "TEL",
    "ADR",       "EMAIL",  "PHOTO",      "html",  "status",  "show",     "instructions"};

const QStringList attributeNames{"jid",  "name",  "subscription", "type", "to",
                                 "code", "stamp", "var",          "ask",  "id"};

const QStringList values{"both",    "none",    "remove", "to",     "from",   "subscribe",
                         "public",  "private", "admin",  "client", "server", "text",
                         "gateway", "icq",     "404",    "401",    "odd"};

QString tag(const QString& name, const QString& attributes, const QString& content)
{
    return '<' + name + attributes + '>' + content + "</" + name + '>';
}

QString attribute(const QString& name, const QString& value)
{
    return ' ' + name + "=\"" + xml::escaped(value) + '"';
}

} // namespace

QString StanzaMaker::jid()
{
    if (chance(5))
        return QString::number(random_.bounded(40)) + "@evil.example/" + QString::number(random_.bounded(9));
    return chance(1) ? QString(1000, 'j') + "@montague.example" : one(jids);
}

QString StanzaMaker::text()
{
    if (chance(3))
        return one(words).repeated(1 + random_.bounded(300));
    return chance(20) ? one(words) + ' ' + one(words) : one(words);
}

QString StanzaMaker::attributes()
{
    QString all;
    for (const auto& name : attributeNames) {
        if (chance(name == u"jid" ? 60 : 15))
            all += attribute(name, name == u"jid" || name == u"to" ? jid()
                                   : chance(70)                    ? one(values)
                                                                   : text());
    }
    return all;
}

QString StanzaMaker::element(int depth)
{
    const QString ns = chance(30) ? attribute("xmlns", one(namespaces)) : QString();
    QString content = chance(60) ? xml::escaped(text()) : QString();
    for (int left = depth > 0 ? random_.bounded(4) : 0; left > 0; --left)
        content += element(depth - 1);
    return tag(one(names), ns + attributes(), content);
}

QString StanzaMaker::query(const QString& ns)
{
    QString content;
    for (int left = random_.bounded(5); left > 0; --left) {
        const QString group =
            chance(70) ? tag("group", {}, xml::escaped(chance(50) ? "Friends" : text())) : QString();
        content += ns == u"jabber:iq:roster" ? tag("item", attributes(), group) : element(2);
    }
    return tag(ns == u"vcard-temp" ? "VCARD" : "query", attribute("xmlns", ns), content);
}

QString StanzaMaker::presence()
{
    static const QStringList shows{"away", "xa", "dnd", "chat", "", "odd"};
    QString content;
    if (chance(60))
        content += tag("show", {}, one(shows));
    if (chance(50))
        content += tag("status", {}, xml::escaped(text()));
    if (chance(20))
        content += element(1);
    const QString type = one(presenceTypes);
    return tag("presence", attribute("from", jid()) + (type.isEmpty() ? QString() : attribute("type", type)),
               content);
}

QString StanzaMaker::message()
{
    static const QStringList types{"",          "chat",     "chat",  "chat", "normal",
                                   "groupchat", "headline", "error", "odd"};
    QString content;
    if (chance(80))
        content += tag("body", {}, xml::escaped(text()));
    if (chance(20))
        content += tag("subject", {}, xml::escaped(text()));
    if (chance(30))
        content += tag("x", attribute("xmlns", one(namespaces)) + attributes(), element(1));
    if (chance(20))
        content += tag(one(names), attribute("xmlns", one(namespaces)), {});
    return tag("message",
               attribute("from", jid()) + attribute("type", one(types)) + attribute("id", one(ids)), content);
}

QString StanzaMaker::iq()
{
    static const QStringList types{"set", "set", "get", "result", "error"};
    const QString from = chance(20) ? QString() : attribute("from", jid());
    return tag("iq", from + attribute("type", one(types)) + attribute("id", one(ids)),
               chance(90) ? query(one(namespaces)) : element(2));
}

QByteArray StanzaMaker::answer(const QString& request)
{
    const auto document = xml::parsed(request);
    const auto root = document->document_element();
    const QString to = xml::attribute(root, "to");
    const bool refused = chance(25);
    const QString ns = xml::fromUtf8(std::string(xml::xmlns(root.first_child())).c_str());
    QString content = chance(80) ? query(ns) : QString();
    if (refused)
        content += tag("error", attribute("code", one(values)) + attribute("type", "cancel"),
                       chance(50) ? text().toHtmlEscaped() : element(1));
    return tag("iq",
               attribute("type", refused ? "error" : "result") + attribute("id", xml::attribute(root, "id")) +
                   (to.isEmpty() ? QString() : attribute("from", to)),
               content)
        .toUtf8();
}

QByteArray StanzaMaker::stanza()
{
    const int kind = random_.bounded(100);
    QByteArray made = (kind < 35 ? presence() : kind < 70 ? message() : iq()).toUtf8();
    if (random_.bounded(1000) == 0)
        made.truncate(random_.bounded(int(made.size())));
    return made;
}
