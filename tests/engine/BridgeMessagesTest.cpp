#include "BridgeRig.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <QTest>

namespace
{

const QString state = "<%1 xmlns=\"http://jabber.org/protocol/chatstates\"/>";

} // namespace

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
        QFETCH(QString, sent);
        QFETCH(QString, wire);
        BridgeRig rig;
        rig.meetServerOfToday();
        rig.down(sent);
        QCOMPARE(rig.takeWire(), QStringList{wire});
    }

    void signalsStayInTheEngine_data()
    {
        columns<QString>("message");
        for (const auto* name : {"paused", "active", "inactive", "gone"})
            row(name, "<message from='a@b/c' type='chat'>" + state.arg(QLatin1String(name)) + "</message>");
        row("receipt", "<message from='a@b/c'><received xmlns='urn:xmpp:receipts' id='1'/></message>");
        row("marker", "<message from='a@b/c'><displayed xmlns='urn:xmpp:chat-markers:0' id='1'/></message>");
        row("empty body", "<message from='a@b/c' type='chat'><body/></message>");
        row("typing in a room",
            "<message from='r@c/n' type='groupchat'>" + state.arg("composing") + "</message>");
        row("typing long ago", "<message from='a@b/c' type='chat'>" + state.arg("composing") +
                                   "<delay xmlns='urn:xmpp:delay' stamp='x'/></message>");
        row("old event of another kind",
            "<message from='a@b/c'><x xmlns='jabber:x:event'><delivered/></x></message>");
        row("news of an account", "<message from='a@b' type='headline'><event xmlns='x'/></message>");
        row("forged copy", "<message from='evil@x'><sent xmlns='urn:xmpp:carbons:2'/></message>");
    }

    void signalsStayInTheEngine()
    {
        QFETCH(QString, message);
        BridgeRig rig;
        rig.meetServerOfToday();
        rig.up(message);
        QCOMPARE(rig.takeUp(), QStringList());
        QCOMPARE(rig.takeWire(), QStringList());
    }

    void contentPassesAsItCame_data()
    {
        columns<QString>("message");
        row("body", "<message from=\"a@b\"><body>x</body></message>");
        row("body and state", "<message from=\"a@b\"><body>x</body>" + state.arg("active") + "</message>");
        row("subject", "<message from=\"a@b\" type=\"headline\"><subject>x</subject></message>");
        row("emptied subject of a room", "<message from=\"r@c\" type=\"groupchat\"><subject/></message>");
        row("old typing", "<message from=\"a@b\" type=\"chat\"><x xmlns=\"jabber:x:event\"><composing/>"
                          "</x>" +
                              state.arg("composing") + "</message>");
        row("bounce", "<message from=\"a@b\" type=\"error\"><error code=\"404\">no</error></message>");
        row("no time", "<message from=\"a@b\"><body>x</body><delay xmlns=\"urn:xmpp:delay\" "
                       "stamp=\"soon\"/></message>");
    }

    void contentPassesAsItCame()
    {
        QFETCH(QString, message);
        BridgeRig rig;
        rig.meetServerOfToday();
        rig.up(message);
        QCOMPARE(rig.takeUp(), QStringList{message});
        QCOMPARE(rig.takeWire(), QStringList());
    }

    void typingBecomesTheOldEvent_data()
    {
        columns<QString>("type");
        row("chat", " type=\"chat\"");
        row("plain", "");
    }

    void typingBecomesTheOldEvent()
    {
        QFETCH(QString, type);
        BridgeRig rig;
        rig.meetServerOfToday();
        rig.up("<message from=\"a@b/c\" to=\"me@x\"" + type + ">" + state.arg("composing") + "</message>");
        QCOMPARE(rig.takeUp(), QStringList{"<message from=\"a@b/c\" to=\"me@x\" type=\"chat\"><x "
                                           "xmlns=\"jabber:x:event\"><composing/></x></message>"});
    }

    void receiptIsAnsweredForPersonalMessagesOnly_data()
    {
        columns<QString, QString>("attributes", "reply");
        const QString receipt = "<received xmlns=\"urn:xmpp:receipts\" id=\"7\"/></message>";
        row("chat", "id='7' type='chat'", "<message to=\"a@b/c\" type=\"chat\">" + receipt);
        row("plain", "id='7'", "<message to=\"a@b/c\">" + receipt);
        row("room", "id='7' type='groupchat'", "");
        row("bounce", "id='7' type='error'", "");
        row("no id", "type='chat'", "");
    }

    void receiptIsAnsweredForPersonalMessagesOnly()
    {
        QFETCH(QString, attributes);
        QFETCH(QString, reply);
        BridgeRig rig;
        rig.meetServerOfToday();
        rig.up("<message from='a@b/c' " + attributes +
               "><body>x</body><request xmlns='urn:xmpp:receipts'/></message>");
        QCOMPARE(rig.takeWire(), reply.isEmpty() ? QStringList() : QStringList{reply});
        QCOMPARE(rig.takeUp().size(), 1);
    }

    void delayIsAlsoWrittenTheOldWay_data()
    {
        columns<QString, QString>("delay", "old");
        const QString delay = "<delay xmlns=\"urn:xmpp:delay\" %1/>";
        row("utc", delay.arg("from=\"c.x\" stamp=\"2002-09-10T23:08:25Z\""),
            "<x xmlns=\"jabber:x:delay\" from=\"c.x\" stamp=\"20020910T23:08:25\"/>");
        row("fraction", delay.arg("stamp=\"2002-09-10T23:08:25.123Z\""),
            "<x xmlns=\"jabber:x:delay\" stamp=\"20020910T23:08:25\"/>");
        row("zone", delay.arg("stamp=\"2002-09-11T01:08:25+02:00\""),
            "<x xmlns=\"jabber:x:delay\" stamp=\"20020910T23:08:25\"/>");
        row("both", delay.arg("stamp=\"2002-09-10T23:08:25Z\"") + "<x xmlns=\"jabber:x:delay\"/>", "");
    }

    void delayIsAlsoWrittenTheOldWay()
    {
        QFETCH(QString, delay);
        QFETCH(QString, old);
        BridgeRig rig;
        rig.meetServerOfToday();
        const auto message = "<message from=\"a@b\"><body>x</body>" + delay + "%1</message>";
        rig.up(message.arg(""));
        QCOMPARE(rig.takeUp(), QStringList{message.arg(old)});
    }

    void invitationReachesTheClientInItsOwnForm_data()
    {
        columns<QString, QString, QString>("message", "from", "body");
        const QString mediated =
            "<x xmlns='http://jabber.org/protocol/muc#user'><invite from='a@b/c'><reason>Come"
            "</reason></invite><password>p</password></x>";
        const QString direct = "<x xmlns='jabber:x:conference' jid='r@c' reason='Hey'/>";
        row("mediated", "<message from='r@c' to='me@x'>" + mediated + "</message>", "a@b/c", "Come");
        row("mediated and direct",
            "<message from='r@c' to='me@x'><body>Text</body>" + mediated + direct + "</message>", "a@b/c",
            "Come");
        row("direct", "<message from='a@b/c' to='me@x'>" + direct + "</message>", "a@b/c", "Hey");
        row("old",
            "<message from='a@b/c' to='me@x'><body>Text</body><x xmlns='jabber:x:conference' "
            "jid='r@c'/><x xmlns='jabber:x:delay' stamp='1'/></message>",
            "a@b/c", "Text");
    }

    void invitationReachesTheClientInItsOwnForm()
    {
        QFETCH(QString, message);
        QFETCH(QString, from);
        QFETCH(QString, body);
        BridgeRig rig;
        rig.meetServerOfToday();
        rig.up(message);
        QCOMPARE(rig.takeUp(),
                 QStringList{"<message from=\"" + from + "\" to=\"me@x\"><body>" + body +
                             "</body><x xmlns=\"jabber:x:conference\" jid=\"r@c\"/></message>"});
    }
};

BRELO_TEST(BridgeMessagesTest)
#include "BridgeMessagesTest.moc"
