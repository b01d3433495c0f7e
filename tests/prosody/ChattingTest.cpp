#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "prosody/ProsodyFixture.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <QPlainTextEdit>
#include <QStatusBar>

namespace
{

const QString chatStates = QStringLiteral("http://jabber.org/protocol/chatstates");

bool isTyping(const Stanza& stanza)
{
    const auto state = stanza.root().child("composing");
    return stanza.kind() == Stanza::Kind::Message && state &&
           state.attribute("xmlns").value() == chatStates && !stanza.root().child("body");
}

} // namespace

// Two friends, one at this client and one at another program.
class ChattingTest : public QObject
{
    Q_OBJECT

    ProsodyServer server_;

private slots:
    void initTestCase()
    {
        QVERIFY2(server_.start(), qPrintable(server_.problem()));
        QVERIFY(server_.addAccount(QStringLiteral("romeo"), QStringLiteral("secret")));
        QVERIFY(server_.addAccount(QStringLiteral("juliet"), QStringLiteral("rose")));
        QVERIFY(server_.befriend(QStringLiteral("romeo"), QStringLiteral("juliet"),
                                 QStringLiteral("Verona & <co>")));
    }

    void presenceBothWays()
    {
        ProsodyFixture f(server_);
        QVERIFY(f.signIn());
        QTRY_VERIFY(f.row(f.peer));
        QCOMPARE(f.row(f.peer)->text, QStringLiteral("Juliet"));
        QCOMPARE(f.row(f.peer)->parent->text, QStringLiteral("Verona & <co>"));
        QCOMPARE(f.live.client.MyRoster.record(f.peer)->Status, QStringLiteral("Offline"));
        {
            SlixmppPeer juliet(server_, QStringLiteral("juliet"), QStringLiteral("rose"));
            QVERIFY(f.isOnline(juliet));
            QTRY_VERIFY(juliet.heardPresence(f.own, QString()));
            QTRY_VERIFY(f.seesPeer());
            juliet.tell("presence", {{QStringLiteral("show"), QStringLiteral("dnd")},
                                     {QStringLiteral("status"), QStringLiteral("at <church> & \"home\" 💒")}});
            QTRY_COMPARE(f.live.client.MyRoster.record(f.peer)->StatusMsg,
                         QStringLiteral("at <church> & \"home\" 💒"));
            QCOMPARE(f.live.client.MyRoster.record(f.peer)->Status, QStringLiteral("dnd"));

            ui::choose(f.live.rosterForm(), "mRosterSAway");
            QTRY_VERIFY(juliet.heard([](const Stanza& stanza) {
                return stanza.kind() == Stanza::Kind::Presence && stanza.PresenceFields().Show() == u"away" &&
                       !stanza.PresenceFields().Status().isEmpty();
            }));
        }
        QTRY_VERIFY(!f.seesPeer());
        QVERIFY(f.row(f.peer));
    }

    void messagesBothWays_data()
    {
        columns<QString>("text");
        row("plain", QStringLiteral("What light through yonder window breaks?"));
        row("markup", QStringLiteral("<b>a & b</b> \"quoted\" 'so' ]]> &amp; &#65;"));
        row("emoji", QStringLiteral("🌹 👩‍❤️‍👨 ♥ ü ß 中文 עברית"));
    }

    void messagesBothWays()
    {
        QFETCH(QString, text);
        SlixmppPeer juliet(server_, QStringLiteral("juliet"), QStringLiteral("rose"));
        ProsodyFixture f(server_);
        QVERIFY(f.signIn());
        QVERIFY(f.isOnline(juliet));
        auto* window = f.open(f.peer);
        QVERIFY(window);
        f.typeInto(*window, text);
        QTRY_VERIFY(juliet.heard(isTyping));
        QVERIFY(!juliet.heardBody(text));
        ui::click(window, "cmdSend");
        QTRY_VERIFY(juliet.heardBody(text));
        QCOMPARE(f.transcript(*window).count(text), 1);

        juliet.say(f.own, text);
        QTRY_COMPARE(f.transcript(*window).count(text), 2);
        QVERIFY(f.live.world.boxes.shown.isEmpty());
    }

    void typingIsShown()
    {
        SlixmppPeer juliet(server_, QStringLiteral("juliet"), QStringLiteral("rose"));
        ProsodyFixture f(server_);
        QVERIFY(f.signIn());
        QVERIFY(f.isOnline(juliet));
        auto* window = f.open(f.peer);
        QVERIFY(window);
        // Her presence tells that the server knows of ours: a typing notice to nobody is dropped.
        QTRY_VERIFY(f.seesPeer());
        const QString before = f.transcript(*window);
        auto* panel = ui::find<QStatusBar>(window, "StatusBar1");
        juliet.tell("typing", {{QStringLiteral("to"), f.own}});
        QTRY_VERIFY(panel->currentMessage().contains(QStringLiteral("typing")));
        QCOMPARE(f.transcript(*window), before);
        juliet.say(f.own, QStringLiteral("Ay me!"));
        QTRY_VERIFY(f.transcript(*window).contains(QStringLiteral("Ay me!")));
        QVERIFY(!panel->currentMessage().contains(QStringLiteral("typing")));
    }

    void messagesSentMeanwhileComeAtTheNextSignIn()
    {
        SlixmppPeer juliet(server_, QStringLiteral("juliet"), QStringLiteral("rose"));
        ProsodyFixture f(server_);
        QVERIFY(f.signIn());
        QVERIFY(f.isOnline(juliet));
        QVERIFY(f.signOut());
        QTRY_VERIFY(juliet.heardPresence(f.own, QStringLiteral("unavailable")));
        juliet.forget();
        juliet.say(f.own, QStringLiteral("Good morrow"));
        QVERIFY(f.signIn());
        QTRY_VERIFY(juliet.heardPresence(f.own, QString()));
        QTRY_VERIFY(f.seesPeer());
        QTRY_VERIFY(f.visible("MessageForm"));
        QVERIFY(f.transcript(*f.visible("MessageForm")).contains(QStringLiteral("Good morrow")));
    }
};

BRELO_TEST(ChattingTest)
#include "ChattingTest.moc"
