#include "session/forms/SignInForm.h"
#include "FakeClient.h"
#include "contacts/forms/RosterForm.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>

namespace
{

Settings account(bool savePassword, bool autoLogon = false)
{
    Settings settings;
    settings.UserName = QStringLiteral("romeo");
    settings.Server = QStringLiteral("montague.example");
    settings.Resource = QStringLiteral("garden");
    settings.Password = QStringLiteral("secret");
    settings.SavePassword = savePassword;
    settings.AutoLogon = autoLogon;
    return settings;
}

QString text(const QWidget& form, const char* name)
{
    return ui::find<QLineEdit>(&form, name)->text();
}
bool isTicked(const QWidget& form, const char* name)
{
    return ui::find<QCheckBox>(&form, name)->isChecked();
}

} // namespace

class SignInFormTest : public QObject
{
    Q_OBJECT

private slots:
    void fieldsComeFromTheSettings_data()
    {
        columns<bool, QString>("savePassword", "password");
        row("password kept", true, "secret");
        row("password not kept", false, QString());
    }

    void fieldsComeFromTheSettings()
    {
        QFETCH(bool, savePassword);
        Settings stored = account(savePassword);
        stored.SSL = true;
        FakeClient live(stored);
        const auto& form = live.signInForm();
        QCOMPARE(text(form, "txtUserName"), "romeo");
        QTEST(text(form, "txtPassword"), "password");
        QCOMPARE(ui::find<QComboBox>(&form, "txtServer")->currentText(), "montague.example");
        QCOMPARE(ui::find<QComboBox>(&form, "txtServer")->count(), 3);
        QCOMPARE(text(form, "txtResource"), "garden");
        QCOMPARE(isTicked(form, "Check1"), savePassword);
        QVERIFY(!isTicked(form, "Check2"));
        QVERIFY(isTicked(form, "Check3"));
        QCOMPARE(form.focusWidget()->objectName(), savePassword ? "Connect" : "txtPassword");
        QCOMPARE(live.gateway->connects, 0);
    }

    void checkBoxes_data()
    {
        columns<QByteArray, int, bool, bool, QString>("box", "clicks", "savePassword", "autoLogon",
                                                      "password");
        row("save", QByteArray("Check1"), 1, true, false, "typed");
        row("save and not", QByteArray("Check1"), 2, false, false, "typed");
        row("auto-login saves the password", QByteArray("Check2"), 1, true, true, "typed");
        row("and leaves it saved", QByteArray("Check2"), 2, true, false, "typed");
        row("SSL", QByteArray("Check3"), 1, false, false, "");
    }

    void checkBoxes()
    {
        QFETCH(QByteArray, box);
        QFETCH(int, clicks);
        FakeClient live;
        const auto& form = live.signInForm();
        ui::type(&form, "txtPassword", "typed");
        for (int i = 0; i < clicks; ++i)
            ui::find<QCheckBox>(&form, box.constData())->click();
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
        QCOMPARE(ui::find<QPlainTextEdit>(live.form("LoggingInForm"), "Label1")->toPlainText(),
                 "Connecting...");
    }

    void enterConnects_data()
    {
        columns<QByteArray>("control");
        for (const char* name :
             {"txtUserName", "txtPassword", "txtServer", "txtResource", "Check1", "Connect"})
            row(name, QByteArray(name));
    }

    void enterConnects()
    {
        QFETCH(QByteArray, control);
        FakeClient live(account(true));
        auto* widget = ui::find<QWidget>(&live.signInForm(), control.constData());
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_Return);
        QCOMPARE(live.gateway->connects, 1);
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
        QFETCH(bool, reachable);
        QFETCH(bool, ending);
        FakeClient live;
        live.world.tray.reachable = reachable;
        auto& form = live.signInForm();
        const QSignalSpy unloaded(&form, &SignInForm::unloaded);
        if (ending)
            ui::click(&form, "CMDDisconnect");
        form.close();
        QCOMPARE(unloaded.size(), ending ? 1 : 0);
        QCOMPARE(form.isVisible(), !reachable);
        QCOMPARE(form.isMinimized(), !reachable);
        QTEST(live.trayEntry("mnuTrayRestore"), "restore");
        QCOMPARE(live.gateway->disconnects, ending ? 1 : 0);
    }

    void unloadWritesTheSettings_data()
    {
        columns<bool, QString>("savePassword", "password");
        row("with the password", true, "new");
        row("without", false, QString());
    }

    void unloadWritesTheSettings()
    {
        QFETCH(bool, savePassword);
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
        QTEST(stored.Password, "password");
    }

    void forgottenPasswordLeadsToTheSite()
    {
        FakeClient live;
        live.client.site.WebSite = QStringLiteral("www.breloim.example");
        QTest::mouseClick(ui::find<QLabel>(&live.signInForm(), "Label3"),
                          Qt::LeftButton); // Help does nothing
        QVERIFY(live.world.links.opened.isEmpty() && live.world.boxes.shown.isEmpty());
        QTest::mouseClick(ui::find<QLabel>(&live.signInForm(), "Label6"), Qt::LeftButton);
        QCOMPARE(live.world.links.opened, QStringList{"https://www.breloim.example/node.php?id=526"});
    }

    void linksAreReadableInTheDark()
    {
        FakeClient live;
        auto* link = ui::find<QLabel>(&live.signInForm(), "Label6");
        const auto colour = [link] { return link->palette().color(QPalette::WindowText); };
        QPalette light;
        light.setColor(QPalette::Window, Qt::white);
        live.signInForm().setPalette(light);
        QTRY_COMPARE(colour(), QColor(0, 0, 255));
        QPalette dark;
        dark.setColor(QPalette::Window, QColor(0x20, 0x20, 0x20));
        dark.setColor(QPalette::Link, QColor(0, 0, 255));
        live.signInForm().setPalette(dark);
        QTRY_VERIFY(colour().lightness() > 160);
        QEnterEvent enter({}, {}, {});
        QApplication::sendEvent(link, &enter);
        QCOMPARE(colour(), QColor(0x55, 0x7E, 0xBA));
        QVERIFY(link->font().underline());
    }
};

BRELO_TEST(SignInFormTest)
#include "SignInFormTest.moc"
