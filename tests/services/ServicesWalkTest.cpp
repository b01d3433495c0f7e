#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "contacts/forms/RosterView.h"
#include "preferences/forms/PreferencesForm.h"
#include "sandbox/Address.h"
#include "sandbox/SandboxServer.h"
#include "services/forms/TransportUsrCtrl.h"
#include "support/LiveClient.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

// The pages on the wire, with the sandbox's server at its other end.
class ServicesWalkTest : public QObject
{
    Q_OBJECT

    struct Walk {
        sandbox::SandboxServer server;
        std::unique_ptr<LiveClient> live;
        Walk()
        {
            auto& world = server.world();
            world.addAccount("romeo", "secret", true);
            world.addAccount("paris", "p");
            world.addGateway("msn", "The Net", "msn");
            world.addPersona("tybalt@msn." + sandbox::Host, "Tybalt").online = true;
            server.listen();
            live = std::make_unique<LiveClient>();
            live->signIn(QString("localhost:%1").arg(server.port()));
        }
        bool isReady() { return live->isOnline() && live->client.settings.UserMode; }
        PreferencesForm* preferences()
        {
            return qobject_cast<PreferencesForm*>(live->form("PreferencesForm"));
        }
        const CRosterItem* contact() const { return live->client.MyRoster.record("tybalt@msn.localhost"); }
        QString status(QWidget* panel) const { return ui::find<QLabel>(panel, "TrDescription")->text(); }
        // Triggers an entry of the menu of the contact list's row.
        void command(const char* entry, const QString& row)
        {
            auto& roster = *live->rosterForm()->Roster1;
            roster.settle();
            roster.view().keyboardSearch(row);
            auto* menu = ui::find<QMenu>(live->rosterForm(), "mnuContext");
            QTimer::singleShot(0, menu, [menu, entry] {
                ui::choose(menu, entry);
                menu->close();
            });
            QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, roster.view().mapToGlobal(QPoint()));
            QCoreApplication::sendEvent(roster.view().viewport(), &event);
        }
    };

private slots:
    void aGatewayIsUsedAndLeft()
    {
        Walk w;
        QTRY_VERIFY(w.isReady());
        w.live->ui->windows.preferences.show("msn.localhost");
        auto* panel = w.preferences()->gatewayPanel("msn.localhost");
        QTRY_COMPARE(w.status(panel), "Enter your user name and password for The Net.");
        ui::click(panel, "cmdRegister"); // without a name
        QTRY_VERIFY(w.status(panel).contains("Not Acceptable"));
        ui::type(panel, "txtField1", "r<m");
        ui::type(panel, "txtField2", "p&w");
        ui::click(panel, "cmdRegister");
        QTRY_COMPARE(ui::find<QLabel>(panel, "LbltxtField1")->text(), "Gateway is already registered !");
        QCOMPARE(w.server.world().gateway("msn." + sandbox::Host)->registered.begin()->value("username"),
                 "r<m");
        QTRY_VERIFY(w.contact() && w.contact()->Online);
        QTRY_VERIFY(w.server.hasReceived("to=\"msn.localhost\" type=\"subscribed\""));
        QVERIFY(!w.live->form("authorizeForm"));
        QTRY_VERIFY(w.server.hasReceived("to=\"msn.localhost\" type=\"subscribe\""));
        w.command("mnuContextLogoffGate", "The Net");
        QTRY_VERIFY(!w.contact()->Online);
        w.command("mnuContextGateLogin", "The Net");
        QTRY_VERIFY(w.contact()->Online);
        ui::click(panel, "cmdremove");
        QTRY_VERIFY(ui::find<QPushButton>(panel, "cmdRegister")->isEnabled());
        QCOMPARE(ui::find<QLabel>(panel, "lblState")->text(), "The Gateway has been removed.");
        QCOMPARE(ui::find<QLineEdit>(panel, "txtField1")->text(), QString());
        QTRY_VERIFY(!w.contact());
        QVERIFY(w.live->world.boxes.shown.isEmpty());
    }

    void aServerIsManaged()
    {
        Walk w;
        QTRY_VERIFY(w.isReady());
        w.live->ui->windows.preferences.show("Server management");
        auto* panel = w.preferences()->panel("Server management");
        QTRY_COMPARE(ui::find<QLabel>(panel, "Label9")->text(), "1");
        ui::type(panel, "txtSubjectMOTD", "Today");
        ui::find<QPlainTextEdit>(panel, "txtMsgMOTD")->setPlainText("a & b");
        ui::click(panel, "cmdSetMOTD");
        QTRY_COMPARE(w.server.world().motd, "<subject>Today</subject><body>a &amp; b</body>");
        ui::find<QPlainTextEdit>(panel, "txtMsgOnline")->setPlainText("now");
        ui::click(panel, "cmdSendOnline");
        QTRY_VERIFY(w.server.hasReceived("/announce/online"));
        const auto change = [&](const QString& user) {
            ui::type(panel, "txtUserName", user);
            for (const char* box : {"txtPWD", "txtConfirmPWD"})
                ui::type(panel, box, "p<w");
            w.live->world.boxes.shown.clear();
            ui::click(panel, "cmdChangePWD");
        };
        change("paris@localhost");
        QTRY_COMPARE(w.server.world().account("paris")->password, "p<w");
        change("nobody@localhost");
        QTRY_COMPARE(w.live->world.boxes.shown.size(), 2);
        QCOMPARE(w.live->world.boxes.shown[1].title, "Can't change password!");
    }
};

BRELO_TEST(ServicesWalkTest)
#include "ServicesWalkTest.moc"
