#pragma once

#include "engine/Xml.h"
#include "engine/bridge/Bridge.h"
#include "engine/bridge/TranslatorTable.h"

#include <QStringList>

// A bridge in a session of romeo@montague.example, with both its ends in hand.
class BridgeRig
{
public:
    static inline const QString server = QStringLiteral("montague.example");
    static inline const QString blocked = QStringLiteral("tybalt@capulet.example");
    static inline const QString ownBare = QStringLiteral("romeo@montague.example");

    explicit BridgeRig(std::vector<TranslatorRow> table = TranslatorTable::standard())
        : bridge_(std::move(table))
    {
        begin();
    }
    void begin()
    {
        bridge_.begin({ownBare + "/orchard", server, [](const QString& jid) { return jid == blocked; }});
    }
    // The session's first stanza goes out; the server is asked for its features.
    void meetSilentServer()
    {
        down("<iq type='get' id='roster'><query xmlns='jabber:iq:roster'/></iq>");
        takeWire();
    }
    // The same, and the question is answered.
    void meetOldServer()
    {
        meetSilentServer();
        answer(server, "disco#info", "<error code='503'/>", "error");
    }
    void meetServerOfToday(const QStringList& features = {})
    {
        meetSilentServer();
        QString content = "<identity category='server' type='im'/>";
        for (const auto& feature : features)
            content += "<feature var='" + feature + "'/>";
        answer(server, "disco#info",
               "<query xmlns='http://jabber.org/protocol/disco#info'>" + content + "</query>");
    }

    void down(const QString& stanza) { take(bridge_.down(stanza.toUtf8())); }
    void up(const QString& stanza) { take(bridge_.up(Stanza::fromXml(stanza))); }
    void tick(qint64 nowMs) { take(bridge_.tick(nowMs)); }

    // What went out since the last call.
    QStringList takeWire() { return std::exchange(wire_, {}); }
    QStringList takeUp() { return std::exchange(up_, {}); }
    // Answers the open question whose text holds `payload` and goes to `to`: `content` stands in the iq.
    // False when there is no such question.
    bool answer(const QString& to, const QString& payload, const QString& content,
                const QString& type = "result")
    {
        for (const auto& question : QStringList(questions_)) {
            if (!question.contains("to=\"" + to + '"') || !question.contains(payload))
                continue;
            const auto id = xml::attribute(xml::parsed(question)->document_element(), "id");
            questions_.removeOne(question);
            up(QString("<iq type='%1' id='%2' from='%3'>%4</iq>").arg(type, id, to, content));
            return true;
        }
        return false;
    }

private:
    void take(const BridgeOutput& out)
    {
        for (const auto& text : out.wire) {
            wire_ << QString::fromUtf8(text);
            if (wire_.last().contains("id=\"brelo-q"))
                questions_ << wire_.last();
        }
        for (const auto& stanza : out.up)
            up_ << stanza->Xml();
    }

    Bridge bridge_;
    QStringList wire_;
    QStringList up_;
    QStringList questions_;
};

// One that has met a server of today.
struct TodaysRig : BridgeRig {
    explicit TodaysRig(const QStringList& features = {}) { meetServerOfToday(features); }
};
