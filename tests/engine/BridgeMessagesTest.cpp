#include "BridgeRig.h"
#include "support/Table.h"
#include "support/TestRunner.h"

const QString state = "<%1 xmlns=\"http://jabber.org/protocol/chatstates\"/>";
const QString oldTyping = "<x xmlns=\"jabber:x:event\"><composing/></x>";

// Messages to and from a server of today.
class BridgeMessagesTest : public QObject
{
    Q_OBJECT

private slots:
    void sentMessagesAreTranslated_data()
    {
        columns<QString, QString>("sent", "wire");
        row("normal", "<message to=\"a@b\" type=\"Normal\"><body>x</body></message>",
            "<message to=\"a@b\" type=\"normal\"><body>x</body></message>");
        row("room", "<message to=\"r@c\" type=\"GroupChat\"><body>x</body></message>",
            "<message to=\"r@c\" type=\"groupchat\"><body>x</body></message>");
        row("chat", "<message to=\"a@b\" type=\"chat\"><body> x &amp;</body></message>",
            "<message to=\"a@b\" type=\"chat\"><body> x &amp;</body>" + state.arg("active") + "</message>");
        row("typing",
            "<message to=\"a@b\" type=\"chat\"><x xmlns=\"jabber:x:event\"><composing>"
            "</composing></x></message>",
            "<message to=\"a@b\" type=\"chat\"><x xmlns=\"jabber:x:event\"><composing/></x>" +
                state.arg("composing") + "<no-store xmlns=\"urn:xmpp:hints\"/></message>");
        const QString plain = "<message  to='a@b'><body>x</body></message>";
        row("plain", plain, plain);
        const QString withState = "<message type='chat'><body>x</body>" + state.arg("active") + "</message>";
        row("with its state", withState, withState);
        const QString presence = "<presence ><status>online</status></presence>";
        row("presence", presence, presence);
    }
    void sentMessagesAreTranslated()
    {
        const auto [sent, wire] = fetched<QString, QString>();
        TodaysRig rig;
        rig.down(sent);
        QCOMPARE(rig.takeWire(), QStringList{wire});
    }

    void receivedMessagesAreTranslated_data()
    {
        columns<QString, QString, QString>("message", "up", "wire");
        const auto kept = [](const char* name, const QString& message) { row(name, message, "", ""); };
        for (const auto* name : {"paused", "active", "inactive", "gone"})
            row(name, "<message from=\"a@b/c\">" + state.arg(QLatin1String(name)) + "</message>",
                R"(<message from="a@b/c" type="chat"><x xmlns="jabber:x:event"><id/></x></message>)", "");
        kept("receipt", "<message from='a@b/c'><received xmlns='urn:xmpp:receipts' id='1'/></message>");
        kept("marker", "<message from='a@b/c'><displayed xmlns='urn:xmpp:chat-markers:0' id='1'/></message>");
        kept("empty body", "<message from='a@b/c' type='chat'><body/></message>");
        kept("typing in a room",
             "<message from='r@c/n' type='groupchat'>" + state.arg("composing") + "</message>");
        kept("typing long ago", "<message from='a@b/c' type='chat'>" + state.arg("composing") +
                                    "<delay xmlns='urn:xmpp:delay' stamp='x'/></message>");
        kept("old event of another kind",
             "<message from='a@b/c'><x xmlns='jabber:x:event'><delivered/></x></message>");
        kept("news of an account", "<message from='a@b' type='headline'><event xmlns='x'/></message>");
        kept("forged copy", "<message from='evil@x'><sent xmlns='urn:xmpp:carbons:2'/></message>");
        const auto same = [](const char* name, const QString& message) { row(name, message, message, ""); };
        same("body", "<message from=\"a@b\"><body>x</body></message>");
        same("body and state", "<message from=\"a@b\"><body>x</body>" + state.arg("active") + "</message>");
        same("subject", "<message from=\"a@b\" type=\"headline\"><subject>x</subject></message>");
        same("emptied subject of a room", "<message from=\"r@c\" type=\"groupchat\"><subject/></message>");
        same("old typing",
             "<message from=\"a@b\" type=\"chat\">" + oldTyping + state.arg("composing") + "</message>");
        same("old end of typing",
             R"(<message from="a@b" type="chat"><x xmlns="jabber:x:event"><id>a</id></x></message>)");
        same("bounce", "<message from=\"a@b\" type=\"error\"><error code=\"404\">no</error></message>");
        for (const QString type : {" type=\"chat\"", ""})
            row(qPrintable("typing" + type),
                "<message from=\"a@b/c\" to=\"me@x\"" + type + ">" + state.arg("composing") + "</message>",
                "<message from=\"a@b/c\" to=\"me@x\" type=\"chat\">" + oldTyping + "</message>", "");
        const auto asksReceipt = [](const char* name, const QString& attributes, const QString& wire) {
            const auto message = "<message from=\"a@b/c\"" + attributes +
                                 "><body>x</body><request xmlns=\"urn:xmpp:receipts\"/></message>";
            row(name, message, message, wire);
        };
        const QString receipt = "<received xmlns=\"urn:xmpp:receipts\" id=\"7\"/></message>";
        asksReceipt("receipt in a chat", " id=\"7\" type=\"chat\"",
                    "<message to=\"a@b/c\" type=\"chat\">" + receipt);
        asksReceipt("receipt, plain", " id=\"7\"", "<message to=\"a@b/c\">" + receipt);
        asksReceipt("receipt in a room", " id=\"7\" type=\"groupchat\"", "");
        asksReceipt("receipt without an id", " type=\"chat\"", "");
        const QString bounce = "<message from=\"a@b\" id=\"7\" type=\"error\"><body>x</body><request "
                               "xmlns=\"urn:xmpp:receipts\"/><error code=\"404\">no</error></message>";
        row("receipt of a bounce", bounce, bounce, "");
        const auto delayed = [](const char* name, const QString& delay, const QString& old) {
            const QString message = "<message from=\"a@b\"><body>x</body>%1</message>";
            row(name, message.arg(delay), message.arg(delay + old), "");
        };
        const QString delay = "<delay xmlns=\"urn:xmpp:delay\" %1/>";
        delayed("delay in utc", delay.arg("from=\"c.x\" stamp=\"2002-09-10T23:08:25Z\""),
                "<x xmlns=\"jabber:x:delay\" from=\"c.x\" stamp=\"20020910T23:08:25\"/>");
        delayed("delay with a fraction", delay.arg("stamp=\"2002-09-10T23:08:25.123Z\""),
                "<x xmlns=\"jabber:x:delay\" stamp=\"20020910T23:08:25\"/>");
        delayed("delay with a zone", delay.arg("stamp=\"2002-09-11T01:08:25+02:00\""),
                "<x xmlns=\"jabber:x:delay\" stamp=\"20020910T23:08:25\"/>");
        delayed("delay both ways",
                delay.arg("stamp=\"2002-09-10T23:08:25Z\"") + "<x xmlns=\"jabber:x:delay\"/>", "");
        delayed("delay of no time", delay.arg("stamp=\"soon\""), "");
        const auto invitation = [](const char* name, const QString& message, const QString& body) {
            row(name, message,
                "<message from=\"a@b/c\" to=\"me@x\"><body>" + body +
                    "</body><x xmlns=\"jabber:x:conference\" jid=\"r@c\"/></message>",
                "");
        };
        const QString mediated = "<x xmlns='http://jabber.org/protocol/muc#user'><invite "
                                 "from='a@b/c'><reason>Come</reason></invite><password>p</password></x>";
        const QString direct = "<x xmlns='jabber:x:conference' jid='r@c' reason='Hey'/>";
        invitation("mediated", "<message from='r@c' to='me@x'>" + mediated + "</message>", "Come");
        invitation("mediated and direct",
                   "<message from='r@c' to='me@x'><body>Text</body>" + mediated + direct + "</message>",
                   "Come");
        // Nobody but a room speaks for another person, and a blocked one for nobody.
        row("mediated by a person", "<message from='c@x/y'>" + mediated + "</message>", "", "");
        row("mediated by the blocked",
            "<message from='" + BridgeRig::blocked + "'>" + mediated + "</message>", "", "");
        invitation("direct", "<message from='a@b/c' to='me@x'>" + direct + "</message>", "Hey");
        invitation("old invitation",
                   "<message from='a@b/c' to='me@x'><body>Text</body><x xmlns='jabber:x:conference' "
                   "jid='r@c'/><x xmlns='jabber:x:delay' stamp='1'/></message>",
                   "Text");
    }
    void receivedMessagesAreTranslated()
    {
        const auto [message, up, wire] = fetched<QString, QString, QString>();
        TodaysRig rig;
        rig.down("<presence to='a@b'/>");
        rig.takeWire();
        rig.up(message);
        QCOMPARE(rig.takeUp().join(u'|'), up);
        QCOMPARE(rig.takeWire().join(u'|'), wire);
    }
};

BRELO_TEST(BridgeMessagesTest)
#include "BridgeMessagesTest.moc"
