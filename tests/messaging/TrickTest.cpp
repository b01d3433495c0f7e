#include "messaging/MessagingFixture.h"
#include "messaging/forms/RoomWindow.h"

// Windows that the client opens by a message to itself.
class TrickTest : public QObject
{
    Q_OBJECT
    std::optional<MessagingFixture> f;

private slots:
    void init() { f.emplace(); }

    void trickOpensASilentWindow()
    {
        f->client.settings.SoundOnNewMessage = true;
        const auto* window = f->open(juliet);
        QVERIFY(window && window->isVisible());
        QCOMPARE(f->transcript(*window), QString());
        QCOMPARE(f->panel(*window), QString());
        QVERIFY(f->world.tray.balloons.isEmpty() && f->world.sounds.played.isEmpty());
        QVERIFY(!f->hub->IsTrick);
        // The header lands in the contact's log; the empty line, its addresses swapped, under the own name.
        QCOMPARE(f->logOf(juliet),
                 QString("\r\n*** New chat window with %1 at 07:08:09 Thursday, 6 May 2004\r\n").arg(juliet));
        QCOMPARE(f->logOf(own), QString("%1/BreloIM (07:08:09): \r\n").arg(own));
        QCOMPARE(f->engine.takeSent(), QStringList());
        // The next message is a real one.
        f->message(juliet, "chat", "<body>hi</body>");
        QVERIFY(f->transcript(*window).contains("hi"));
        QVERIFY(f->logOf(juliet).endsWith(QString("2004\r\n%1 (07:08:09): hi\r\n").arg(juliet)));
    }

    void withoutTheFlagTheMessageCountsAsReal()
    {
        f->client.settings.SoundOnNewMessage = true;
        f->hub->SendMessage(juliet);
        f->engine.trigger();
        QCOMPARE(f->transcript(*f->window(juliet)), QString(" <07:08>  %1: \n").arg(juliet));
        QCOMPARE(f->world.tray.balloons.size(), 1);
        QCOMPARE(f->world.sounds.played.size(), 1);
        // The header goes to the log of the account's own name.
        QVERIFY(f->logOf(own).contains(QString("*** New chat window with %1 at ").arg(own)));
        QCOMPARE(f->logOf(juliet), QString("%1 (07:08:09): \r\n").arg(juliet));
    }

    void lockedOutStrangerOpensNothing()
    {
        f->client.settings.DoNotReceiveMessFromUnAuth = true;
        f->client.settings.AutoReplayToUnAuth = true;
        f->client.settings.AutoReplayMess = "go away";
        auto context =
            f->engine.contextFor("<message from='x@y.example/z' type='chat'><body>b</body></message>");
        f->hub->OnMessage(context);
        // The reply is prepared in the packet, and never sent.
        const auto fields = context.OutPacket().MessageFields();
        QCOMPARE(fields.To() + u'|' + fields.Type() + u'|' + fields.Subject() + u'|' + fields.Body(),
                 "x@y.example/z|Normal|Auto Response|go away");
        QCOMPARE(f->engine.takeSent(), QStringList());
        QVERIFY(f->registry.loaded().isEmpty());
    }

    void refusedOpeningSaysWhyAndSwallowsNothing_data()
    {
        columns<QString, QString>("jid", "why");
        row("blocked", juliet, "blocked");
        row("stranger", "paris@verona.example", "outside your contact list");
        for (const char* jid : {"", "not a jid at all", "@x", "a@", "a@b@c", "a b@c", "a\"@c", "a@b/"})
            row(*jid ? jid : "empty", jid, "not a Jabber address");
    }
    void refusedOpeningSaysWhyAndSwallowsNothing()
    {
        const auto [jid, why] = fetched<QString, QString>();
        f->client.settings.DoNotReceiveMessFromUnAuth = why.startsWith("outside");
        if (why == "blocked")
            f->client.MyBanList.Add(juliet);
        f->open(jid);
        QVERIFY(f->registry.loaded().isEmpty() && !f->hub->IsTrick);
        QCOMPARE(f->world.boxes.shown.size(), 1);
        QVERIFY2(f->world.boxes.shown[0].text.contains(why), qPrintable(f->world.boxes.shown[0].text));
        f->client.MyBanList.RemoveAll();
        f->message(juliet, "chat", "<body>hi</body>");
        QVERIFY(f->transcript(*f->window(juliet)).contains("hi"));
    }

    void occupantOpensByTheTrick()
    {
        RoomWindow room(f->registry, "GroupchatWindowForm");
        room.Tag = "verse@rooms.example";
        const QString will = room.Tag + "/will";
        f->hub->IsTrick = true;
        f->hub->SendMessageFromConference(will, f->client.ownFullJid());
        f->engine.trigger();
        const auto* window = f->window(room.Tag, "ChatWndwill");
        QVERIFY(window && window->isVisible());
        QCOMPARE(f->transcript(*window), QString());
        QVERIFY(f->world.tray.balloons.isEmpty() && !f->hub->IsTrick);
        QVERIFY(f->logOf(room.Tag).contains(QString("*** New chat window with ") + room.Tag));
    }

    void textOutlivesALostConnection()
    {
        auto* window = f->open(juliet);
        f->message(juliet, "chat", "<body>hi</body>");
        auto& entry = f->control<QPlainTextEdit>(*window, "txtMsg");
        f->engine.gateway().connected = false;
        entry.setPlainText("half a sen");
        window->cmdSend_Click();
        QVERIFY(f->panel(*window).contains("not connected"));
        f->registry.unloadAllExcept({"RosterForm"});
        QVERIFY(!window->isVisible());
        f->engine.takeSent();
        f->engine.gateway().connected = true;
        const QString before = f->transcript(*window);
        QCOMPARE(f->open(juliet), window);
        QVERIFY(window->isVisible());
        QCOMPARE(f->transcript(*window), before);
        QCOMPARE(entry.toPlainText(), "half a sen");
        window->cmdSend_Click();
        QCOMPARE(f->engine.takeSent().size(), 1); // no typing event for the text that goes
    }
};

BRELO_TEST(TrickTest)
#include "TrickTest.moc"
