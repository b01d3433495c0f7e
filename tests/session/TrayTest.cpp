#include "session/SessionFixture.h"
// The tray's menu and icon before the real windows.
class TrayTest : public QObject
{
    Q_OBJECT
    static void choose(FakeClient& live, const char* entry) { ui::choose(live.menus.menu(), entry); }

private slots:
    void entriesFollowTheWindows()
    {
        FakeClient live;
        const auto entries = [&live] {
            return live.trayEntry("mnuTrayConnect") + '|' + live.trayEntry("mnuTrayRestore") + '|' +
                   live.trayEntry("mnuTrayMinimize");
        };
        QCOMPARE(entries(), "Connect...||Minimize");
        choose(live, "mnuTrayMinimize");
        QVERIFY(!live.signInForm().isVisible());
        QCOMPARE(entries(), "Connect...|Restore|");
        choose(live, "mnuTrayRestore");
        QVERIFY(live.signInForm().isVisible());
        QCOMPARE(entries(), "Connect...||Minimize");
        live.signIn();
        QCOMPARE(entries(), "Disconnect...||Minimize");
        choose(live, "mnuTrayMinimize");
        QVERIFY(live.rosterForm()->isMinimized() && live.form("ShowInTrayForm")->isVisible());
        QCOMPARE(entries(), "Disconnect...|Restore|");
        live.trayControl->onDoubleClick(); // brings it back, as the entry does
        QVERIFY(live.rosterForm()->isVisible() && !live.rosterForm()->isMinimized());
        choose(live, "mnuTrayMinimize");
        choose(live, "mnuTrayRestore");
        QVERIFY(live.rosterForm()->isVisible() && !live.rosterForm()->isMinimized());
        QCOMPARE(entries(), "Disconnect...||Minimize");
        live.trayControl->onDoubleClick(); // leaves it alone
        QVERIFY(live.rosterForm()->isVisible() && !live.rosterForm()->isMinimized());
        QCOMPARE(entries(), "Disconnect...||Minimize");
        choose(live, "mnuTrayConnect");
        QCOMPARE(live.gateway->disconnects, 1);
        QVERIFY(live.signInForm().isVisible() && !live.rosterForm());
        QVERIFY(entries().startsWith("Connect...|"));
        choose(live, "mnuTrayMinimize");
        live.trayControl->onDoubleClick(); // there is no main window
        choose(live, "mnuTrayConnect");
        QVERIFY(live.signInForm().isVisible());
    }

    // However a sign-in or a session ends.
    void everyEndShows_data()
    {
        columns<bool, Act>("signedIn", "act");
        row("disconnect", true, Act([](auto& c) { ui::choose(c.rosterForm(), "mRosterTDiscon"); }));
        row("lost", true, Act(&FakeClient::streamLost));
        row("sign-in's Disconnect", true, Act([](auto& c) {
                c.signInForm().show();
                ui::click(&c.signInForm(), "CMDDisconnect");
            }));
        row("lost before the lists", false, Act(&FakeClient::streamLost));
        row("cancel", false, Act([](auto& c) { ui::click(c.form("LoggingInForm"), "Command1"); }));
        row("No", false, Act([](auto& c) {
                c.world.boxes.answers = {MessageBoxes::Answer::No};
                c.inject(refusal);
            }));
        row("account refused", false, Act([](auto& c) { c.inject("<iq type='error' id='VRX_new'/>"); }));
    }
    void everyEndShows()
    {
        const auto [signedIn, act] = fetched<bool, Act>();
        FakeClient live;
        const auto shown = [&live] {
            return QStringList{live.world.tray.icon, live.world.tray.toolTip,
                               live.trayEntry("mnuTrayConnect")};
        };
        const auto isOn = [&live](const char* button) {
            return ui::find<QPushButton>(&live.signInForm(), button)->isEnabled();
        };
        live.connectToServer();
        QVERIFY(live.trayEntry("mnuTrayConnect") == "Connect..." && isOn("Connect") && isOn("CMDDisconnect"));
        live.streamUp();
        if (signedIn) {
            for (const char* list : {"roster", "agents"})
                live.inject(QString("<iq type='result'><query xmlns='jabber:iq:%1'/></iq>").arg(list));
            QCOMPARE(shown(), (QStringList{"LightOn", "BreloIM - Connected", "Disconnect..."}));
            choose(live, "mnuTrayMinimize");
        }
        QVERIFY(!isOn("Connect") && isOn("CMDDisconnect"));
        act(live);
        QCOMPARE(shown(), (QStringList{"LightOff", "BreloIM - Disconnected", "Connect..."}));
        QVERIFY(isOn("Connect") && !isOn("CMDDisconnect"));
        QCOMPARE(live.trayEntry("mnuTrayMinimize").isEmpty(), !live.signInForm().isVisible() && signedIn);
    }

    void statusEntries()
    {
        const std::pair<const char*, QString> shows[] = {
            {"mnuTrayStatusAv", ""},     {"mnuTrayStatusAway", "away"}, {"mnuTrayStatusXA", "xa"},
            {"mnuTrayStatusDND", "dnd"}, {"mnuTrayStatusFFC", "chat"},
        };
        for (const auto& [chosen, show] : shows) {
            FakeClient live;
            choose(live, chosen);
            QCOMPARE(live.takeSent(), QStringList());
            live.signIn();
            live.takeSent();
            choose(live, chosen);
            const QStringList sent = live.takeSent();
            QCOMPARE(sent.size(), 1);
            QVERIFY2(sent.at(0).contains("<show>" + show + "</show>"), qPrintable(sent.at(0)));
            for (const auto& [name, unused] : shows)
                QCOMPARE(ui::find<QAction>(live.menus.menu(), name)->isChecked(), name == chosen);
        }
    }

    // Until the person works with the window, which need not be in sight.
    void anUnseenMessageLeavesItsMarks()
    {
        SignedInClient live;
        const QString tybalt = message("chat", "tybalt@montague.example/x");
        const QString juliet = message("chat");
        live.inject(tybalt);
        live.inject(juliet);
        const auto marks = [&live] {
            auto& tree = live.rosterForm()->Roster1->tree();
            const auto* row = tree.Item(tree.NodeIndexByKey("juliet@montague.example"));
            const auto words = tree.indexOf(row).data(Qt::AccessibleDescriptionRole).toString();
            QStringList shown{QString::number(live.world.tray.unread)};
            shown += words.contains("waits to be read") ? "row" : "";
            const auto entries = [](QMenu* menu) {
                QStringList found;
                emit menu->aboutToShow();
                for (const auto* entry : menu->actions())
                    found +=
                        entry->text().section(u' ', 0, 0) + (entry->text().endsWith("(unread)") ? "!" : "");
                return found;
            };
            const auto listed = entries(ui::find<QMenu>(live.rosterForm(), "mnuConversations"));
            const bool same = listed == entries(live.menus.menu()->actions().first()->menu());
            return same ? (shown + listed).join(u' ') : "the tray lists others";
        };
        QCOMPARE(marks(), "2 row tybalt@montague.example/x! Juliet!");
        live.trayControl->onClick(); // the one that waits longest
        live.trayControl->onDoubleClick();
        QTRY_COMPARE(marks(), "1 row tybalt@montague.example/x Juliet!");
        live.form("MessageForm")->close();
        live.ui->windows.messages.hub.openOldestUnread(); // as the balloon does
        QTRY_COMPARE(marks(), "0  tybalt@montague.example/x Juliet");
        live.trayControl->onClick(); // nothing is left
        live.inject(juliet);         // the window in use
        QCOMPARE(marks(), "0  tybalt@montague.example/x Juliet");
        live.inject(tybalt); // closed before
        QCOMPARE(marks(), "1  tybalt@montague.example/x! Juliet");
    }

    // It hides, and a window says where it went; where there is no tray, it stays in reach.
    void closingTheMainWindow()
    {
        for (const bool reachable : {true, false}) {
            FakeClient live;
            live.world.tray.reachable = reachable;
            live.signIn();
            live.rosterForm()->close();
            QCOMPARE(live.gateway->disconnects, 0);
            QVERIFY(live.rosterForm()->isMinimized());
            QCOMPARE(live.rosterForm()->isVisible(), !reachable);
            QCOMPARE(live.form("ShowInTrayForm") != nullptr, reachable);
            QCOMPARE(live.trayEntry("mnuTrayRestore").isEmpty(), !reachable);
            live.trayControl->onDoubleClick();
            QVERIFY(live.rosterForm()->isVisible() && !live.rosterForm()->isMinimized());
        }
    }
};

BRELO_TEST(TrayTest)
#include "TrayTest.moc"
