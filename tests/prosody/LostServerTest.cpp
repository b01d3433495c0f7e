#include "engine/StanzaQueue.h"
#include "prosody/ProsodyFixture.h"
#include "support/TestRunner.h"

// The server goes away under an open conversation, and comes back.
class LostServerTest : public QObject
{
    Q_OBJECT

private slots:
    void unsentTextSurvivesTheServer()
    {
        ProsodyServer server;
        QVERIFY2(server.start(), qPrintable(server.problem()));
        server.addAccount("romeo", "secret");
        server.addAccount("juliet", "rose");
        server.befriend("romeo", "juliet", "Friends");
        ProsodyFixture f(server);
        QVERIFY(f.signIn());
        f.live.client.MyBanList.Add("tybalt@localhost");
        QVERIFY(f.live.client.Core->PluginManager->Queue()->isBlocked("tybalt@localhost"));
        auto* window = f.open(f.peer);
        QVERIFY(window);
        const QString unsent = QStringLiteral("But soft, & <what> light 🌹");
        server.kill();
        f.typeInto(*window, "Lost words");
        ui::click(window, "cmdSend");
        QVERIFY(!f.transcript(*window).contains("Not sent"));
        f.typeInto(*window, unsent);

        // The server that comes back knows nothing of the session.
        QVERIFY2(server.start(), qPrintable(server.problem()));
        auto* main = f.live.rosterForm();
        QTRY_COMPARE_WITH_TIMEOUT(f.live.world.tray.icon, "LightOff", 20'000);
        QCOMPARE(f.live.world.tray.toolTip, "BreloIM - Disconnected");
        QVERIFY(main->isVisible());
        QVERIFY(!main->Roster1->isVisible());
        QVERIFY(ui::find<QWidget>(main, "Image1")->isVisible());
        QCOMPARE(ui::find<QAction>(main, "Toolbar1Button1")->text(), "Connect");
        QCOMPARE(f.live.client.MyRoster.Count(), 0);
        QVERIFY(!f.visible("MessageForm"));

        QVERIFY(f.startJuliet());
        ui::choose(main, "Toolbar1Button1");
        QTRY_VERIFY(f.live.ui->windows.session.signIn().isVisible());
        QVERIFY(f.signIn());
        QVERIFY(f.live.rosterForm()->Roster1->isVisible());
        window = f.open(f.peer);
        QVERIFY(window);
        QCOMPARE(ui::find<QPlainTextEdit>(window, "txtMsg")->toPlainText(), unsent);
        ui::click(window, "cmdSend");
        QTRY_VERIFY(f.juliet->heardBody(unsent));
        QVERIFY(f.transcript(*window).contains("Not sent: Lost words"));
        QVERIFY(!f.juliet->heardBody("Lost words"));
        ui::click(window, "cmdSendAgain");
        QTRY_VERIFY(f.juliet->heardBody("Lost words"));
        f.juliet->say(f.own, "He speaks");
        QTRY_VERIFY(f.transcript(*window).contains("He speaks"));
    }
};

BRELO_TEST(LostServerTest)
#include "LostServerTest.moc"
