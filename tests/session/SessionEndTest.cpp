#include "desktop/forms/QtDesktop.h"
#include "desktop/forms/WaitAnimation.h"
#include "session/SessionFixture.h"
#include "settings/Paths.h"
#include "support/Files.h"

// The ways in which a session ends, on the real windows.
class SessionEndTest : public QObject
{
    Q_OBJECT
    static inline const QRect place{40, 60, 420, 640};
    static QString panel(const RosterForm& form, int number)
    {
        return ui::find<QLabel>(&form, qPrintable(QString("StatusBar2Panel%1").arg(number)))->text();
    }

private slots:
    void cancelComesBackFromEveryStep()
    {
        for (int steps = 0; steps < 3; ++steps) { // connecting, the stream up, the first list there
            FakeClient live;
            live.connectToServer();
            if (steps > 0)
                live.streamUp();
            if (steps > 1)
                live.inject(
                    "<iq><query xmlns='jabber:iq:roster'><item jid='a@b' subscription='to'/></query></iq>");
            if (steps > 0)
                QTest::keyClick(live.form("LoggingInForm"), Qt::Key_Escape);
            else
                live.form("LoggingInForm")->close();
            QCOMPARE(live.gateway->disconnects, 1);
            QCOMPARE(live.registry.loaded(), QList<Form*>{&live.signInForm()});
            QVERIFY(live.signInForm().isVisible());
            QCOMPARE(live.client.MyRoster.Count() + live.client.MyGroups.Count(), 0);
            QVERIFY(!live.client.IgnoreIQ);
            live.signIn(); // and in again
            QVERIFY(live.rosterForm()->isVisible() && !live.form("LoggingInForm"));
        }
    }

    void lostConnectionLeavesTheMainWindow()
    {
        for (const bool byPage : {false, true}) {
            SignedInClient live;
            if (byPage) // an empty list is one too
                live.client.MyRoster.RemoveAll();
            const auto entries = [&live] {
                return std::pair(ui::find<QAction>(live.rosterForm(), "mRosterTConn")->isEnabled(),
                                 ui::find<QAction>(live.rosterForm(), "mRosterTDiscon")->isEnabled());
            };
            QCOMPARE(entries(), std::pair(false, true));
            live.inject("<presence type='error'/>"); // no loss: the stream stands
            QCOMPARE(panel(*live.rosterForm(), 3), "OPEN");
            live.inject(message("chat"));
            live.inject(message("headline"));
            if (!byPage)
                live.host->connectionProgress("<b>It</b> fell.");
            live.streamLost();
            QCOMPARE(entries(), std::pair(true, false));
            const auto* why = ui::find<QLabel>(live.rosterForm(), "lblWhy");
            QVERIFY(byPage ? !why->isVisible() : why->isVisible() && why->text() == "<b>It</b> fell.");
            QVERIFY(live.rosterForm()->isVisible() && !live.signInForm().isVisible());
            for (const Form* form : live.registry.loaded())
                QVERIFY2(form == live.rosterForm() || !form->isVisible(), qPrintable(form->objectName()));
            QCOMPARE(panel(*live.rosterForm(), 2), "Diconnected");
            QCOMPARE(panel(*live.rosterForm(), 3), QString());
            QVERIFY(!live.rosterForm()->Roster1->isVisible());
            QVERIFY(ui::find<WaitAnimation>(live.rosterForm(), "Image1")->isVisible());
            QCOMPARE(live.world.tray.toolTip, "BreloIM - Disconnected");
            QCOMPARE(live.trayEntry("mnuTrayConnect"), "Connect...");
            // The connect buttons start again through the sign-in window.
            const auto* button = ui::find<QAction>(live.rosterForm(), "Toolbar1Button1");
            QVERIFY(button->toolTip() == "Connect" && !button->isChecked());
            if (byPage)
                ui::click(live.rosterForm(), "cmdConnect");
            else
                ui::choose(live.rosterForm(), "Toolbar1Button1");
            QVERIFY(live.signInForm().isVisible() && !live.rosterForm());
            live.gateway->encrypted = true; // though nobody insisted on it
            live.signIn();
            QVERIFY(live.rosterForm()->Roster1->isVisible());
            QVERIFY(!ui::find<WaitAnimation>(live.rosterForm(), "Image1")->isRunning());
            QVERIFY(ui::find<QAction>(live.rosterForm(), "Toolbar1Button1")->isChecked());
            QCOMPARE(panel(*live.rosterForm(), 2) + panel(*live.rosterForm(), 3), "AvailableSSL");
        }
    }

    // The rest of a sentence lands in the main window. The button is one Tab away.
    void whoTypesOnPressesNothing()
    {
        SignedInClient live;
        live.ui->windows.messages.openConversation("juliet@montague.example", true);
        live.client.Core->tick();
        QVERIFY(QTest::qWaitForWindowActive(live.form("MessageForm")));
        live.streamLost();
        QPointer<RosterForm> main = live.rosterForm();
        main->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(main));
        for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Delete}) {
            QTest::keyClick(QApplication::focusWidget(), key);
            QVERIFY(main && main->isVisible() && !live.signInForm().isVisible());
        }
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QVERIFY(live.signInForm().isVisible());
    }

    void theWholeReasonIsShown()
    {
        SignedInClient live;
        auto& form = *live.rosterForm();
        form.resize(form.minimumSize());
        QCoreApplication::processEvents();
        const int lowest = form.minimumHeight();
        live.host->connectionProgress(QString("word ").repeated(60));
        live.streamLost();
        const auto* why = ui::find<QLabel>(&form, "lblWhy");
        QTRY_VERIFY(why->height() > 0 && why->height() >= why->heightForWidth(why->width()));
        form.showContactList();
        QCOMPARE(form.minimumHeight(), lowest);
    }

    // The settings stand in the file from the first list on.
    void aRunThatIsKilledLosesNothing()
    {
        SignedInClient live;
        QTRY_COMPARE(live.storedSettings().UserName, "romeo");
        // A push of the list saves nothing.
        QVERIFY(QFile::remove(paths::settingsFile()));
        live.inject(
            "<iq type='set'><query xmlns='jabber:iq:roster'><item jid='a@b' subscription='both'/></query>"
            "</iq>");
        QCoreApplication::processEvents();
        QVERIFY(!QFile::exists(paths::settingsFile()));
        const bool before = live.client.settings.CheckGateways;
        live.ui->windows.preferences.show("Messages");
        ui::click(live.form("PreferencesForm"), "chkGateways");
        ui::click(live.form("PreferencesForm"), "cmdApply");
        QCOMPARE(live.storedSettings().CheckGateways, !before);
    }

    // An opening and a disconnect in one tick: the echo goes with the connection, and so does what waits.
    void nothingOfASessionOutlivesIt()
    {
        Settings stored;
        stored.StartInSystemTray = true;
        FakeClient live(stored);
        live.signIn();
        live.ui->windows.contacts.showInTray();
        const auto text = [&live] {
            return ui::find<QLabel>(live.form("ShowInTrayForm"), "lblTitle")->text();
        };
        QVERIFY(text().startsWith("Even though you closed"));
        live.ui->windows.contacts.tellWhere("You are signed in.", "There.");
        live.ui->windows.contacts.showInTray(); // the list was closed after that
        QVERIFY(text().startsWith("Even though you closed"));
        auto& hub = live.ui->windows.messages.hub;
        live.ui->windows.messages.openConversation("juliet@montague.example", true);
        QVERIFY(hub.IsTrick);
        live.client.Core->PluginManager->Queue()->clearInbound(); // as the gateway does
        live.signInForm().bringUp();
        ui::click(&live.signInForm(), "CMDDisconnect");
        QVERIFY(!hub.IsTrick && !live.form("ShowInTrayForm"));
    }

    // An answer from a question of before would otherwise count for the connection of after.
    void aQuestionGoesWithItsSession()
    {
        FakeClient live;
        live.connectToServer();
        bool gone = false;
        ui::onNextDialog([&](QWidget* question) {
            ui::choose(live.menus.menu(), "mnuTrayConnect");
            gone = !question->isVisible();
            if (!gone)
                ui::click(question, "cmdAlways");
        });
        QCOMPARE(live.host->askCertificate({}), CertificateAnswer::Refuse);
        QVERIFY(gone && live.signInForm().isVisible());
    }

    void windowPositionComesBack_data()
    {
        columns<int, bool, bool>("state", "startInTray", "returns");
        row("normal", 0, false, true);
        row("start in the tray ignores the place", 0, true, false);
        row("minimised loses the place", 1, false, false);
    }
    void windowPositionComesBack()
    {
        const auto [state, startInTray, returns] = fetched<int, bool, bool>();
        Settings stored;
        stored.StartInSystemTray = startInTray;
        FakeClient live(stored);
        live.signIn();
        live.rosterForm()->setPlace(place.topLeft());
        live.rosterForm()->resize(place.size());
        if (state == 1)
            live.rosterForm()->showMinimized();
        ui::choose(live.rosterForm(), "mRosterTDiscon");
        const auto written = live.store.loadWindowPosition(QRect(1, 2, 3, 4));
        QCOMPARE(written.geometry.value_or(QRect()), state == 1 ? QRect(0, 0, 0, 0) : place);
        QCOMPARE(written.state, state);
        live.signIn();
        QCOMPARE(QRect(live.rosterForm()->pos(), live.rosterForm()->size()) == place, returns);
        QCOMPARE(live.rosterForm()->isMinimized(), state == 1);
        QCOMPARE(live.form("ShowInTrayForm") != nullptr, state == 1); // tells where it is
    }

    void aWindowThatNobodySawLeavesTheStoredPlaceAlone()
    {
        for (const char* entry : {"mnuTrayConnect", "mnutrayExit"}) {
            FakeClient live;
            QVERIFY(live.store.saveWindowPosition(place, 0));
            live.connectToServer();
            QVERIFY(live.rosterForm() && !live.rosterForm()->isVisible());
            ui::choose(live.menus.menu(), entry);
            QCOMPARE(live.store.loadWindowPosition({}).geometry.value_or(QRect()), place);
        }
    }

    void exitClosesAndWritesEverything()
    {
        for (const bool byTray : {true, false}) {
            SignedInClient live;
            live.inject(message("chat"));
            live.inject(message("headline"));
            live.rosterForm()->setPlace(place.topLeft());
            live.rosterForm()->resize(place.size());
            const QPointer<Form> chat = live.form("MessageForm");
            QVERIFY(chat);
            const QSignalSpy unloaded(&live.signInForm(), &SignInForm::unloaded);
            if (byTray)
                ui::choose(live.menus.menu(), "mnutrayExit");
            else
                ui::choose(live.rosterForm(), "mRosterTExit");
            QCOMPARE(unloaded.size(), 1);
            QCOMPARE(live.gateway->disconnects, 1);
            QVERIFY(!live.rosterForm() && !live.form("MessageForm"));
            QTRY_VERIFY(!chat);
            QCOMPARE(live.storedSettings().UserName, "romeo");
            QCOMPARE(live.store.loadWindowPosition({}).geometry.value_or(QRect()), place);
        }
    }

    // The box stands on a handler of its window, inside the pump: both must live until it is answered.
    void exitUnderAnOpenBoxIsSafe()
    {
        FakeClient live;
        QtMessageBoxes boxes;
        live.client.desktop.boxes = &boxes;
        live.streamUp();
        const QPointer<Form> progress = live.form("LoggingInForm");
        const QSignalSpy unloaded(&live.signInForm(), &SignInForm::unloaded);
        bool livedOn = false;
        ui::onNextDialog([&](QWidget* box) {
            ui::choose(live.menus.menu(), "mnutrayExit");
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QTest::qWait(60);
            livedOn = progress && !progress->isVisible();
            box->close();
        });
        live.inject(refusal);
        QVERIFY(livedOn);
        QCOMPARE(unloaded.size(), 1);
        QTRY_VERIFY(!progress);
        QCOMPARE(live.storedSettings().UserName, QString());
    }

    void aDamagedBlockListIsToldOnce()
    {
        FakeClient live;
        files::write(paths::configFolder() + "/BannedList.xml", "no list");
        live.signIn();
        QCOMPARE(live.world.boxes.shown.size(), 1);
        QVERIFY(live.rosterForm()->isVisible());
    }
};

BRELO_TEST(SessionEndTest)
#include "SessionEndTest.moc"
