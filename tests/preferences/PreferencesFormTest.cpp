#include "PreferencesFixture.h"
#include "preferences/forms/PreferencePages.h"
#include "settings/Paths.h"
#include "support/Table.h"
#include "support/TestRunner.h"

using Switch = bool Settings::*;
using Text = QString Settings::*;
Q_DECLARE_METATYPE(Switch)
Q_DECLARE_METATYPE(Text)

class PreferencesFormTest : public QObject
{
    Q_OBJECT

private slots:
    void aSwitchIsStoredByOkAlone_data()
    {
        columns<QString, QByteArray, Switch>("page", "control", "setting");
        row("AutoLogon", "Connection", QByteArray("chkAutoLogon"), &Settings::AutoLogon);
        row("SavePassword", "Connection", QByteArray("Check2"), &Settings::SavePassword);
        row("CurrentWindowOnTop", "Messages", QByteArray("chkOldWindow"), &Settings::CurrentWindowOnTop);
        row("NewWindowOnTop", "Messages", QByteArray("chkbringtofront"), &Settings::NewWindowOnTop);
        row("CheckError", "Messages", QByteArray("chkError"), &Settings::CheckError);
        row("CheckGateways", "Messages", QByteArray("chkGateways"), &Settings::CheckGateways);
        row("CheckHotmail", "Messages", QByteArray("chkMSN"), &Settings::CheckHotmail);
        row("CheckYahooMail", "Messages", QByteArray("chkYAHOO"), &Settings::CheckYahooMail);
        row("AutoAwayTimer", "Status", QByteArray("chkIdleMessage"), &Settings::AutoAwayTimer);
        row("AutoXAwayTimer", "Status", QByteArray("chkAwayMessage"), &Settings::AutoXAwayTimer);
        row("SoundOnNewMessage", "Sounds", QByteArray("Check1"), &Settings::SoundOnNewMessage);
        row("SoundOnOnLine", "Sounds", QByteArray("Check2"), &Settings::SoundOnOnLine);
        row("SoundOnOffLine", "Sounds", QByteArray("Check3"), &Settings::SoundOnOffLine);
        row("AuthForAll", "Authorizations", QByteArray("rdlAuth1"), &Settings::AuthForAll);
        row("AuthDenyAll", "Authorizations", QByteArray("rdlAuth2"), &Settings::AuthDenyAll);
        row("DoNotReceiveMessFromUnAuth", "Authorizations", QByteArray("rdlAcceptMsg2"),
            &Settings::DoNotReceiveMessFromUnAuth);
        row("AutoReplayToUnAuth", "Authorizations", QByteArray("chkAutoResponce"),
            &Settings::AutoReplayToUnAuth);
    }

    void aSwitchIsStoredByOkAlone()
    {
        const auto [page, control, setting] = fetched<QString, QByteArray, Switch>();
        PreferencesFixture f;
        const bool before = f.client.settings.*setting;
        ui::find<QAbstractButton>(f.page(page), control.constData())->click();
        ui::click(f.form, "cmdUndo");
        QVERIFY(!f.isOpen());
        QCOMPARE(f.client.settings.*setting, before);
        f.open();
        ui::find<QAbstractButton>(f.page(page), control.constData())->click();
        ui::click(f.form, "cmdOK");
        QVERIFY(!f.isOpen());
        QCOMPARE(f.client.settings.*setting, !before);
        // Of the choices only one is on.
        const auto& settings = f.client.settings;
        QCOMPARE(int(settings.AuthForAll) + settings.AuthDenyAll + settings.AuthAskForAll, 1);
        QCOMPARE(int(settings.AcceptMessageFromAll) + settings.DoNotReceiveMessFromUnAuth, 1);
    }

    void aTextIsStoredByOkAlone_data()
    {
        columns<QString, QByteArray, Text>("page", "control", "setting");
        row("AutoAwayTimerMsg", "Status", QByteArray("txtIdleMessage"), &Settings::AutoAwayTimerMsg);
        row("AutoXAwayTimerMsg", "Status", QByteArray("txtAwayMessage"), &Settings::AutoXAwayTimerMsg);
        row("SoundOnNewMessageFile", "Sounds", QByteArray("txtMsgSoundPath"),
            &Settings::SoundOnNewMessageFile);
        row("SoundOnOnLineFile", "Sounds", QByteArray("Text1"), &Settings::SoundOnOnLineFile);
        row("SoundOnOffLineFile", "Sounds", QByteArray("Text2"), &Settings::SoundOnOffLineFile);
        row("Resource", "Resource", QByteArray("txtResource"), &Settings::Resource);
        row("Priority", "Resource", QByteArray("Combo1"), &Settings::Priority);
        row("AutoReplayMess", "Authorizations", QByteArray("txtAutoResponce"), &Settings::AutoReplayMess);
    }

    void aTextIsStoredByOkAlone()
    {
        const auto [page, control, setting] = fetched<QString, QByteArray, Text>();
        Settings settings;
        settings.AutoAwayTimer = settings.AutoXAwayTimer = settings.AutoReplayToUnAuth = true;
        settings.SoundOnNewMessage = settings.SoundOnOnLine = settings.SoundOnOffLine = true;
        PreferencesFixture f(settings);
        ui::type(f.page(page), control.constData(), "42");
        QVERIFY(f.client.settings.*setting != "42");
        ui::click(f.form, "cmdOK");
        QCOMPARE(f.client.settings.*setting, "42");
    }

    void everyCategoryHasItsPanel()
    {
        PreferencesFixture f;
        QStringList seen;
        for (const auto& category : preferences::pages()) {
            auto* panel = f.page(category.key);
            QVERIFY2(panel && panel->isVisible(), qPrintable(category.key));
            QCOMPARE(f.page(category.key), panel); // made once
            QCOMPARE(panel->objectName().endsWith("PersonalN"), category.isPersonal());
            QVERIFY(!seen.contains(panel->objectName()));
            seen += panel->objectName();
            QCOMPARE(ui::find<QLabel>(f.form, "lblPage")->text(), category.key);
        }
    }

    void aWrongValueKeepsTheFormOpen_data()
    {
        columns<QString, QByteArray, QString, QString>("page", "control", "text", "right");
        row("no number", "Messages", QByteArray("comboBalloonTime"), "soon", "3600");
        row("no time", "Messages", QByteArray("comboBalloonTime"), "0", "1");
        row("too long", "Messages", QByteArray("comboBalloonTime"), "3601", "10");
        row("no resource", "Resource", QByteArray("txtResource"), " ", "home");
        row("no priority", "Resource", QByteArray("Combo1"), "high", "-128");
        row("too high", "Resource", QByteArray("Combo1"), "128", "127");
        row("no proxy", "Connection", QByteArray("txtName"), "", "proxy.example");
        row("a proxy with its port", "Connection", QByteArray("txtName"), "proxy.example:1080", "::1");
    }

    void aWrongValueKeepsTheFormOpen()
    {
        const auto [page, control, text, right] = fetched<QString, QByteArray, QString, QString>();
        PreferencesFixture f;
        if (page == "Connection")
            ui::find<QAbstractButton>(f.page(page), "chkTypeS4")->click();
        ui::type(f.page(page), control.constData(), text);
        f.page("Sounds");
        ui::click(f.form, "cmdOK");
        QVERIFY(f.isOpen());
        QCOMPARE(f.outside.boxes.shown.size(), 1);
        QCOMPARE(f.form->currentPage(), page);
        auto* wrong = ui::find<QWidget>(f.form->panel(page), control.constData());
        auto* focused = f.form->focusWidget();
        QVERIFY(focused == wrong || wrong->isAncestorOf(focused));
        QCOMPARE(f.client.settings.Resource, "BreloIM");
        QCOMPARE(f.client.settings.BalloonTime, 10000);
        f.form->close(); // asks once more
        QVERIFY(f.isOpen());
        QCOMPARE(f.outside.boxes.shown.size(), 2);
        ui::type(f.page(page), control.constData(), right);
        f.form->close();
        QVERIFY(!f.isOpen());
        f.open();
        ui::type(f.page("Resource"), "Combo1", "high");
        ui::click(f.form, "cmdApply");
        ui::click(f.form, "cmdUndo"); // gives it up
        QVERIFY(!f.isOpen());
    }

    void whatWasNotChangedIsNotStored()
    {
        PreferencesFixture f;
        f.page("Resource");
        f.page("Connection");
        f.client.settings.Resource = "office"; // typed elsewhere in the meantime
        f.client.settings.AutoLogon = true;
        ui::click(f.form, "cmdOK");
        QCOMPARE(f.client.settings.Resource, "office");
        QVERIFY(f.client.settings.AutoLogon);
    }

    void anAutomaticLogInSavesThePassword()
    {
        PreferencesFixture f;
        auto* page = f.page("Connection");
        ui::find<QCheckBox>(page, "chkAutoLogon")->click();
        QVERIFY(!ui::find<QCheckBox>(page, "Check2")->isEnabled());
        ui::click(f.form, "cmdOK");
        QVERIFY(f.client.settings.AutoLogon && f.client.settings.SavePassword);
    }

    void tabGoesFromTheTreeToThePageToTheButtons()
    {
        PreferencesFixture f;
        QVERIFY(QTest::qWaitForWindowActive(f.form));
        f.page("Privacy");
        auto* page = f.page("Resource");
        QStringList visited;
        for (int steps = 0; steps < 6; ++steps) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            visited += QApplication::focusWidget()->objectName();
        }
        QCOMPARE(visited.join(' '), "txtResource Combo1 cmdRestoreRegistry cmdOK cmdApply cmdUndo");
        QVERIFY(page->isVisible());
    }

    void typedTextIsNotCompleted()
    {
        PreferencesFixture f;
        ui::type(f.page("Messages"), "comboBalloonTime", "3");
        ui::click(f.form, "cmdOK");
        QCOMPARE(f.client.settings.BalloonTime, 3000); // not 30
    }

    void aPageThatWasNotOpenedStoresNothing()
    {
        PreferencesFixture f;
        QSignalSpy applied(f.form, &PreferencesForm::applied);
        f.page("Resource");
        f.client.settings.AutoLogon = true;
        f.client.settings.AutoAwayTimerMins = 9;
        ui::click(f.form, "cmdApply");
        QCOMPARE(applied.count(), 1);
        QVERIFY(f.isOpen());
        QVERIFY(f.client.settings.AutoLogon);
        auto* status = f.page("Status");
        QCOMPARE(ui::find<QSpinBox>(status, "IdleMin")->value(), 9);
        ui::find<QSpinBox>(status, "IdleMin")->setValue(12);
        ui::find<QSpinBox>(status, "AwayMin")->setValue(34);
        ui::click(f.form, "cmdApply");
        QCOMPARE(f.client.settings.AutoAwayTimerMins, 12);
        QCOMPARE(f.client.settings.AutoXAwayTimerMins, 34);
    }

    void switchesThatActAtOnce()
    {
        PreferencesFixture f;
        ui::find<QCheckBox>(f.page("Messages"), "EnBalloon")->click();
        QVERIFY(!f.client.settings.BalloonEnable);
        auto* page = f.page("Connection");
        const QString entry = paths::autostartFolder() + "/BreloIM.desktop";
        auto* start = ui::find<QCheckBox>(page, "Check1");
        QVERIFY(!start->isChecked()); // nothing starts it yet
        start->click();
        QVERIFY(QFile::exists(entry));
        QVERIFY(f.client.settings.BeginAtStartup);
        start->click();
        QVERIFY(!QFile::exists(entry));
        QVERIFY(!f.client.settings.BeginAtStartup);
        // Somebody switched it off in the desktop's own settings.
        start->click();
        QFile file(entry);
        QVERIFY(file.open(QIODevice::Append));
        file.write("Hidden=true\n");
        file.close();
        ui::click(f.form, "cmdUndo");
        f.open();
        start = ui::find<QCheckBox>(f.page("Connection"), "Check1");
        QVERIFY(!start->isChecked());
        // Where the desktop's folder can't be made, the box says so and goes back.
        QDir(paths::autostartFolder()).removeRecursively();
        QFile inTheWay(paths::autostartFolder());
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        start->click();
        QVERIFY(!start->isChecked());
        QCOMPARE(f.outside.boxes.shown.size(), 1);
    }

    void coloursAndFontComeFromTheDialogs()
    {
        PreferencesFixture f;
        f.outside.looks.colours = {0x123456, 0xABCDEF};
        f.outside.looks.fonts = {{"Serif", 11.5, false, true}};
        auto* page = f.page("List");
        for (const char* button : {"cmdChangeOnLine", "cmdChangeOffLine", "cmdFontOnLine"})
            ui::find<QAbstractButton>(page, button)->click();
        QCOMPARE(f.client.settings.ColorOnline, 0xBA7E55);
        QCOMPARE(ui::find<QLabel>(page, "Shape1")->palette().color(QPalette::Window),
                 QColor(0x56, 0x34, 0x12));
        ui::click(f.form, "cmdOK");
        const auto& settings = f.client.settings;
        QCOMPARE(settings.ColorOnline, 0x123456);
        QCOMPARE(settings.ColorOffline, 0xABCDEF);
        QCOMPARE(settings.CharOnLineName, "Serif");
        QCOMPARE(settings.CharOnLineSize, 11.5);
        QVERIFY(!settings.CharOnLineBold && settings.CharOnLineItalic);
        QCOMPARE(settings.CharOffLineName, "Verdana");
    }

    void aSoundNeedsItsSwitch()
    {
        PreferencesFixture f;
        auto* page = f.page("Sounds");
        auto* file = ui::find<QLineEdit>(page, "txtMsgSoundPath");
        auto* browse = ui::find<QPushButton>(page, "cmdBrowseSM");
        QVERIFY(!file->isEnabled() && !browse->isEnabled() && file->text().isEmpty());
        ui::find<QCheckBox>(page, "Check1")->click();
        QVERIFY(file->isEnabled() && browse->isEnabled());
        f.outside.files.answers = {"/tmp/ding.wav"};
        browse->click();
        browse->click(); // cancelled
        QCOMPARE(f.outside.files.asked.last(),
                 (RecordingFiles::Question{"Please Choose a WAV File", "Wave Files (*.wav)"}));
        QCOMPARE(file->text(), "/tmp/ding.wav");
        ui::click(f.form, "cmdApply");
        QCOMPARE(f.client.settings.SoundOnNewMessageFile, "/tmp/ding.wav");
        ui::find<QCheckBox>(page, "Check1")->click();
        ui::click(f.form, "cmdOK");
        QVERIFY(!f.client.settings.SoundOnNewMessage);
        QCOMPARE(f.client.settings.SoundOnNewMessageFile, "/tmp/ding.wav");
    }

    void theProxyHoldsForThisRun()
    {
        PreferencesFixture f;
        auto* page = f.page("Connection");
        ui::find<QAbstractButton>(page, "chkTypeS5")->click();
        ui::type(page, "txtName", " proxy.example ");
        ui::find<QSpinBox>(page, "txtPort")->setValue(9050);
        ui::type(page, "txtUName", "us");
        ui::type(page, "txtPWD", "pw");
        ui::click(f.form, "cmdOK");
        const auto& proxy = f.client.proxy;
        QCOMPARE(proxy.kind, ProxyServer::Kind::Socks5);
        QCOMPARE(proxy.host + u' ' + QString::number(proxy.port), "proxy.example 9050");
        QCOMPARE(proxy.user + u' ' + proxy.password, "us pw");
        f.open();
        page = f.page("Connection");
        QVERIFY(ui::find<QAbstractButton>(page, "chkTypeS5")->isChecked());
        QCOMPARE(ui::find<QSpinBox>(page, "txtPort")->value(), 9050);
        ui::find<QAbstractButton>(page, "chkTypeNone")->click();
        ui::click(f.form, "cmdOK");
        QCOMPARE(f.client.proxy.kind, ProxyServer::Kind::None);
    }
};

BRELO_TEST(PreferencesFormTest)
#include "PreferencesFormTest.moc"
