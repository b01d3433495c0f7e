#include "messaging/forms/MessageForm.h"
#include "sandbox/SandboxServer.h"
#include "session/SessionFixture.h"
#include "support/LiveClient.h"

using sandbox::SandboxServer;

// A whole session on the old dialect, stanza by stanza as the server received it.
class WireRecordTest : public QObject
{
    Q_OBJECT
    struct Fixture {
        SandboxServer server;
        std::unique_ptr<LiveClient> live;
        Fixture()
        {
            server.world().addAccount("romeo", "secret");
            server.world().addAccount("juliet", "rose");
            server.world().addContact("romeo", "juliet", "Juliet", "Friends");
            server.listen();
            live = std::make_unique<LiveClient>();
        }
        QString address() const { return QString("localhost:%1").arg(server.port()); }
        bool signIn()
        {
            live->signIn(address());
            return QTest::qWaitFor(
                [this] { return live->isOnline() && server.hasReceived("VRX_GET_SUPPORTEDNS"); });
        }
    };
    std::optional<Fixture> f;

private slots:
    void init()
    {
        f.emplace();
        QVERIFY(f->signIn());
    }

    void signInHandshake()
    {
        const auto record = f->server.received();
        // The engine's part: authentication, then the two lists.
        QVERIFY(f->server.countReceived("jabber:iq:auth") == 2);
        QVERIFY(!f->server.hasReceived("secret")); // digest: the password itself never crosses
        QCOMPARE(f->server.countReceived("<query xmlns=\"jabber:iq:roster\"/>"), 1);
        QCOMPARE(f->server.countReceived("jabber:iq:agents"), 1);
        // The client's part, in this order.
        const QByteArray online = "<presence><status>online</status></presence>";
        const QByteArray browse = "<iq type=\"get\" id=\"VRX_GET_SUPPORTEDNS\" to=\"localhost\"><query "
                                  "xmlns=\"jabber:iq:browse\"></query></iq>";
        QVERIFY(record.contains(online));
        QCOMPARE(record.indexOf(browse), record.indexOf(online) + 1);
        QCOMPARE(f->server.countReceived("<presence"), 1);
    }

    void chatBothWays()
    {
        f->server.takeReceived();
        emit f->live->rosterForm()->Roster1->openConversation("juliet@localhost");
        Form* window = nullptr;
        QTRY_VERIFY((window = f->live->form("MessageForm")) && window->isVisible());
        QVERIFY(f->server.received().isEmpty()); // the opening message stays at home
        QTest::keyClicks(ui::find<QPlainTextEdit>(window, "txtMsg"), "Ay & <me>!");
        ui::click(window, "cmdSend");
        QTRY_COMPARE(f->server.received().size(), 2);
        QCOMPARE(f->server.received().at(0),
                 QByteArray(R"(<message to="juliet@localhost" type="chat"><x xmlns="jabber:x:event">)"
                            "<composing></composing></x></message>"));
        QCOMPARE(f->server.received().at(1), QByteArray(R"(<message to="juliet@localhost" type="chat"><body>)"
                                                        "Ay &amp; &lt;me&gt;!</body></message>"));
        f->server.sendText("<message from='juliet@localhost/balcony' to='romeo@localhost/BreloIM' "
                           "type='chat'><body>\"Romeo\" &amp; &lt;co&gt;</body></message>");
        const auto* log = ui::find<QPlainTextEdit>(window, "txtLog");
        QTRY_VERIFY(log->toPlainText().contains("\"Romeo\" & <co>"));
        QVERIFY(log->toPlainText().contains("Ay & <me>!"));
    }

    void anInvitationIsShownWithoutABox()
    {
        f->server.sendText("<message from='tybalt@localhost/street' to='romeo@localhost'><body>Come</body>"
                           "<x xmlns='jabber:x:conference' jid='verona@rooms.localhost'/></message>");
        Form* invitation = nullptr;
        QTRY_VERIFY((invitation = f->live->form("JoinConferenceForm")) && invitation->isVisible());
        QCOMPARE(ui::find<QLabel>(invitation, "lblfromJID")->text(), "tybalt@localhost/street : Come");
        QVERIFY(f->live->world.boxes.shown.isEmpty());
    }

    void firstTimeYesMakesTheAccount()
    {
        Fixture f;
        // Registration carries the password in clear, so the person is asked about that too.
        f.live->world.boxes.answers = {MessageBoxes::Answer::Yes, MessageBoxes::Answer::Yes};
        f.live->signIn(f.address(), "mercutio", "jest");
        QTRY_VERIFY(f.live->isOnline());
        QCOMPARE(f.live->world.boxes.shown.size(), 2);
        for (const auto& box : f.live->world.boxes.shown) // whose default is No
            QCOMPARE(box.icon, MessageBoxes::Icon::Exclamation);
        QCOMPARE(f.server.countReceived("jabber:iq:register"), 2); // the form, then the answer
    }
};

BRELO_TEST(WireRecordTest)
#include "WireRecordTest.moc"
