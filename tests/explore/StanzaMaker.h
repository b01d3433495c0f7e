#pragma once

#include "engine/Xml.h"
#include "support/Files.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>

// Makes stanzas as no decent server sends them: of the words that the client listens to, with odd addresses,
// texts, types and nesting. The same seed makes the same stanzas.
class StanzaMaker
{
public:
    explicit StanzaMaker(QRandomGenerator& random) : random_(random)
    {
        const auto file = files::read(qEnvironmentVariable("BRELO_SOURCE_DIR") + "/tests/explore/words.json");
        words_ = QJsonDocument::fromJson(file).object();
    }
    // One whole stanza, well-formed but for one in a thousand.
    QByteArray stanza()
    {
        const int kind = random_.bounded(100);
        QByteArray made = (kind < 35 ? presence() : kind < 70 ? message() : iq()).toUtf8();
        if (random_.bounded(1000) == 0)
            made.truncate(random_.bounded(int(made.size())));
        return made;
    }
    // An answer to a request that the client sent.
    QByteArray answer(const QString& request)
    {
        const auto document = xml::parsed(request);
        const auto root = document->document_element();
        const QString to = xml::attribute(root, "to");
        const bool refused = chance(25);
        const QString ns = xml::attribute(root.first_child(), "xmlns");
        QString content = chance(80) ? query(ns) : QString();
        if (ns == u"jabber:iq:conference" && chance(90))
            content += tag("name", {}, xml::escaped(text())) + tag("id", {}, xml::escaped(to + "/romeo")) +
                       tag("nick", {}, xml::escaped(text()));
        if (refused)
            content += tag("error", attribute("code", word("values")) + attribute("type", "cancel"),
                           chance(50) ? xml::escaped(text()) : element(1));
        const QString from = to.isEmpty() ? QString() : attribute("from", to);
        const auto id = attribute("id", xml::attribute(root, "id"));
        return tag("iq", attribute("type", refused ? "error" : "result") + id + from, content).toUtf8();
    }
    // A text as a person or a program might write it.
    QString text()
    {
        if (chance(3))
            return word("texts").repeated(1 + random_.bounded(300));
        return chance(20) ? word("texts") + ' ' + word("texts") : word("texts");
    }
    QString jid()
    {
        if (chance(5))
            return QString::number(random_.bounded(40)) + "@evil.example/" +
                   QString::number(random_.bounded(9));
        return chance(1) ? QString(1000, 'j') + "@montague.example" : word("jids");
    }
    bool chance(int percent) { return random_.bounded(100) < percent; }
    template <typename List>
    auto one(const List& list)
    {
        return *(std::begin(list) + random_.bounded(int(std::size(list))));
    }
    QByteArray invitation()
    {
        const QString room = chance(70) ? "verona@conference.montague.example" : jid();
        const QString x = tag("x", " xmlns='jabber:x:conference'" + attribute("jid", room), {});
        return tag("message", attribute("from", jid()), tag("body", {}, xml::escaped(text())) + x).toUtf8();
    }
    QByteArray call()
    {
        const QString link = chance(50) ? "callto:192.0.2.1+type=ip" : xml::escaped(text());
        return tag("iq", attribute("type", chance(80) ? "set" : "error") + attribute("from", jid()),
                   tag("query", " xmlns='jabber:iq:oob'", tag("url", {}, link)))
            .toUtf8();
    }
    // The server names its gateways anew.
    QByteArray services()
    {
        QString agents;
        for (int left = random_.bounded(5); left > 0; --left)
            agents +=
                tag("agent", attribute("jid", one(QStringList{"icq.montague.example", "Personal", jid()})),
                    tag("name", {}, xml::escaped(text())) + (chance(80) ? "<transport/>" : ""));
        return tag("iq", " type='set' id='push'", tag("query", " xmlns='jabber:iq:agents'", agents)).toUtf8();
    }
    // What a room says of itself and of those in it; the person's own address in it ends in "romeo".
    QByteArray ofRoom(const QString& room)
    {
        const auto occupant = [&] { return room + one(QStringList{"/romeo", "/will", "/kit", ""}); };
        QString content;
        switch (random_.bounded(3)) {
        case 0:
            for (int left = random_.bounded(1, 5); left > 0; --left)
                content += tag("user",
                               attribute("jid", occupant()) + attribute("name", text()) +
                                   (chance(20) ? " type='remove'" : ""),
                               {});
            return tag("iq", attribute("from", room) + " type='set'",
                       tag("query", " xmlns='jabber:iq:browse'", content))
                .toUtf8();
        case 1:
            return tag("presence", attribute("from", occupant()) + (chance(25) ? " type='unavailable'" : ""),
                       tag("show", {}, word("shows")))
                .toUtf8();
        default:
            content = chance(30) ? tag("subject", {}, xml::escaped(text())) : QString();
            return tag("message", attribute("from", occupant()) + " type='groupchat'",
                       content + tag("body", {}, xml::escaped(text())))
                .toUtf8();
        }
    }

private:
    static QString tag(const QString& name, const QString& attributes, const QString& content)
    {
        return '<' + name + attributes + '>' + content + "</" + name + '>';
    }
    static QString attribute(const QString& name, const QString& value)
    {
        return ' ' + name + "=\"" + xml::escaped(value) + '"';
    }
    QString word(const char* kind)
    {
        return one(words_[QLatin1String(kind)].toArray().toVariantList()).toString();
    }
    QString presence()
    {
        QString content;
        if (chance(60))
            content += tag("show", {}, word("shows"));
        if (chance(50))
            content += tag("status", {}, xml::escaped(text()));
        if (chance(20))
            content += element(1);
        const QString type = word("presence types");
        const QString asked = type.isEmpty() ? QString() : attribute("type", type);
        return tag("presence", attribute("from", jid()) + asked, content);
    }
    QString message()
    {
        QString content;
        if (chance(80))
            content += tag("body", {}, xml::escaped(text()));
        if (chance(20))
            content += tag("subject", {}, xml::escaped(text()));
        if (chance(30))
            content += tag("x", attribute("xmlns", word("namespaces")) + attributes(), element(1));
        if (chance(20))
            content += tag(word("elements"), attribute("xmlns", word("namespaces")), {});
        return tag("message",
                   attribute("from", jid()) + attribute("type", word("message types")) +
                       attribute("id", word("ids")),
                   content);
    }
    QString iq()
    {
        const QString from = chance(20) ? QString() : attribute("from", jid());
        return tag("iq", from + attribute("type", word("iq types")) + attribute("id", word("ids")),
                   chance(90) ? query(word("namespaces")) : element(2));
    }
    QString query(const QString& ns)
    {
        QString content;
        for (int left = random_.bounded(5); left > 0; --left) {
            const QString group = tag("group", {}, chance(50) ? "Friends" : xml::escaped(text()));
            content += ns == u"jabber:iq:roster" ? tag("item", attributes(), chance(70) ? group : QString())
                                                 : element(2);
        }
        return tag(ns == u"vcard-temp" ? "VCARD" : "query", attribute("xmlns", ns), content);
    }
    QString element(int depth)
    {
        const QString ns = chance(30) ? attribute("xmlns", word("namespaces")) : QString();
        QString content = chance(60) ? xml::escaped(text()) : QString();
        for (int left = depth > 0 ? random_.bounded(4) : 0; left > 0; --left)
            content += element(depth - 1);
        return tag(word("elements"), ns + attributes(), content);
    }
    QString attributes()
    {
        QString all;
        for (const auto& name : words_["attributes"].toArray().toVariantList()) {
            const bool isAddress = name == "jid" || name == "to";
            if (chance(name == "jid" ? 60 : 15))
                all += attribute(name.toString(), isAddress ? jid() : chance(70) ? word("values") : text());
        }
        return all;
    }

    QRandomGenerator& random_;
    QJsonObject words_;
};
