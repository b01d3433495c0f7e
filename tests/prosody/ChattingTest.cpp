#include "engine/Xml.h"
#include "prosody/ProsodyFixture.h"
#include "support/TestRunner.h"

// Two friends, one at this client and one at another program.
class ChattingTest : public QObject
{
    Q_OBJECT

    static bool isTyping(const Stanza& stanza)
    {
        const auto state = stanza.root().child("composing");
        return stanza.kind() == Stanza::Kind::Message && state &&
               xml::attribute(state, "xmlns") == "http://jabber.org/protocol/chatstates" &&
               !stanza.root().child("body");
    }

    ProsodyServer server_;

private slots:
    void initTestCase()
    {
        QVERIFY2(server_.start(), qPrintable(server_.problem()));
        server_.addAccount("romeo", "secret");
        server_.addAccount("juliet", "rose");
        server_.befriend("romeo", "juliet", "Verona & <co>");
    }

    void presenceBothWays()
    {
        ProsodyFixture f(server_);
        QVERIFY(f.signIn());
        QTRY_VERIFY(f.row(f.peer));
        QCOMPARE(f.row(f.peer)->text, "Juliet");
        QCOMPARE(f.row(f.peer)->parent->text, "Verona & <co>");
        QCOMPARE(f.live.client.MyRoster.record(f.peer)->Status, "Offline");
        QVERIFY(f.startJuliet());
        QTRY_VERIFY(f.juliet->heardPresence(f.own, QString()));
        QTRY_VERIFY(f.seesPeer());
        f.juliet->tell("presence", {{"show", "dnd"}, {"status", "at <church> & \"home\" 💒"}});
        QTRY_COMPARE(f.live.client.MyRoster.record(f.peer)->StatusMsg, "at <church> & \"home\" 💒");
        QCOMPARE(f.live.client.MyRoster.record(f.peer)->Status, "dnd");

        ui::choose(f.live.rosterForm(), "mRosterSAway");
        QTRY_VERIFY(f.juliet->heard([](const Stanza& stanza) {
            return stanza.kind() == Stanza::Kind::Presence && stanza.PresenceFields().Show() == u"away" &&
                   !stanza.PresenceFields().Status().isEmpty();
        }));
        f.juliet.reset();
        QTRY_VERIFY(!f.seesPeer());
        QVERIFY(f.row(f.peer));
    }

    void messagesBothWays()
    {
        ProsodyFixture f(server_);
        QVERIFY(f.signInBoth());
        auto* window = f.open(f.peer);
        QVERIFY(window);
        for (const QString text :
             {"What light through yonder window breaks?", "<b>a & b</b> \"quoted\" 'so' ]]> &amp; &#65;",
              "🌹 👩‍❤️‍👨 ♥ ü ß 中文 עברית"}) {
            f.juliet->forget();
            f.typeInto(*window, text);
            QTRY_VERIFY(f.juliet->heard(isTyping));
            QVERIFY(!f.juliet->heardBody(text));
            ui::click(window, "cmdSend");
            QTRY_VERIFY(f.juliet->heardBody(text));
            QCOMPARE(f.transcript(*window).count(text), 1);

            f.juliet->say(f.own, text);
            QTRY_COMPARE(f.transcript(*window).count(text), 2);
            QVERIFY(f.live.world.boxes.shown.isEmpty());
        }
    }

    void messagesSentMeanwhileComeAtTheNextSignIn()
    {
        ProsodyFixture f(server_);
        QVERIFY(f.signInBoth());
        QVERIFY(f.signOut());
        QTRY_VERIFY(f.juliet->heardPresence(f.own, "unavailable"));
        f.juliet->forget();
        f.juliet->say(f.own, "Good morrow");
        QVERIFY(f.signIn());
        QTRY_VERIFY(f.juliet->heardPresence(f.own, QString()));
        QTRY_VERIFY(f.seesPeer());
        QTRY_VERIFY(f.visible("MessageForm"));
        QVERIFY(f.transcript(*f.visible("MessageForm")).contains("Good morrow"));
    }
};

BRELO_TEST(ChattingTest)
#include "ChattingTest.moc"
