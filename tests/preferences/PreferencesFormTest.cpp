#include "PreferencesFixture.h"
#include "preferences/forms/PreferencePages.h"
#include "settings/SettingsStore.h"

using Switch = bool Settings::*;
using Text = QString Settings::*;
Q_DECLARE_METATYPE(Switch)
Q_DECLARE_METATYPE(Text)

class PreferencesFormTest : public QObject
{
    Q_OBJECT
    std::optional<PreferencesFixture> f;
private slots:
    void init() { f.emplace(); }

    void aSwitchIsStoredByOkAlone_data()
    {
        columns<QString, QString, Switch>("page", "control", "setting");
        using S = Settings;
        row("auto logon", "Connection", "chkAutoLogon", &S::AutoLogon);
        row("save password", "Connection", "Check2", &S::SavePassword);
        row("current window on top", "Messages", "chkOldWindow", &S::CurrentWindowOnTop);
        row("new window on top", "Messages", "chkbringtofront", &S::NewWindowOnTop);
        row("errors", "Messages", "chkError", &S::CheckError);
        row("gateways", "Messages", "chkGateways", &S::CheckGateways);
        row("mail of one", "Messages", "chkMSN", &S::CheckHotmail);
        row("mail of another", "Messages", "chkYAHOO", &S::CheckYahooMail);
        row("away", "Status", "chkIdleMessage", &S::AutoAwayTimer);
        row("extended away", "Status", "chkAwayMessage", &S::AutoXAwayTimer);
        row("message sound", "Sounds", "Check1", &S::SoundOnNewMessage);
        row("on-line sound", "Sounds", "Check2", &S::SoundOnOnLine);
        row("off-line sound", "Sounds", "Check3", &S::SoundOnOffLine);
        row("accept all", "Authorizations", "rdlAuth1", &S::AuthForAll);
        row("deny all", "Authorizations", "rdlAuth2", &S::AuthDenyAll);
        row("strangers", "Authorizations", "rdlAcceptMsg2", &S::DoNotReceiveMessFromUnAuth);
        row("auto-reply", "Authorizations", "chkAutoResponce", &S::AutoReplayToUnAuth);
    }
    void aSwitchIsStoredByOkAlone()
    {
        const auto [page, control, setting] = fetched<QString, QString, Switch>();
        const bool before = f->client.settings.*setting;
        ui::find<QAbstractButton>(f->page(page), qPrintable(control))->click();
        ui::click(f->form, "cmdUndo");
        QVERIFY(!f->isOpen());
        QCOMPARE(f->client.settings.*setting, before);
        f->open();
        ui::find<QAbstractButton>(f->page(page), qPrintable(control))->click();
        ui::click(f->form, "cmdOK");
        QVERIFY(!f->isOpen());
        QCOMPARE(f->client.settings.*setting, !before);
        // Of the choices only one is on.
        const auto& settings = f->client.settings;
        QCOMPARE(int(settings.AuthForAll) + settings.AuthDenyAll + settings.AuthAskForAll, 1);
        QCOMPARE(int(settings.AcceptMessageFromAll) + settings.DoNotReceiveMessFromUnAuth, 1);
    }

    void aTextIsStoredByOkAlone_data()
    {
        columns<QString, QString, Text>("page", "control", "setting");
        using S = Settings;
        row("away", "Status", "txtIdleMessage", &S::AutoAwayTimerMsg);
        row("extended away", "Status", "txtAwayMessage", &S::AutoXAwayTimerMsg);
        row("message sound", "Sounds", "txtMsgSoundPath", &S::SoundOnNewMessageFile);
        row("on-line sound", "Sounds", "Text1", &S::SoundOnOnLineFile);
        row("off-line sound", "Sounds", "Text2", &S::SoundOnOffLineFile);
        row("resource", "Resource", "txtResource", &S::Resource);
        row("priority", "Resource", "Combo1", &S::Priority);
        row("auto-reply", "Authorizations", "txtAutoResponce", &S::AutoReplayMess);
    }
    void aTextIsStoredByOkAlone()
    {
        const auto [page, control, setting] = fetched<QString, QString, Text>();
        Settings settings;
        settings.AutoAwayTimer = settings.AutoXAwayTimer = settings.AutoReplayToUnAuth = true;
        settings.SoundOnNewMessage = settings.SoundOnOnLine = settings.SoundOnOffLine = true;
        PreferencesFixture f(settings);
        ui::type(f.page(page), qPrintable(control), "42");
        QVERIFY(f.client.settings.*setting != "42");
        ui::click(f.form, "cmdOK");
        QCOMPARE(f.client.settings.*setting, "42");
    }

    void everyCategoryHasItsPanel()
    {
        f->client.settings.UserMode = true;
        f->form->ReloadList();
        QStringList seen;
        for (const auto& category : preferences::pages()) {
            auto* panel = f->page(category.key);
            QVERIFY2(panel && panel->isVisible(), qPrintable(category.key));
            QCOMPARE(f->page(category.key), panel); // made once
            QCOMPARE(panel->objectName().endsWith("PersonalN"), category.isPersonal());
            QVERIFY(!seen.contains(panel->objectName()));
            seen += panel->objectName();
            QCOMPARE(ui::find<QLabel>(f->form, "lblPage")->text(), category.key);
        }
    }

    void aWrongValueKeepsTheFormOpen_data()
    {
        columns<QString, QString, QString, QString>("page", "control", "text", "right");
        row("no number", "Messages", "comboBalloonTime", "soon", "3600");
        row("no time", "Messages", "comboBalloonTime", "0", "1");
        row("too long", "Messages", "comboBalloonTime", "3601", "10");
        row("no resource", "Resource", "txtResource", " ", "home");
        row("no priority", "Resource", "Combo1", "high", "-128");
        row("too high", "Resource", "Combo1", "128", "127");
        row("no proxy", "Connection", "txtName", "", "proxy.example");
        row("a proxy with its port", "Connection", "txtName", "proxy.example:1080", "::1");
    }
    void aWrongValueKeepsTheFormOpen()
    {
        const auto [page, control, text, right] = fetched<QString, QString, QString, QString>();
        if (page == "Connection")
            ui::find<QAbstractButton>(f->page(page), "chkTypeS4")->click();
        ui::type(f->page(page), qPrintable(control), text);
        f->page("Sounds");
        ui::click(f->form, "cmdOK");
        QVERIFY(f->isOpen());
        QCOMPARE(f->outside.boxes.shown.size(), 1);
        QCOMPARE(f->form->currentPage(), page);
        auto* wrong = ui::find<QWidget>(f->form->panel(page), qPrintable(control));
        auto* focused = f->form->focusWidget();
        QVERIFY(focused == wrong || wrong->isAncestorOf(focused));
        QCOMPARE(f->client.settings.Resource, "BreloIM");
        QCOMPARE(f->client.settings.BalloonTime, 10000);
        f->form->close(); // asks once more
        QVERIFY(f->isOpen());
        QCOMPARE(f->outside.boxes.shown.size(), 2);
        ui::type(f->page(page), qPrintable(control), right);
        f->form->close();
        QVERIFY(!f->isOpen());
        f->open();
        ui::type(f->page("Resource"), "Combo1", "high");
        ui::click(f->form, "cmdApply");
        ui::click(f->form, "cmdUndo"); // gives it up
        QVERIFY(!f->isOpen());
    }

    void anAutomaticLogInSavesThePassword()
    {
        auto* page = f->page("Connection");
        ui::find<QCheckBox>(page, "chkAutoLogon")->click();
        QVERIFY(!ui::find<QCheckBox>(page, "Check2")->isEnabled());
        ui::type(f->page("Messages"), "comboBalloonTime", "3");
        ui::click(f->form, "cmdOK");
        QVERIFY(f->client.settings.AutoLogon && f->client.settings.SavePassword);
        QCOMPARE(f->client.settings.BalloonTime, 3000); // what is typed is not completed to 30
    }

    void tabGoesFromTheTreeToThePageToTheButtons()
    {
        QVERIFY(QTest::qWaitForWindowActive(f->form));
        f->page("Privacy");
        auto* page = f->page("Resource");
        QString visited;
        for (int steps = 0; steps < 6; ++steps) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            visited += QApplication::focusWidget()->objectName() + ' ';
        }
        QCOMPARE(visited, "txtResource Combo1 cmdRestoreRegistry cmdOK cmdApply cmdUndo ");
        QVERIFY(page->isVisible());
    }

    void whatWasNotChangedIsNotStored()
    {
        QSignalSpy applied(f->form, &PreferencesForm::applied);
        f->page("Resource");
        f->page("Connection");
        f->client.settings.Resource = "office"; // typed elsewhere in the meantime
        f->client.settings.AutoLogon = true;
        f->client.settings.AutoAwayTimerMins = 9;
        ui::click(f->form, "cmdApply");
        QCOMPARE(applied.count(), 1);
        QVERIFY(f->isOpen());
        QCOMPARE(f->client.settings.Resource, "office");
        QVERIFY(f->client.settings.AutoLogon);
        auto* status = f->page("Status"); // opened only now
        QCOMPARE(ui::find<QSpinBox>(status, "IdleMin")->value(), 9);
        ui::find<QSpinBox>(status, "IdleMin")->setValue(12);
        ui::find<QSpinBox>(status, "AwayMin")->setValue(34);
        ui::click(f->form, "cmdApply");
        QCOMPARE(f->client.settings.AutoAwayTimerMins, 12);
        QCOMPARE(f->client.settings.AutoXAwayTimerMins, 34);
    }

    void switchesThatActAtOnce()
    {
        ui::find<QCheckBox>(f->page("Messages"), "EnBalloon")->click();
        QVERIFY(!f->client.settings.BalloonEnable);
        const QString entry = paths::autostartFolder() + "/BreloIM.desktop";
        auto* start = ui::find<QCheckBox>(f->page("Connection"), "Check1");
        QVERIFY(!start->isChecked()); // nothing starts it yet
        for (const bool starts : {true, false, true}) {
            start->click();
            QCOMPARE(QFile::exists(entry), starts);
            QCOMPARE(f->client.settings.BeginAtStartup, starts);
        }
        // Somebody switched it off in the desktop's own settings.
        files::write(entry, files::read(entry) + "Hidden=true\n");
        ui::click(f->form, "cmdUndo");
        f->open();
        start = ui::find<QCheckBox>(f->page("Connection"), "Check1");
        QVERIFY(!start->isChecked());
        // Where the desktop's folder can't be made, the box says so and goes back.
        QDir(paths::autostartFolder()).removeRecursively();
        files::write(paths::autostartFolder(), {});
        start->click();
        QVERIFY(!start->isChecked());
        QCOMPARE(f->outside.boxes.shown.size(), 1);
    }

    void coloursAndFontComeFromTheDialogs()
    {
        const auto& settings = f->client.settings;
        f->outside.looks.colours = {0x123456, 0xABCDEF};
        f->outside.looks.fonts = {{"Serif", 11.5, false, true}};
        auto* page = f->page("List");
        for (const char* button : {"cmdChangeOnLine", "cmdChangeOffLine", "cmdFontOnLine"})
            ui::click(page, button);
        QCOMPARE(settings.ColorOnline, 0xBA7E55);
        const auto* shape = ui::find<QLabel>(page, "Shape1");
        QCOMPARE(shape->palette().color(QPalette::Window), QColor(0x56, 0x34, 0x12));
        ui::click(f->form, "cmdOK");
        QCOMPARE(settings.ColorOnline, 0x123456);
        QCOMPARE(settings.ColorOffline, 0xABCDEF);
        QCOMPARE(settings.CharOnLineName, "Serif");
        QCOMPARE(settings.CharOnLineSize, 11.5);
        QVERIFY(!settings.CharOnLineBold && settings.CharOnLineItalic);
        QCOMPARE(settings.CharOffLineName, "Verdana");
    }

    void aSoundNeedsItsSwitch()
    {
        auto* page = f->page("Sounds");
        auto* file = ui::find<QLineEdit>(page, "txtMsgSoundPath");
        auto* browse = ui::find<QPushButton>(page, "cmdBrowseSM");
        QVERIFY(!file->isEnabled() && !browse->isEnabled() && file->text().isEmpty());
        ui::find<QCheckBox>(page, "Check1")->click();
        QVERIFY(file->isEnabled() && browse->isEnabled());
        f->outside.files.answers = {"/tmp/ding.wav"};
        browse->click();
        browse->click(); // cancelled
        QCOMPARE(f->outside.files.asked.last(),
                 (RecordingFiles::Question{"Please Choose a WAV File", "Wave Files (*.wav)"}));
        QCOMPARE(file->text(), "/tmp/ding.wav");
        ui::click(f->form, "cmdApply");
        QCOMPARE(f->client.settings.SoundOnNewMessageFile, "/tmp/ding.wav");
        ui::find<QCheckBox>(page, "Check1")->click();
        ui::click(f->form, "cmdOK");
        QVERIFY(!f->client.settings.SoundOnNewMessage);
        QCOMPARE(f->client.settings.SoundOnNewMessageFile, "/tmp/ding.wav");
    }

    void theProxyHoldsForThisRun()
    {
        auto* page = f->page("Connection");
        ui::find<QAbstractButton>(page, "chkTypeS5")->click();
        ui::type(page, "txtName", " proxy.example ");
        ui::find<QSpinBox>(page, "txtPort")->setValue(9050);
        ui::type(page, "txtUName", "us");
        ui::type(page, "txtPWD", "pw");
        ui::click(f->form, "cmdOK");
        const auto& proxy = f->client.proxy;
        QCOMPARE(proxy.kind, ProxyServer::Kind::Socks5);
        QCOMPARE(proxy.host + ' ' + QString::number(proxy.port), "proxy.example 9050");
        QCOMPARE(proxy.user + ' ' + proxy.password, "us pw");
        f->open();
        page = f->page("Connection");
        QVERIFY(ui::find<QAbstractButton>(page, "chkTypeS5")->isChecked());
        QCOMPARE(ui::find<QSpinBox>(page, "txtPort")->value(), 9050);
        ui::find<QAbstractButton>(page, "chkTypeNone")->click();
        ui::click(f->form, "cmdOK");
        QCOMPARE(f->client.proxy.kind, ProxyServer::Kind::None);
    }

    void anAgreementToAPasswordInClearIsTakenBack()
    {
        QVERIFY(!ui::find<QWidget>(f->page("Connection"), "frPlain")->isVisible());
        f.reset();
        f.emplace();
        auto& store = f->store;
        QVERIFY(store.allowPlainPassword("b.example") && store.allowPlainPassword("[::1]:5222"));
        auto* page = f->page("Connection");
        const auto* servers = ui::find<QComboBox>(page, "cmbPlain");
        QVERIFY(servers->isVisible() && servers->count() == 2);
        ui::find<QComboBox>(page, "cmbPlain")->setCurrentText("[::1]:5222");
        ui::click(page, "cmdForbid");
        QVERIFY(!store.plainPasswordAllowed("[::1]:5222") && store.plainPasswordAllowed("b.example"));
        ui::click(page, "cmdForbid");
        QVERIFY(!store.plainPasswordAllowed("b.example") && !servers->isVisible());
    }
};

BRELO_TEST(PreferencesFormTest)
#include "PreferencesFormTest.moc"
