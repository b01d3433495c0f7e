#include "BridgeRig.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <QTest>

namespace
{

const QString browse = "<iq type=\"get\" id=\"VRX_GET_SUPPORTEDNS\" to=\"montague.example\">"
                       "<query xmlns=\"jabber:iq:browse\"></query></iq>";
const QString refused = "<error type='auth'><forbidden xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'/></error>";

QString namespaces(const QString& inner)
{
    return "<iq type=\"result\" id=\"VRX_GET_SUPPORTEDNS\" from=\"montague.example\">"
           "<query xmlns=\"jabber:iq:browse\">" +
           inner + "</query></iq>";
}

QString commands(const QString& node)
{
    return "<query xmlns='http://jabber.org/protocol/disco#items'><item jid='montague.example' node='" +
           node + "'/></query>";
}

QString account(const QString& type)
{
    return "<query xmlns='http://jabber.org/protocol/disco#info'><identity category='account' type='" + type +
           "'/></query>";
}

QString cardRequest(const QString& to)
{
    return "<iq type=\"get\" id=\"vcard_wj_3\" to=\"" + to + "\"><VCARD xmlns=\"vcard-temp\"/></iq>";
}

} // namespace

// What servers of today offer under other names: namespaces and vCards.
class BridgeServicesTest : public QObject
{
    Q_OBJECT

private slots:
    void administratorIsToldByTheServer_data()
    {
        columns<QString, QString, bool>("aboutAccount", "aboutCommands", "isAdmin");
        const QString admin = "http://jabber.org/protocol/admin#add-user";
        row("by the account", account("admin"), commands("ping"), true);
        row("by the commands", account("registered"), commands(admin), true);
        row("nobody special", account("registered"), commands("ping"), false);
        row("refused both", "", "", false);
    }

    void administratorIsToldByTheServer()
    {
        QFETCH(QString, aboutAccount);
        QFETCH(QString, aboutCommands);
        QFETCH(bool, isAdmin);
        BridgeRig rig;
        rig.meetServerOfToday({"jabber:iq:roster", "a&amp;b"});
        rig.down(browse);
        QCOMPARE(rig.takeWire().size(), 2);
        const auto reply = [&](const QString& to, const QString& payload, const QString& content) {
            return rig.answer(to, payload, content.isEmpty() ? refused : content,
                              content.isEmpty() ? "error" : "result");
        };
        QVERIFY(reply(BridgeRig::ownBare, "disco#info", aboutAccount));
        QCOMPARE(rig.takeUp(), QStringList());
        QVERIFY(reply(BridgeRig::server, "protocol/commands", aboutCommands));
        const QString admin = isAdmin ? "<ns>jabber:iq:admin</ns>" : "";
        const QStringList answer{namespaces("<ns>jabber:iq:roster</ns><ns>a&amp;b</ns>" + admin)};
        QCOMPARE(rig.takeUp(), answer);
        // The client asks after every roster push: the server isn't asked again.
        rig.takeWire();
        rig.down(browse);
        QCOMPARE(rig.takeWire(), QStringList());
        QCOMPARE(rig.takeUp(), answer);
    }

    void namespacesAreListedEvenWhenTheServerFallsSilent()
    {
        BridgeRig rig;
        rig.meetServerOfToday({"x"});
        rig.down(browse);
        rig.down(browse);
        rig.tick(0);
        rig.tick(10'000);
        QCOMPARE(rig.takeUp(), QStringList({namespaces("<ns>x</ns>"), namespaces("<ns>x</ns>")}));
    }

    void browseThatIsNotForTheServerOfTodayPasses_data()
    {
        columns<QString, QStringList>("text", "features");
        row("server that browses", browse, QStringList{"jabber:iq:browse"});
        row("another address", QString(browse).replace("montague", "capulet"), QStringList());
        row("another question", QString(browse).replace("VRX_GET_SUPPORTEDNS", "x"), QStringList());
    }

    void browseThatIsNotForTheServerOfTodayPasses()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, features);
        BridgeRig rig;
        rig.meetServerOfToday(features);
        rig.down(text);
        QCOMPARE(rig.takeWire(), QStringList{text});
    }

    void cardComesUpInTheDialect_data()
    {
        columns<QString, QString, QString>("asked", "answer", "up");
        const QString a = "juliet@capulet.example";
        const QString head = "<iq id='vcard_wj_3' type='%1'%2>";
        const QString from = " from='juliet@capulet.example'";
        const QString upHead = "<iq id=\"vcard_wj_3\" type=\"%1\" from=\"%2\">";
        const QString empty = "<VCARD xmlns=\"vcard-temp\"/></iq>";
        row("full", a,
            head.arg("result", from) +
                "<vCard "
                "xmlns='vcard-temp'><ADR><HOME/><EXTADD>1</EXTADD><CTRY>IT</CTRY></ADR><TEL><FAX/><HOME/>"
                "<NUMBER>12</NUMBER></TEL><EMAIL><INTERNET/><USERID>a@b</USERID></EMAIL><TEL>3</TEL></"
                "vCard></iq>",
            upHead.arg("result", a) +
                "<VCARD "
                "xmlns=\"vcard-temp\"><ADR><HOME/><EXTADD>1</EXTADD><COUNTRY>IT</COUNTRY></ADR><TEL><fax/>"
                "<HOME/>12</TEL><EMAIL><PREF/><INTERNET/>a@b</EMAIL><TEL><VOICE/>3</TEL></VCARD></iq>");
        row("empty card", a, head.arg("result", from) + "<vCard xmlns='vcard-temp'/></iq>",
            upHead.arg("result", a) + empty);
        row("no card", a, head.arg("result", from) + "</iq>", upHead.arg("result", a) + empty);
        row("old spelling", a, head.arg("result", from) + "<VCARD xmlns='vcard-temp'/></iq>",
            upHead.arg("result", a) + empty);
        row("error", a, head.arg("error", from) + "<error code='404'>no</error></iq>",
            upHead.arg("error", a) + "<VCARD xmlns=\"vcard-temp\"/><error code=\"404\">no</error></iq>");
        row("own, without a sender", "Romeo@montague.example", head.arg("result", "") + "</iq>",
            upHead.arg("result", "Romeo@montague.example") + empty);
    }

    void cardComesUpInTheDialect()
    {
        QFETCH(QString, asked);
        QFETCH(QString, answer);
        QFETCH(QString, up);
        BridgeRig rig;
        rig.meetServerOfToday();
        rig.takeWire();
        rig.down(cardRequest("someone@else.example"));
        rig.down(cardRequest(asked));
        const auto request = QString(cardRequest(asked)).replace("VCARD", "vCard");
        QCOMPARE(rig.takeWire().last(), request);
        // The window of a card waits for a slow server.
        rig.tick(0);
        rig.tick(60'000);
        rig.up(answer);
        QCOMPARE(rig.takeUp(), QStringList{up});
    }

    void writtenCardIsSpelledAsTheSchemaHasIt()
    {
        BridgeRig rig;
        rig.meetServerOfToday();
        rig.takeWire();
        rig.down(
            "<iq type=\"set\" id=\"JCOM_51\"><VCARD version=\"3.0\" "
            "xmlns=\"vcard-temp\"><FN>a</FN><TEL><fax/>"
            "<HOME/>12</TEL><TEL><MSG/><HOME/></TEL><ADR><HOME/><EXTADD>x</EXTADD><COUNTRY>IT</COUNTRY></ADR>"
            "<EMAIL><INTERNET/><PREF/>a@b</EMAIL></VCARD></iq>");
        QCOMPARE(
            rig.takeWire(),
            QStringList{
                "<iq type=\"set\" id=\"JCOM_51\"><vCard version=\"3.0\" xmlns=\"vcard-temp\"><FN>a</FN>"
                "<TEL><FAX/><HOME/><NUMBER>12</NUMBER></TEL><TEL><MSG/><HOME/><NUMBER/></TEL><ADR><HOME/>"
                "<EXTADD>x</EXTADD><CTRY>IT</CTRY></ADR><EMAIL><INTERNET/><PREF/><USERID>a@b</USERID>"
                "</EMAIL></vCard></iq>"});
        rig.up("<iq type=\"result\" id=\"JCOM_51\"/>");
        QCOMPARE(rig.takeUp(), QStringList{"<iq type=\"result\" id=\"JCOM_51\"/>"});
    }

    void othersQuestionsAreAnsweredHere_data()
    {
        columns<QString, QString, QString>("type", "payload", "reply");
        row("ping", "get", "<ping xmlns='urn:xmpp:ping'/>", "type=\"result\"");
        row("features", "get", "<query xmlns='http://jabber.org/protocol/disco#info'/>", "<identity ");
        row("version", "get", "<query xmlns='jabber:iq:version'/>", "<name>BreloIM</name>");
        row("card", "get", "<vCard xmlns='vcard-temp'/>", "service-unavailable");
        row("form", "set", "<query xmlns='jabber:iq:register'/>", "service-unavailable");
        row("file", "set", "<query xmlns='jabber:iq:oob'/>", "");
        row("room's list", "set", "<query xmlns='jabber:iq:browse'/>", "");
        row("file and card", "set", "<query xmlns='jabber:iq:oob'/><VCARD xmlns='vcard-temp'/>",
            "service-unavailable");
        row("nothing", "set", "", "service-unavailable");
    }

    void othersQuestionsAreAnsweredHere()
    {
        QFETCH(QString, type);
        QFETCH(QString, payload);
        QFETCH(QString, reply);
        BridgeRig rig;
        rig.meetServerOfToday();
        rig.up("<iq id='x&amp;1' from='a@b/c' type='" + type + "'>" + payload + "</iq>");
        QCOMPARE(rig.takeUp().isEmpty(), !reply.isEmpty());
        const auto wire = rig.takeWire();
        QCOMPARE(wire.isEmpty(), reply.isEmpty());
        if (reply.isEmpty())
            return;
        QVERIFY2(wire[0].contains(reply), qPrintable(wire[0]));
        QVERIFY(wire[0].contains("id=\"x&amp;1\" to=\"a@b/c\""));
    }

    void errorsGainTheirOldCodeAndAText_data()
    {
        columns<QString, QString>("error", "up");
        const QString stanzas = "xmlns=\"urn:ietf:params:xml:ns:xmpp-stanzas\"";
        row("condition only", "<error type=\"cancel\"><item-not-found " + stanzas + "/></error>",
            "<error type=\"cancel\" code=\"404\"><item-not-found " + stanzas +
                "/>There is no such address.</error>");
        row("with a text",
            "<error type=\"auth\"><forbidden " + stanzas + "/><text " + stanzas + ">no</text></error>",
            "<error type=\"auth\" code=\"403\"><forbidden " + stanzas + "/><text " + stanzas +
                ">no</text></error>");
        row("old", "<error code=\"404\">no</error>", "<error code=\"404\">no</error>");
    }

    void errorsGainTheirOldCodeAndAText()
    {
        QFETCH(QString, error);
        QFETCH(QString, up);
        for (const QString name : {"iq", "message", "presence"}) {
            BridgeRig rig;
            rig.meetServerOfToday();
            const auto whole = "<" + name + " from=\"a@b\" type=\"error\">%1</" + name + ">";
            rig.up(whole.arg(error));
            QCOMPARE(rig.takeUp(), QStringList{whole.arg(up)});
        }
    }
};

BRELO_TEST(BridgeServicesTest)
#include "BridgeServicesTest.moc"
