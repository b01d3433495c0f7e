#include "session/SessionFixture.h"
class SignInFormTest : public QObject
{
    Q_OBJECT
    static Settings account(bool savePassword, bool autoLogon = false)
    {
        Settings settings;
        settings.UserName = "romeo";
        settings.Server = "montague.example";
        settings.Resource = "garden";
        settings.Password = "secret";
        settings.SavePassword = savePassword;
        settings.AutoLogon = autoLogon;
        return settings;
    }

    static QString text(const QWidget& form, const char* name)
    {
        return ui::find<QLineEdit>(&form, name)->text();
    }
    static bool isTicked(const QWidget& form, const char* name)
    {
        return ui::find<QCheckBox>(&form, name)->isChecked();
    }

private slots:
    void fieldsComeFromTheSettings()
    {
        for (const bool savePassword : {true, false}) {
            Settings stored = account(savePassword);
            stored.SSL = true;
            FakeClient live(stored);
            const auto& form = live.signInForm();
            const auto* server = ui::find<QComboBox>(&form, "txtServer");
            QCOMPARE(text(form, "txtUserName"), "romeo");
            QCOMPARE(text(form, "txtPassword"), savePassword ? "secret" : "");
            QCOMPARE(server->currentText(), "montague.example");
            QCOMPARE(server->count(), 3);
            QCOMPARE(text(form, "txtResource"), "garden");
            QCOMPARE(isTicked(form, "Check1"), savePassword);
            QVERIFY(!isTicked(form, "Check2") && isTicked(form, "Check3"));
            QCOMPARE(form.focusWidget()->objectName(), savePassword ? "Connect" : "txtPassword");
            QCOMPARE(live.gateway->connects, 0);
        }
    }

    void checkBoxes_data()
    {
        columns<QString, int, bool, bool, QString>("box", "clicks", "savePassword", "autoLogon", "password");
        row("save", "Check1", 1, true, false, "typed");
        row("save and not", "Check1", 2, false, false, "typed");
        row("auto-login saves the password", "Check2", 1, true, true, "typed");
        row("and leaves it saved", "Check2", 2, true, false, "typed");
        row("SSL", "Check3", 1, false, false, "");
    }
    void checkBoxes()
    {
        const auto [box, clicks] = fetched<QString, int>();
        FakeClient live;
        const auto& form = live.signInForm();
        ui::type(&form, "txtPassword", "typed");
        for (int i = 0; i < clicks; ++i)
            ui::find<QCheckBox>(&form, qPrintable(box))->click();
        QTEST(live.client.settings.SavePassword, "savePassword");
        QTEST(live.client.settings.AutoLogon, "autoLogon");
        QTEST(live.client.settings.Password, "password");
        QCOMPARE(live.client.settings.SSL, box == "Check3");
        QCOMPARE(isTicked(form, "Check1"), box == "Check1" && clicks == 1);
    }

    // The password was not kept, so an empty one is sent, and kept from now on.
    void autoLogonConnectsAtOnce()
    {
        FakeClient live(account(false, true));
        QCOMPARE(live.gateway->connects, 1);
        QCOMPARE(live.gateway->userName, "romeo");
        QCOMPARE(live.gateway->password, QString());
        QVERIFY(live.client.settings.SavePassword);
        QVERIFY(isTicked(live.signInForm(), "Check1") && isTicked(live.signInForm(), "Check2"));
        QVERIFY(live.signInForm().isVisible()); // the entry routine shows it after the load
        live.streamUp();
        live.inject("<iq type=\"result\"><query xmlns=\"jabber:iq:agents\"/></iq>");
        QVERIFY(!live.signInForm().isVisible());
    }

    void connectPassesTheFieldsOn()
    {
        FakeClient live(account(true));
        live.world.network.online = false;
        live.client.UserClosing = true;
        const auto& form = live.signInForm();
        ui::type(&form, "txtUserName", "mercutio");
        ui::type(&form, "txtServer", "verona.example:5333");
        ui::type(&form, "txtResource", "street");
        ui::find<QCheckBox>(&form, "Check3")->click();
        ui::click(&form, "Connect");
        QCOMPARE(live.world.network.dials, QList<bool>{false});
        QVERIFY(!live.client.UserClosing);
        QCOMPARE(live.gateway->userName + u'|' + live.gateway->password + u'|' + live.gateway->server,
                 "mercutio|secret|verona.example:5333");
        QCOMPARE(live.gateway->resource, "street");
        QVERIFY(live.gateway->secure);
        QVERIFY(!form.isVisible());
        QVERIFY(live.rosterForm() && !live.rosterForm()->isVisible());
        QVERIFY(live.form("LoggingInForm")->isVisible());
        const auto* progress = ui::find<QPlainTextEdit>(live.form("LoggingInForm"), "Label1");
        QCOMPARE(progress->toPlainText(), "Connecting...");
    }

    void whoAndWhereMustBeThere_data()
    {
        columns<QString, QString, QString, QString>("user", "server", "sent", "focus");
        row("nobody", "", "a.example", "", "txtUserName");
        row("blanks", "  ", "a.example", "", "txtUserName");
        row("nowhere", "romeo", " ", "", "txtServer");
        row("blanks around", " romeo ", " a.example ", "romeo at a.example", "");
        row("whole JID", "juliet@b.example", "a.example", "juliet at b.example", "");
        row("whole JID, nowhere else", "juliet@b.example/x@y", "", "juliet at b.example", "");
        row("whole JID, port", "juliet@A.example", "a.example:5333", "juliet at a.example:5333", "");
        row("nobody at a place", "@b.example", "", "", "txtUserName");
        row("a name at no place", "juliet@", "", "", "txtServer");
    }
    void whoAndWhereMustBeThere()
    {
        const auto [user, server, sent, focus] = fetched<QString, QString, QString, QString>();
        FakeClient live;
        const auto& form = live.signInForm();
        const auto* word = ui::find<QLabel>(&form, "lblMissing");
        ui::type(&form, "txtUserName", user);
        ui::type(&form, "txtServer", server);
        QVERIFY(!word->isVisible());
        ui::click(&form, "Connect");
        QCOMPARE(live.gateway->connects, sent.isEmpty() ? 0 : 1);
        if (!sent.isEmpty()) {
            QCOMPARE(live.gateway->userName + " at " + live.gateway->server, sent);
            return;
        }
        QVERIFY(form.isVisible() && word->isVisible() && !live.form("LoggingInForm"));
        QCOMPARE(form.focusWidget()->objectName(), focus);
        QVERIFY(word->text().contains(focus == "txtServer" ? "server" : "user name"));
        ui::type(&form, focus.toUtf8().constData(), "x");
        QVERIFY(!word->isVisible());
    }

    void enterConnects()
    {
        for (const char* name :
             {"txtUserName", "txtPassword", "txtServer", "txtResource", "Check1", "Connect"}) {
            FakeClient live(account(true));
            auto* widget = ui::find<QWidget>(&live.signInForm(), name);
            widget->setFocus();
            QTest::keyClick(widget, Qt::Key_Return);
            QVERIFY2(live.gateway->connects == 1, name);
        }
    }

    void focusSelectsTheWholeText()
    {
        FakeClient live(account(true));
        auto* user = ui::find<QLineEdit>(&live.signInForm(), "txtUserName");
        live.signInForm().activateWindow();
        ui::find<QWidget>(&live.signInForm(), "Connect")->setFocus();
        QTest::mouseClick(user, Qt::LeftButton);
        QTRY_COMPARE(user->selectedText(), "romeo");
    }

    void closeBox_data()
    {
        columns<bool, bool, QString>("reachable", "ending", "restore");
        row("goes to the tray", true, false, "Restore");
        row("stays in reach where there is no tray", false, false, QString());
        row("really ends after Disconnect", true, true, QString());
    }
    void closeBox()
    {
        const auto [reachable, ending] = fetched<bool, bool>();
        FakeClient live;
        live.world.tray.reachable = reachable;
        auto& form = live.signInForm();
        const QSignalSpy unloaded(&form, &SignInForm::unloaded);
        if (ending) {
            live.connectToServer();
            form.show();
            ui::click(&form, "CMDDisconnect");
        }
        form.close();
        QCOMPARE(unloaded.size(), ending ? 1 : 0);
        QCOMPARE(form.isVisible(), !reachable);
        QCOMPARE(form.isMinimized(), !reachable);
        QTEST(live.trayEntry("mnuTrayRestore"), "restore");
        QCOMPARE(live.gateway->disconnects, ending ? 1 : 0);
    }

    void unloadWritesTheSettings()
    {
        for (const bool savePassword : {true, false}) {
            FakeClient live;
            const auto& form = live.signInForm();
            if (savePassword)
                ui::find<QCheckBox>(&form, "Check1")->click(); // before the password stands there
            ui::type(&form, "txtUserName", "tybalt");
            ui::type(&form, "txtServer", "capulet.example");
            ui::type(&form, "txtPassword", "new");
            ui::choose(live.menus.menu(), "mnutrayExit");
            const Settings stored = live.storedSettings();
            QCOMPARE(stored.UserName + u'@' + stored.Server, "tybalt@capulet.example");
            QCOMPARE(stored.Password, savePassword ? "new" : "");
        }
    }

    void forgottenPasswordLeadsToTheSite()
    {
        FakeClient live;
        live.client.site.WebSite = "www.breloim.example";
        const auto click = [&live](const char* label) {
            QTest::mouseClick(ui::find<QLabel>(&live.signInForm(), label), Qt::LeftButton);
        };
        click("Label3"); // Help does nothing
        QVERIFY(live.world.links.opened.isEmpty() && live.world.boxes.shown.isEmpty());
        click("Label6");
        QCOMPARE(live.world.links.opened, QStringList{"https://www.breloim.example/node.php?id=526"});
    }

    void aRefusedPasswordIsTypedAnew()
    {
        FakeClient live(account(true));
        ui::click(&live.signInForm(), "Connect");
        live.world.boxes.answers = {MessageBoxes::Answer::No};
        live.inject("<iq type=\"error\"><query xmlns=\"jabber:iq:auth\"/></iq>");
        QVERIFY(QTest::qWaitForWindowActive(&live.signInForm()));
        QTest::keyClicks(QApplication::focusWidget(), "right");
        QCOMPARE(text(live.signInForm(), "txtPassword"), "right");
    }

    void linksAreReadableInTheDark_data()
    {
        columns<QString, QString>("form", "label");
        row("the site's page", "SignInForm", "Label6");
        row("a card's address", "VCardForm", "Label5");
        row("a card's page", "VCardForm", "Label7");
    }
    void linksAreReadableInTheDark()
    {
        FakeClient live;
        live.inject("<iq type=\"result\" from=\"juliet@x\"><vCard xmlns=\"vcard-temp\"/></iq>");
        const auto [form, label] = fetched<QString, QString>();
        QWidget* window = form == "SignInForm" ? &live.signInForm() : live.form("VCardForm");
        auto* link = ui::find<QLabel>(window, label.toLatin1());
        const auto colour = [link] { return link->palette().color(QPalette::WindowText); };
        QPalette light;
        light.setColor(QPalette::Window, Qt::white);
        window->setPalette(light);
        QTRY_COMPARE(colour(), QColor(0, 0, 255));
        QPalette dark;
        dark.setColor(QPalette::Window, QColor(0x20, 0x20, 0x20));
        dark.setColor(QPalette::Link, QColor(0, 0, 255));
        window->setPalette(dark);
        QTRY_VERIFY(colour().lightness() > 160);
        QEnterEvent enter({}, {}, {});
        QApplication::sendEvent(link, &enter);
        QCOMPARE(colour(), QColor(0x55, 0x7E, 0xBA));
        QVERIFY(link->font().underline());
    }
};

BRELO_TEST(SignInFormTest)
#include "SignInFormTest.moc"
