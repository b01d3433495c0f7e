#include "contacts/forms/RosterForm.h"
#include "session/forms/SignInForm.h"
#include "support/LiveClient.h"
#include "support/ScriptedServer.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

// What the progress window says when a connection doesn't come up, and that Cancel always leads out.
class ProgressTest : public QObject
{
    Q_OBJECT

private slots:
    void tellsWhatWentWrong_data()
    {
        columns<QString, QString>("server", "says");
        const QString address = "$server";
        row("empty", QString(), "No server is given.");
        row("blanks only", "   ", "No server is given.");
        row("blanks within", "my server", "has blanks in it");
        row("word for a port", "localhost:many", "is not a port");
        row("port out of range", "localhost:70000", "is not a port");
        row("no host before the port", ":5222", "No server is given before the port.");
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

    void aSilentServerCanBeCancelled()
    {
        ScriptedServer silent;
        LiveClient live;
        live.signIn(silent.address());
        QTRY_VERIFY(silent.received().contains("stream:stream"));
        live.form("LoggingInForm")->close(); // its close box is Cancel too
        QVERIFY(live.ui->windows.session.signIn().isVisible() && !live.form("LoggingInForm"));
        QTRY_VERIFY(!silent.isConnected());
        silent.onLegacySignIn();
        live.signIn(silent.address());
        QTRY_VERIFY(live.progressText().contains("Connected\n"));
    }
};

BRELO_TEST(ProgressTest)
#include "ProgressTest.moc"
