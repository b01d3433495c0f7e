#include "PreferencesFixture.h"
#include "preferences/PreferenceTree.h"
#include "settings/Paths.h"
#include "support/TestRunner.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTreeWidget>

using Switch = bool Settings::*;
using Text = QString Settings::*;
Q_DECLARE_METATYPE(Switch)
Q_DECLARE_METATYPE(Text)

class PreferencesFormTest : public QObject
{
    Q_OBJECT

private slots:
    void aSwitchIsStoredByOkAlone_data();
    void aSwitchIsStoredByOkAlone();
    void aTextIsStoredByOkAlone_data();
    void aTextIsStoredByOkAlone();
    void everyCategoryHasItsPanel();
    void aWrongValueKeepsTheFormOpen_data();
    void aWrongValueKeepsTheFormOpen();
    void aPageThatWasNotOpenedStoresNothing();
    void switchesThatActAtOnce();
    void coloursAndFontComeFromTheDialogs();
    void aSoundNeedsItsSwitch();
    void theProxyHoldsForThisRun();
};

void PreferencesFormTest::aSwitchIsStoredByOkAlone_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QByteArray>("control");
    QTest::addColumn<Switch>("setting");
    const auto row = [](const char* page, const char* control, Switch setting) {
        QTest::addRow("%s %s", page, control) << QString::fromLatin1(page) << QByteArray(control) << setting;
    };
    row("Connection", "chkAutoLogon", &Settings::AutoLogon);
    row("Connection", "Check2", &Settings::SavePassword);
    row("Messages", "chkOldWindow", &Settings::CurrentWindowOnTop);
    row("Messages", "chkbringtofront", &Settings::NewWindowOnTop);
    row("Messages", "chkError", &Settings::CheckError);
    row("Messages", "chkGateways", &Settings::CheckGateways);
    row("Messages", "chkMSN", &Settings::CheckHotmail);
    row("Messages", "chkYAHOO", &Settings::CheckYahooMail);
    row("Status", "chkIdleMessage", &Settings::AutoAwayTimer);
    row("Status", "chkAwayMessage", &Settings::AutoXAwayTimer);
    row("Sounds", "Check1", &Settings::SoundOnNewMessage);
    row("Sounds", "Check2", &Settings::SoundOnOnLine);
    row("Sounds", "Check3", &Settings::SoundOnOffLine);
    row("Authorizations", "rdlAuth1", &Settings::AuthForAll);
    row("Authorizations", "rdlAuth2", &Settings::AuthDenyAll);
    row("Authorizations", "rdlAcceptMsg2", &Settings::DoNotReceiveMessFromUnAuth);
    row("Authorizations", "chkAutoResponce", &Settings::AutoReplayToUnAuth);
}

void PreferencesFormTest::aSwitchIsStoredByOkAlone()
{
    QFETCH(QString, page);
    QFETCH(QByteArray, control);
    QFETCH(Switch, setting);
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

void PreferencesFormTest::aTextIsStoredByOkAlone_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QByteArray>("control");
    QTest::addColumn<Text>("setting");
    const auto row = [](const char* page, const char* control, Text setting) {
        QTest::addRow("%s %s", page, control) << QString::fromLatin1(page) << QByteArray(control) << setting;
    };
    row("Status", "txtIdleMessage", &Settings::AutoAwayTimerMsg);
    row("Status", "txtAwayMessage", &Settings::AutoXAwayTimerMsg);
    row("Sounds", "txtMsgSoundPath", &Settings::SoundOnNewMessageFile);
    row("Sounds", "Text1", &Settings::SoundOnOnLineFile);
    row("Sounds", "Text2", &Settings::SoundOnOffLineFile);
    row("Resource", "txtResource", &Settings::Resource);
    row("Resource", "Combo1", &Settings::Priority);
    row("Authorizations", "txtAutoResponce", &Settings::AutoReplayMess);
}

void PreferencesFormTest::aTextIsStoredByOkAlone()
{
    QFETCH(QString, page);
    QFETCH(QByteArray, control);
    QFETCH(Text, setting);
    Settings settings;
    settings.AutoAwayTimer = settings.AutoXAwayTimer = settings.AutoReplayToUnAuth = true;
    settings.SoundOnNewMessage = settings.SoundOnOnLine = settings.SoundOnOffLine = true;
    PreferencesFixture f(settings);
    ui::type(f.page(page), control.constData(), QStringLiteral("42"));
    QVERIFY(f.client.settings.*setting != QStringLiteral("42"));
    ui::click(f.form, "cmdOK");
    QCOMPARE(f.client.settings.*setting, QStringLiteral("42"));
}

void PreferencesFormTest::everyCategoryHasItsPanel()
{
    PreferencesFixture f;
    QStringList seen;
    for (const auto& category : preferences::categories()) {
        auto* panel = f.page(category.key);
        QVERIFY2(panel && panel->isVisible(), qPrintable(category.key));
        QCOMPARE(f.page(category.key), panel); // made once
        QCOMPARE(preferences::isPersonal(panel->objectName()), category.personal);
        QVERIFY(!seen.contains(panel->objectName()));
        seen += panel->objectName();
        QCOMPARE(ui::find<QLabel>(f.form, "lblPage")->text(), category.key);
    }
    QVERIFY(!f.form->showPage(QStringLiteral("Server management")));
}

void PreferencesFormTest::aWrongValueKeepsTheFormOpen_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QByteArray>("control");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("right");
    const auto row = [](const char* page, const char* control, const char* text, const char* right) {
        QTest::addRow("%s '%s'", control, text) << QString::fromLatin1(page) << QByteArray(control)
                                                << QString::fromLatin1(text) << QString::fromLatin1(right);
    };
    row("Messages", "comboBalloonTime", "soon", "3600");
    row("Messages", "comboBalloonTime", "0", "1");
    row("Messages", "comboBalloonTime", "3601", "10");
    row("Resource", "txtResource", " ", "home");
    row("Resource", "Combo1", "high", "-128");
    row("Resource", "Combo1", "128", "127");
    row("Connection", "txtName", "", "proxy.example");
}

void PreferencesFormTest::aWrongValueKeepsTheFormOpen()
{
    QFETCH(QString, page);
    QFETCH(QByteArray, control);
    QFETCH(QString, text);
    QFETCH(QString, right);
    PreferencesFixture f;
    if (page == QStringLiteral("Connection"))
        ui::find<QAbstractButton>(f.page(page), "chkTypeS4")->click();
    ui::type(f.page(page), control.constData(), text);
    f.page(QStringLiteral("Sounds"));
    ui::click(f.form, "cmdOK");
    QVERIFY(f.isOpen());
    QCOMPARE(f.outside.boxes.shown.size(), 1);
    QCOMPARE(ui::find<QTreeWidget>(f.form, "TreeView1")->currentItem()->text(0), page);
    QCOMPARE(f.client.settings.Resource, QStringLiteral("BreloIM"));
    QCOMPARE(f.client.settings.BalloonTime, 10000);
    f.form->close(); // asks once more
    QVERIFY(f.isOpen());
    QCOMPARE(f.outside.boxes.shown.size(), 2);
    ui::type(f.page(page), control.constData(), right);
    f.form->close();
    QVERIFY(!f.isOpen());
    f.open();
    ui::type(f.page(QStringLiteral("Resource")), "Combo1", QStringLiteral("high"));
    ui::click(f.form, "cmdApply");
    ui::click(f.form, "cmdUndo"); // gives it up
    QVERIFY(!f.isOpen());
}

void PreferencesFormTest::aPageThatWasNotOpenedStoresNothing()
{
    PreferencesFixture f;
    QSignalSpy applied(f.form, &PreferencesForm::applied);
    f.page(QStringLiteral("Resource"));
    f.client.settings.AutoLogon = true;
    f.client.settings.AutoAwayTimerMins = 9;
    ui::click(f.form, "cmdApply");
    QCOMPARE(applied.count(), 1);
    QVERIFY(f.isOpen());
    QVERIFY(f.client.settings.AutoLogon);
    auto* status = f.page(QStringLiteral("Status"));
    QCOMPARE(ui::find<QSpinBox>(status, "IdleMin")->value(), 9);
    ui::find<QSpinBox>(status, "IdleMin")->setValue(12);
    ui::find<QSpinBox>(status, "AwayMin")->setValue(34);
    ui::click(f.form, "cmdApply");
    QCOMPARE(f.client.settings.AutoAwayTimerMins, 12);
    QCOMPARE(f.client.settings.AutoXAwayTimerMins, 34);
}

void PreferencesFormTest::switchesThatActAtOnce()
{
    PreferencesFixture f;
    ui::find<QCheckBox>(f.page(QStringLiteral("Messages")), "EnBalloon")->click();
    QVERIFY(!f.client.settings.BalloonEnable);
    auto* page = f.page(QStringLiteral("Connection"));
    const QString entry = paths::autostartFolder() + QStringLiteral("/BreloIM.desktop");
    auto* start = ui::find<QCheckBox>(page, "Check1");
    QVERIFY(!start->isChecked()); // nothing starts it yet
    start->click();
    QVERIFY(QFile::exists(entry));
    QVERIFY(f.client.settings.BeginAtStartup);
    start->click();
    QVERIFY(!QFile::exists(entry));
    QVERIFY(!f.client.settings.BeginAtStartup);
    // Where the desktop's folder can't be made, the box says so and goes back.
    QDir(paths::autostartFolder()).removeRecursively();
    QFile inTheWay(paths::autostartFolder());
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    start->click();
    QVERIFY(!start->isChecked());
    QCOMPARE(f.outside.boxes.shown.size(), 1);
}

void PreferencesFormTest::coloursAndFontComeFromTheDialogs()
{
    PreferencesFixture f;
    f.outside.looks.colours = {0x123456, 0xABCDEF};
    f.outside.looks.fonts = {{QStringLiteral("Serif"), 11.5, false, true}};
    auto* page = f.page(QStringLiteral("List"));
    for (const char* button : {"cmdChangeOnLine", "cmdChangeOffLine", "cmdFontOnLine"})
        ui::find<QAbstractButton>(page, button)->click();
    QCOMPARE(f.client.settings.ColorOnline, 0xBA7E55);
    QCOMPARE(ui::find<QLabel>(page, "Shape1")->palette().color(QPalette::Window), QColor(0x56, 0x34, 0x12));
    ui::click(f.form, "cmdOK");
    const auto& settings = f.client.settings;
    QCOMPARE(settings.ColorOnline, 0x123456);
    QCOMPARE(settings.ColorOffline, 0xABCDEF);
    QCOMPARE(settings.CharOnLineName, QStringLiteral("Serif"));
    QCOMPARE(settings.CharOnLineSize, 11.5);
    QVERIFY(!settings.CharOnLineBold && settings.CharOnLineItalic);
    QCOMPARE(settings.CharOffLineName, QStringLiteral("Verdana"));
}

void PreferencesFormTest::aSoundNeedsItsSwitch()
{
    PreferencesFixture f;
    auto* page = f.page(QStringLiteral("Sounds"));
    auto* file = ui::find<QLineEdit>(page, "txtMsgSoundPath");
    auto* browse = ui::find<QPushButton>(page, "cmdBrowseSM");
    QVERIFY(!file->isEnabled() && !browse->isEnabled() && file->text().isEmpty());
    ui::find<QCheckBox>(page, "Check1")->click();
    QVERIFY(file->isEnabled() && browse->isEnabled());
    f.outside.files.answers = {QStringLiteral("/tmp/ding.wav")};
    browse->click();
    browse->click(); // cancelled
    QCOMPARE(file->text(), QStringLiteral("/tmp/ding.wav"));
    ui::click(f.form, "cmdApply");
    QCOMPARE(f.client.settings.SoundOnNewMessageFile, QStringLiteral("/tmp/ding.wav"));
    ui::find<QCheckBox>(page, "Check1")->click();
    ui::click(f.form, "cmdOK");
    QVERIFY(!f.client.settings.SoundOnNewMessage);
    QCOMPARE(f.client.settings.SoundOnNewMessageFile, QStringLiteral("/tmp/ding.wav"));
}

void PreferencesFormTest::theProxyHoldsForThisRun()
{
    PreferencesFixture f;
    auto* page = f.page(QStringLiteral("Connection"));
    ui::find<QAbstractButton>(page, "chkTypeS5")->click();
    ui::type(page, "txtName", QStringLiteral(" proxy.example "));
    ui::find<QSpinBox>(page, "txtPort")->setValue(9050);
    ui::type(page, "txtUName", QStringLiteral("us"));
    ui::type(page, "txtPWD", QStringLiteral("pw"));
    ui::click(f.form, "cmdOK");
    const auto& proxy = f.client.proxy;
    QCOMPARE(proxy.kind, ProxyServer::Kind::Socks5);
    QCOMPARE(proxy.host + u' ' + QString::number(proxy.port), QStringLiteral("proxy.example 9050"));
    QCOMPARE(proxy.user + u' ' + proxy.password, QStringLiteral("us pw"));
    f.open();
    page = f.page(QStringLiteral("Connection"));
    QVERIFY(ui::find<QAbstractButton>(page, "chkTypeS5")->isChecked());
    QCOMPARE(ui::find<QSpinBox>(page, "txtPort")->value(), 9050);
    ui::find<QAbstractButton>(page, "chkTypeNone")->click();
    ui::click(f.form, "cmdOK");
    QCOMPARE(f.client.proxy.kind, ProxyServer::Kind::None);
}

BRELO_TEST(PreferencesFormTest)
#include "PreferencesFormTest.moc"
