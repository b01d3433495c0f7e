#include "session/SessionFixture.h"
#include "support/LiveClient.h"
#include "support/ScriptedServer.h"

// What the progress window says when a connection doesn't come up, and that Cancel always leads out.
class ProgressTest : public QObject
{
    Q_OBJECT
    static void wait(FakeClient& live, int seconds)
    {
        for (int i = 0; i < seconds * 2; ++i) {
            live.world.clock.time = live.world.clock.time.addMSecs(500);
            live.client.Core->tick();
        }
    }

private slots:
    void tellsWhatWentWrong_data()
    {
        columns<QString, QString>("server", "says");
        const QString address = "$server";
        row("blanks within", "my server", "has blanks in it");
        // No name has a part that long, so nobody is asked for it.
        row("host that doesn't exist", QString(70, u'x'), "There is no server named");
        row("port that refuses", address, "the connection was refused");
    }
    void tellsWhatWentWrong()
    {
        auto [server, says] = fetched<QString, QString>();
        ScriptedServer peer;
        const QString address = peer.address();
        peer.refuse();
        LiveClient live;
        live.signIn(server.replace("$server", address));
        QTRY_VERIFY2(live.progressText().contains(says), qPrintable(live.progressText()));
        QVERIFY(live.progressText().startsWith("Connecting...\n") && !live.client.isConnected());
        QVERIFY(live.form("LoggingInForm")->isVisible());
        ui::click(live.form("LoggingInForm"), "Command1");
        QVERIFY(live.ui->windows.session.signIn().isVisible() && !live.form("LoggingInForm") &&
                !live.rosterForm());
        QVERIFY(live.world.boxes.shown.isEmpty());
    }

    // The stored sign-in is kept until the person has agreed to less.
    void aSignInThatIsLessSafeIsAskedFor()
    {
        const Safety had{true, true, Proof::ScramSha256};
        const QString account = "romeo@127.0.0.1";
        LiveClient live([&](SettingsStore& store) { store.keepSafety(account, had); });
        ScriptedServer server;
        for (const auto answer : {MessageBoxes::Answer::No, MessageBoxes::Answer::Yes}) {
            server.onSaslSignIn();
            live.world.boxes.answers = {answer};
            live.world.boxes.shown.clear();
            live.signIn(server.address());
            const bool agreed = answer == MessageBoxes::Answer::Yes;
            const QString last = agreed ? "Receiving Gateways" : "less safe than it was";
            QTRY_VERIFY2(live.progressText().contains(last), qPrintable(live.progressText()));
            QCOMPARE(live.world.boxes.shown.size(), 1);
            const auto& box = live.world.boxes.shown.first();
            QVERIFY(box.icon == MessageBoxes::Icon::Exclamation &&
                    box.buttons == MessageBoxes::Buttons::YesNo); // No is the default
            QVERIFY2(box.text.contains(
                         "Before: an encrypted connection, its certificate verified; only "
                         "a proof of the password is sent (SCRAM-SHA-256).\nNow: a connection that is not "
                         "encrypted; the password itself is sent."),
                     qPrintable(box.text));
            QVERIFY(live.store.lastSafety(account) == (agreed ? Safety{false, false, Proof::Plain} : had));
            ui::click(live.form("LoggingInForm"), "Command1");
            server.forget();
        }
    }

    // Between "connect" and the lists nothing else would tell.
    void whatHoldsUpTheListsIsTold_data()
    {
        columns<Act, bool, QString>("act", "isUp", "says");
        row("lost", Act([](FakeClient& c) { c.streamLost(); }), false, "\nDisconnected");
        row("lost for a reason", Act([](FakeClient& c) {
                c.host->connectionProgress("It fell.");
                c.streamLost();
            }),
            false, "Friends...\nIt fell.");
        row("refused", Act([](FakeClient& c) {
                c.inject("<iq type='error' id='brelo-roster'><error code='403'>not you</error></iq>");
            }),
            true, "\nThe server does not give the contact list: not you");
        row("none for long", Act([](FakeClient& c) { wait(c, 31); }), true, "\nThe server has not sent all");
        row("none for a while", Act([](FakeClient& c) { wait(c, 29); }), true, "Friends...");
        row("one for long", Act([](FakeClient& c) {
                c.inject("<iq type='result'><query xmlns='jabber:iq:roster'/></iq>");
                wait(c, 31);
            }),
            true, "\nThe server has not sent all");
        row("a question for long", Act([](FakeClient& c) {
                c.world.clock.time = c.world.clock.time.addSecs(3600);
                c.client.Core->tick();
            }),
            true, "Friends...");
    }
    void whatHoldsUpTheListsIsTold()
    {
        const auto [act, isUp, says] = fetched<Act, bool, QString>();
        FakeClient live;
        live.connectToServer();
        live.streamUp();
        live.client.Core->tick();
        act(live);
        const auto* told = ui::find<QPlainTextEdit>(live.form("LoggingInForm"), "Label1");
        QVERIFY2(told->toPlainText().contains(says) && told->toPlainText().count("\nThe server") <= 1,
                 qPrintable(told->toPlainText()));
        QVERIFY(says != "Friends..." || told->toPlainText().endsWith(says));
        QCOMPARE(live.world.tray.toolTip, isUp ? "BreloIM - Connected" : "BreloIM - Disconnected");
        QCOMPARE(live.trayEntry("mnuTrayConnect"), isUp ? "Disconnect..." : "Connect...");
    }
};

BRELO_TEST(ProgressTest)
#include "ProgressTest.moc"
