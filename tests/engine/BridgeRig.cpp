#include "BridgeRig.h"

#include "engine/Xml.h"

static const QString infoNamespace = "http://jabber.org/protocol/disco#info";

void BridgeRig::meetSilentServer()
{
    down("<iq type='get' id='roster'><query xmlns='jabber:iq:roster'/></iq>");
    takeWire();
}

void BridgeRig::meetOldServer()
{
    meetSilentServer();
    answer(server, infoNamespace, "<error code=\"503\"/>", "error");
}

void BridgeRig::meetServerOfToday(const QStringList& features)
{
    meetSilentServer();
    QString content = "<query xmlns=\"" + infoNamespace + "\"><identity category=\"server\" type=\"im\"/>";
    for (const auto& feature : features)
        content += "<feature var=\"" + feature + "\"/>";
    answer(server, infoNamespace, content + "</query>");
}

void BridgeRig::take(const BridgeOutput& out)
{
    for (const auto& text : out.wire) {
        wire_ << QString::fromUtf8(text);
        if (wire_.last().contains("id=\"brelo-q"))
            questions_ << wire_.last();
    }
    for (const auto& stanza : out.up)
        up_ << stanza->Xml();
}

bool BridgeRig::answer(const QString& to, const QString& payload, const QString& content, const QString& type)
{
    for (const auto& question : std::as_const(questions_)) {
        if (!question.contains("to=\"" + to + '"') || !question.contains(payload))
            continue;
        const auto id = xml::attribute(xml::parsed(question)->document_element(), "id");
        questions_.removeOne(QString(question));
        up(QString("<iq type=\"%1\" id=\"%2\" from=\"%3\">%4</iq>").arg(type, id, to, content));
        return true;
    }
    return false;
}
