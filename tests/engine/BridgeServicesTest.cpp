#include "BridgeRig.h"
#include "support/Table.h"
#include "support/TestRunner.h"

const QString browse = "<iq type=\"get\" id=\"VRX_GET_SUPPORTEDNS\" to=\"montague.example\">"
                       "<query xmlns=\"jabber:iq:browse\"></query></iq>";

// What servers of today offer under other names: namespaces and vCards.
class BridgeServicesTest : public QObject
{
    Q_OBJECT

    static QString namespaces(const QString& inner)
    {
        return R"(<iq type="result" id="VRX_GET_SUPPORTEDNS" from="montague.example">)"
               "<query xmlns=\"jabber:iq:browse\">" +
               inner + "</query></iq>";
    }
    static QString cardRequest(const QString& to)
    {
        return "<iq type=\"get\" id=\"vcard_wj_3\" to=\"" + to + "\"><VCARD xmlns=\"vcard-temp\"/></iq>";
    }
    // Answers the last request with this content.
    static void reply(BridgeRig& rig, const QString& payload, const QString& content, bool isError = false)
    {
        const auto wire = rig.takeWire();
        QVERIFY2(wire.size() == 1 && wire[0].contains(payload),
                 qPrintable(wire.join('|') + " for " + payload));
        const auto id = wire[0].section("id=\"", 1).section('"', 0, 0);
        rig.up(QString("<iq type='%1' id='%2'>%3</iq>").arg(isError ? "error" : "result", id, content));
    }
    static QString card(const QString& inner, const QString& name = "VCARD")
    {
        return '<' + name + " xmlns=\"vcard-temp\">" + inner + "</" + name + '>';
    }
    static QString iq(const QString& type, const QString& inner)
    {
        return "<iq type=\"" + type + "\" id=\"JCOM_51\">" + inner + "</iq>";
    }

private slots:
    void administratorIsToldByTheServer_data()
    {
        columns<QString, QString, bool>("aboutAccount", "aboutCommands", "isAdmin");
        const QString disco = "<query xmlns='http://jabber.org/protocol/disco#";
        const QString refused = "<error type='auth'/>";
        const QString account = disco + "info'><identity category='account' type='%1'/></query>";
        const QString command = disco + "items'><item jid='montague.example' node='%1'/></query>";
        const QString admin = command.arg("http://jabber.org/protocol/admin#add-user");
        row("by the account", account.arg("admin"), command.arg("ping"), true);
        row("by the commands", account.arg("registered"), admin, true);
        row("nobody special", account.arg("registered"), command.arg("ping"), false);
        row("refused both", refused, refused, false);
    }
    void administratorIsToldByTheServer()
    {
        const auto [aboutAccount, aboutCommands, isAdmin] = fetched<QString, QString, bool>();
        TodaysRig rig({"jabber:iq:roster", "a&amp;b"});
        rig.down(browse);
        QCOMPARE(rig.takeWire().size(), 2);
        const auto reply = [&](const QString& to, const QString& payload, const QString& content) {
            return rig.answer(to, payload, content, content.startsWith("<error") ? "error" : "result");
        };
        QVERIFY(reply(rig.ownBare, "disco#info", aboutAccount));
        QCOMPARE(rig.takeUp(), QStringList());
        QVERIFY(reply(rig.server, "protocol/commands", aboutCommands));
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
        TodaysRig rig({"x"});
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
        const auto [text, features] = fetched<QString, QStringList>();
        TodaysRig rig(features);
        rig.down(text);
        QCOMPARE(rig.takeWire(), QStringList{text});
    }

    void cardComesUpInTheDialect_data()
    {
        columns<QString, QString, QString, QString>("type", "from", "content", "up");
        const QString juliet = "juliet@capulet.example", empty = "<VCARD xmlns=\"vcard-temp\"/>";
        row("full", "result", juliet,
            "<vCard xmlns='vcard-temp'><ADR><HOME/><EXTADD>1</EXTADD><CTRY>IT</CTRY></ADR><TEL><FAX/><HOME/>"
            "<NUMBER>12</NUMBER></TEL><EMAIL><INTERNET/><USERID>a@b</USERID></EMAIL><TEL>3</TEL></vCard>",
            R"(<VCARD xmlns="vcard-temp"><ADR><HOME/><EXTADD>1</EXTADD><COUNTRY>IT</COUNTRY></ADR><TEL>)"
            "<fax/><HOME/>12</TEL><EMAIL><PREF/><INTERNET/>a@b</EMAIL><TEL><VOICE/>3</TEL></VCARD>");
        row("empty card", "result", juliet, "<vCard xmlns='vcard-temp'/>", empty);
        row("no card", "result", juliet, "", empty);
        row("old spelling", "result", juliet, "<VCARD xmlns='vcard-temp'/>", empty);
        row("many cards", "result", juliet, "<vCard xmlns='vcard-temp'/><VCARD xmlns='vcard-temp'/><a/>",
            empty + "<a/>");
        row("error", "error", juliet, "<error code='404'>no</error>",
            empty + "<error code=\"404\">no</error>");
        row("own, without a sender", "result", "", "", empty);
    }
    void cardComesUpInTheDialect()
    {
        const auto [type, from, content, up] = fetched<QString, QString, QString, QString>();
        const auto asked = from.isEmpty() ? "Romeo@montague.example" : from;
        TodaysRig rig;
        rig.down(cardRequest("someone@else.example"));
        rig.down(cardRequest(asked));
        QCOMPARE(rig.takeWire().last(), cardRequest(asked).replace("VCARD", "vCard"));
        // The window of a card waits for a slow server.
        rig.tick(0);
        rig.tick(60'000);
        const auto sender = from.isEmpty() ? "" : " from='" + from + '\'';
        rig.up("<iq id='vcard_wj_3' type='" + type + '\'' + sender + '>' + content + "</iq>");
        const QString answer = R"(<iq id="vcard_wj_3" type="%1" from="%2">%3</iq>)";
        QCOMPARE(rig.takeUp(), QStringList{answer.arg(type, asked, up)});
    }

    void othersPartsOfTheOwnCardStay_data()
    {
        columns<QString, QString, QString>("server", "sent", "wire");
        const QString tel = "<TEL><VOICE/><HOME/><NUMBER>%1</NUMBER></TEL>",
                      cell = "<TEL><CELL/><NUMBER>9</NUMBER></TEL>";
        const QString org = "<ORG><ORGNAME>%1</ORGNAME><ORGUNIT>%2</ORGUNIT>",
                      second = "<ORGUNIT>2</ORGUNIT></ORG>";
        const QString photo = "<PHOTO><BINVAL>AA</BINVAL></PHOTO>";
        row("picture", photo, "<FN>a</FN>", "<FN>a</FN>" + photo);
        row("further number", tel.arg(1) + cell + tel.arg(2), "<TEL><VOICE/><HOME/>3</TEL>",
            tel.arg(3) + cell + tel.arg(2));
        row("cleared", "<FN>x</FN>" + tel.arg(1), "<FN/><TEL><VOICE/><HOME/></TEL>",
            "<FN/><TEL><VOICE/><HOME/><NUMBER/></TEL>");
        row("parts", "<N><PREFIX>Dr</PREFIX><GIVEN>x</GIVEN></N>" + org.arg("x", "1") + second,
            "<N><GIVEN>y</GIVEN></N>" + org.arg("y", "z") + "</ORG>",
            "<N><GIVEN>y</GIVEN><PREFIX>Dr</PREFIX></N>" + org.arg("y", "z") + second);
        row("empty", "", "<FN>a</FN>", "<FN>a</FN>");
    }
    void othersPartsOfTheOwnCardStay()
    {
        const auto [server, sent, wire] = fetched<QString, QString, QString>();
        const auto goesOut = [&](BridgeRig& rig) {
            const auto last = rig.takeWire();
            QCOMPARE(last, QStringList{iq("set", card(wire, "vCard"))});
        };
        TodaysRig silent;
        silent.down(iq("set", card(sent)));
        silent.takeWire();
        silent.tick(0);
        silent.tick(10'000);
        QVERIFY(silent.takeUp().value(0).contains("code=\"504\"") && silent.takeWire().isEmpty());
        TodaysRig unread;
        unread.down(iq("set", card(sent)));
        reply(unread, "<vCard", card(server, "vCard"));
        if (!server.isEmpty())
            reply(unread, "iq:private", "<error code='503'/>", true);
        goesOut(unread);
        TodaysRig read;
        read.down(cardRequest("romeo@montague.example"));
        reply(read, "<vCard", card(server, "vCard"));
        if (!server.isEmpty())
            reply(read, "iq:private", "<query xmlns='jabber:iq:private'><card xmlns='brelo:card'/></query>");
        QCOMPARE(read.takeUp().size(), 1);
        read.down(iq("set", card(sent)));
        goesOut(read);
    }

    void whatTheServerDropsOfTheOwnCardComesBack()
    {
        const QString mine = "<TEL><VOICE/><HOME/>1</TEL><TEL><fax/><HOME/>2</TEL>";
        const QString left = card("<TEL><NUMBER>1</NUMBER></TEL><PHOTO>x</PHOTO>", "vCard");
        TodaysRig rig;
        rig.down(iq("set", card(mine)));
        reply(rig, "<vCard", "<error code='404'/>", true);
        reply(rig, "JCOM_51", "");
        QCOMPARE(rig.takeUp(), QStringList{"<iq type=\"result\" id=\"JCOM_51\"/>"});
        reply(rig, "<vCard", left);
        const auto kept = rig.takeWire().value(0);
        QVERIFY2(kept.contains("type=\"set\"") && kept.contains(card(mine)), qPrintable(kept));
        // Later, as long as nobody else changes the card.
        const auto copy = kept.section("<query", 1).section("</iq>", 0, 0).prepend("<query");
        for (const bool same : {true, false}) {
            const auto now = same ? left : QString(left).replace('1', '3');
            rig.begin();
            rig.meetServerOfToday();
            rig.down(cardRequest("romeo@montague.example"));
            reply(rig, "<vCard", now);
            reply(rig, "iq:private", copy);
            const auto up = rig.takeUp().value(0);
            QCOMPARE(up.contains(card(mine)), same);
            QCOMPARE(up.contains("3</TEL>"), !same);
            rig.down(iq("set", card("<TEL><VOICE/><HOME/>5</TEL>")));
            const auto sent = rig.takeWire().value(0);
            QVERIFY(sent.contains("<PHOTO>x</PHOTO>"));
            QCOMPARE(sent.count("<TEL>"), same ? 1 : 2);
        }
    }

    void writtenCardIsSpelledAsTheSchemaHasIt()
    {
        TodaysRig rig;
        rig.down(cardRequest("romeo@montague.example"));
        reply(rig, "<vCard", card({}, "vCard"));
        rig.takeUp();
        rig.down(
            R"(<iq type="set" id="JCOM_51"><VCARD version="3.0" xmlns="vcard-temp"><FN>a</FN><TEL><fax/>)"
            "<HOME/>12</TEL><TEL><MSG/><HOME/></TEL><ADR><HOME/><EXTADD>x</EXTADD><COUNTRY>IT</COUNTRY></ADR>"
            "<EMAIL><INTERNET/><PREF/>a@b</EMAIL></VCARD></iq>");
        QCOMPARE(
            rig.takeWire().last(),
            R"(<iq type="set" id="JCOM_51"><vCard version="3.0" xmlns="vcard-temp"><FN>a</FN><TEL><FAX/>)"
            "<HOME/><NUMBER>12</NUMBER></TEL><TEL><MSG/><HOME/><NUMBER/></TEL><ADR><HOME/><EXTADD>x</EXTADD>"
            "<CTRY>IT</CTRY></ADR><EMAIL><INTERNET/><PREF/><USERID>a@b</USERID></EMAIL></vCard></iq>");
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
        const auto [type, payload, reply] = fetched<QString, QString, QString>();
        TodaysRig rig;
        rig.down("<presence to='a@b'/>");
        rig.takeWire();
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
        const QString stanzas = " xmlns=\"urn:ietf:params:xml:ns:xmpp-stanzas\"";
        const QString gone = "<error type=\"cancel\"%1><item-not-found" + stanzas + "/>%2</error>";
        row("condition only", gone.arg("", ""), gone.arg(" code=\"404\"", "There is no such address."));
        const QString told =
            R"(<error type="auth"%1><forbidden)" + stanzas + "/><text" + stanzas + ">no</text></error>";
        row("with a text", told.arg(""), told.arg(" code=\"403\""));
        row("old", "<error code=\"404\">no</error>", "<error code=\"404\">no</error>");
        row("far server", "<error><remote-server-not-found" + stanzas + "/></error>",
            "<error code=\"502\"><remote-server-not-found" + stanzas +
                "/>The other server cannot be found.</error>");
    }
    void errorsGainTheirOldCodeAndAText()
    {
        const auto [error, up] = fetched<QString, QString>();
        for (const QString name : {"iq", "message", "presence"}) {
            TodaysRig rig;
            const auto whole = "<" + name + " from=\"a@b\" type=\"error\">%1</" + name + ">";
            rig.up(whole.arg(error));
            QCOMPARE(rig.takeUp(), QStringList{whole.arg(up)});
            // An iq doesn't bring its request along.
            rig.up(whole.arg("<q xmlns=\"x\"><a/></q>" + error));
            QCOMPARE(
                rig.takeUp(),
                QStringList{whole.arg((name == "iq" ? "<q xmlns=\"x\"/>" : "<q xmlns=\"x\"><a/></q>") + up)});
        }
    }

    // By the element the client knows who waits.
    void refusalsGetTheirRequestsElement_data()
    {
        columns<QString, QString, QString>("request", "refusal", "up");
        const QString search = "<iq type='set' id='1' to='users.x'><query xmlns='jabber:iq:search'>"
                               "<a/></query></iq>";
        const QString refusal =
            "<iq from=\"%1\" type=\"error\" id=\"1\">%2<error code=\"404\">no</error></iq>";
        const auto query = [](const QString& ns) { return "<query xmlns=\"jabber:iq:" + ns + "\"/>"; };
        row("left out", search, refusal.arg("users.x", ""), refusal.arg("users.x", query("search")));
        row("repeated", search, refusal.arg("users.x", query("x")), refusal.arg("users.x", query("x")));
        row("of another", search, refusal.arg("evil.x", ""), refusal.arg("evil.x", ""));
        row("a call", "<iq type='set' id='1' to='a@b/c'><query xmlns='jabber:iq:oob'/></iq>",
            refusal.arg("a@b/c", ""), refusal.arg("a@b/c", query("oob")));
        row("browsing", "<iq type='get' id='1' to='c.x'><query xmlns='jabber:iq:browse'/></iq>",
            refusal.arg("c.x", ""), refusal.arg("c.x", query("browse")));
        row("a room", "<iq type='get' id='1' to='r@c.x'><query xmlns='jabber:iq:conference'/></iq>",
            refusal.arg("r@c.x", ""), refusal.arg("r@c.x", query("conference")));
        row("of the contact list", "<iq type='set' id='1'><query xmlns='jabber:iq:roster'/></iq>",
            refusal.arg("montague.example", ""), refusal.arg("montague.example", ""));
    }
    void refusalsGetTheirRequestsElement()
    {
        const auto [request, refusal, up] = fetched<QString, QString, QString>();
        for (const bool today : {false, true}) {
            BridgeRig rig;
            today ? rig.meetServerOfToday() : rig.meetOldServer();
            rig.down(request);
            rig.takeUp();
            rig.up(refusal);
            QCOMPARE(rig.takeUp(), QStringList{up});
            rig.up(refusal);
            QCOMPARE(rig.takeUp(), QStringList{refusal});
        }
    }
};

BRELO_TEST(BridgeServicesTest)
#include "BridgeServicesTest.moc"
