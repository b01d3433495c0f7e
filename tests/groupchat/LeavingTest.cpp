#include "groupchat/RoomFixture.h"

// How a room is left, and what stays of it.
class LeavingTest : public QObject
{
    Q_OBJECT
    std::optional<RoomClient> f;

private slots:
    void init() { f.emplace(); }
    void cleanup() { f.reset(); }

    void closedRoomHidesUntilItIsConfirmed()
    {
        auto* room = &f->enter();
        room->setPlace({50, 60});
        ui::click(room, "Command3");
        QVERIFY(f->room() == room && !room->isVisible());
        QCOMPARE(f->takeSent(), QStringList(gone));
        f->says(verse + "/will", "<body>rom, stay</body>");
        QVERIFY(f->ui->windows.messages.hub.unread.peers().isEmpty());
        // Asked for again it sends nothing, and says why.
        f->conference("VRX_CONF?", "<name>V</name>");
        QVERIFY(f->takeSent().isEmpty() && !room->isVisible());
        QVERIFY(f->mainStatus().contains("leaving"));
        f->conference("VRX_CONF?", "<error code='403'>Forbidden</error>", "error");
        QVERIFY(f->mainStatus().contains("Forbidden"));
        // The own presence goes before the own entry does.
        f->presence(me, {}, "unavailable");
        f->users("<user type='remove' jid='" + me + "'/>");
        QVERIFY(!f->room() && !f->mainStatus().contains("no longer"));
        QCOMPARE(f->takeSent(), QStringList(gone));
        f->enter();
        QVERIFY(f->room()->isVisible());
        QCOMPARE(f->room()->place(), QPoint(50, 60));
    }

    void roomClosesAtOnceWithTheSession_data()
    {
        columns<Act, bool>("act", "tells");
        row("session ends", Act([](FakeClient& c) { c.client.SessionClosing = true; }), true);
        row("program ends", Act([](FakeClient& c) { c.client.UserClosing = true; }), true);
        row("not connected", Act([](FakeClient& c) { c.gateway->connected = false; }), false);
    }
    void roomClosesAtOnceWithTheSession()
    {
        const auto [act, tells] = fetched<Act, bool>();
        f->enter();
        act(*f);
        f->room()->close();
        QVERIFY(!f->room());
        QCOMPARE(f->takeSent(), tells ? QStringList(gone) : QStringList());
    }

    void questionThatOutlivesTheRoomSendsNothing()
    {
        f->enter();
        f->world.boxes.inputs = {"rom2"};
        f->world.boxes.meanwhile = [this] {
            f->users("<user type='remove' jid='" + me + "'/>");
            f->takeSent();
        };
        ui::choose(f->room(), "mnucontattichnick");
        QCOMPARE(f->takeSent(), QStringList());
    }

    void silentRoomIsGivenUp()
    {
        f->enter().close();
        f->takeSent();
        f->world.clock.time = f->world.clock.time.addSecs(29);
        f->conference("VRX_CONF?", "<name>V</name>");
        QVERIFY(f->takeSent().isEmpty());
        f->world.clock.time = f->world.clock.time.addSecs(1);
        f->conference("VRX_CONF?", "<name>V</name>");
        QCOMPARE(f->takeSent(), QStringList({available, nickSet.arg("romeo")}));
        QVERIFY(f->room()->isVisible());
    }

    void typedTextOutlivesALostConnection()
    {
        f->enter();
        f->entry().insertMessage("half a sen");
        f->gateway->connected = false;
        ui::click(f->room(), "Command2");
        QVERIFY(f->status().contains("not connected"));
        f->streamLost();
        QVERIFY(!f->room());
        for (const auto& [user, text] : {std::pair("other", ""), std::pair("romeo", "half a sen")}) {
            f->gateway->userName = user; // whose text it is
            f->streamUp();
            QCOMPARE((f->enter(), f->entry().messageText()), text);
            f->gateway->connected = false;
            f->room()->close();
        }
    }

    void unsentWordsComeBackToTheRoom()
    {
        f->enter();
        f->entry().insertMessage("half");
        const auto comeBack = [this](const QString& body, const QString& subject = {}) {
            const QByteArray text = said(subject + "<body>" + body + "</body>").toUtf8();
            f->client.Core->PluginManager->Queue()->deliver(Stanza::returned(text, Stanza::Kind::Unsent));
            f->client.Core->tick();
        };
        comeBack("lost");
        QCOMPARE(f->history(), "Not sent: lost\n");
        f->streamLost();
        comeBack("late");
        comeBack("/me has changed the subject", "<subject>s</subject>");
        const auto entryOf = [this](const QString& user) {
            f->gateway->userName = user;
            f->signInAgain();
            return f->enter(), f->entry().messageText();
        };
        QCOMPARE(entryOf("mercutio"), "");
        f->streamLost();
        QCOMPARE(entryOf("romeo"), "lost\nlate\nhalf");
        f->entry().clear(); // they come once
        f->streamLost();
        QCOMPARE(entryOf("romeo"), "");
    }
};

BRELO_TEST(LeavingTest)
#include "LeavingTest.moc"
