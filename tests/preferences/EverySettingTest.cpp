#include "preferences/forms/PreferencesForm.h"
#include "settings/CRegistry.h"
#include "settings/Paths.h"
#include "support/FakeClient.h"
#include "support/Files.h"
#include "support/LiveClient.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

namespace
{

// A control of the preferences, what it shows of a setting that isn't as it was at first, and that setting.
struct Shown {
    QString page;
    const char* control;
    QString value;
    std::function<void(Settings&)> set;
};

const Shown table[] = {
    {"Personal", "chkAlwaysOnTop", "on", [](Settings& s) { s.OnTop = true; }},
    {"Personal", "MessList", "In a meeting", [](Settings& s) { s.StatusDND = "In a meeting"; }},
    {"Personal", "MessList", "Coffe Break", [](Settings& s) { s.StatusAway = "Coffe Break"; }},
    {"Personal", "MessList", "On Line", [](Settings& s) { s.StatusAv = "On Line"; }},
    {"Connection", "Check2", "on", [](Settings& s) { s.SavePassword = true; }},
    {"Connection", "chkAutoLogon", "on", [](Settings& s) { s.AutoLogon = s.SavePassword = true; }},
    {"Connection", "Check1", "on",
     [](Settings&) { // the desktop's list of programs counts
         CRegistry registry;
         QVERIFY(registry.openOrCreateKey() && registry.setStringValue("BreloIM", "x"));
     }},
    {"Messages", "chkOldWindow", "off", [](Settings& s) { s.CurrentWindowOnTop = false; }},
    {"Messages", "chkbringtofront", "on", [](Settings& s) { s.NewWindowOnTop = true; }},
    {"Messages", "chkError", "on", [](Settings& s) { s.CheckError = true; }},
    {"Messages", "chkGateways", "on", [](Settings& s) { s.CheckGateways = true; }},
    {"Messages", "chkMSN", "on", [](Settings& s) { s.CheckHotmail = true; }},
    {"Messages", "chkYAHOO", "on", [](Settings& s) { s.CheckYahooMail = true; }},
    {"Messages", "comboBalloonTime", "42", [](Settings& s) { s.BalloonTime = 42'000; }},
    {"Messages", "EnBalloon", "off", [](Settings& s) { s.BalloonEnable = false; }},
    {"List", "Shape1", "#123456", [](Settings& s) { s.ColorOnline = 0x563412; }},
    {"List", "Shape2", "#654321", [](Settings& s) { s.ColorOffline = 0x214365; }},
    {"List", "Text1", "Serif, 11.5 italic",
     [](Settings& s) {
         s.CharOnLineName = "Serif";
         s.CharOnLineSize = 11.5;
         s.CharOnLineBold = false;
         s.CharOnLineItalic = true;
     }},
    {"Sounds", "Check1", "on", [](Settings& s) { s.SoundOnNewMessage = true; }},
    {"Sounds", "txtMsgSoundPath", "/a.wav", [](Settings& s) { s.SoundOnNewMessageFile = "/a.wav"; }},
    {"Sounds", "Check2", "on", [](Settings& s) { s.SoundOnOnLine = true; }},
    {"Sounds", "Text1", "/b.wav", [](Settings& s) { s.SoundOnOnLineFile = "/b.wav"; }},
    {"Sounds", "Check3", "on", [](Settings& s) { s.SoundOnOffLine = true; }},
    {"Sounds", "Text2", "/c.wav", [](Settings& s) { s.SoundOnOffLineFile = "/c.wav"; }},
    {"Status", "chkIdleMessage", "on", [](Settings& s) { s.AutoAwayTimer = true; }},
    {"Status", "IdleMin", "12", [](Settings& s) { s.AutoAwayTimerMins = 12; }},
    {"Status", "txtIdleMessage", "a <b> & \"c\"", [](Settings& s) { s.AutoAwayTimerMsg = "a <b> & \"c\""; }},
    {"Status", "chkAwayMessage", "on", [](Settings& s) { s.AutoXAwayTimer = true; }},
    {"Status", "AwayMin", "34", [](Settings& s) { s.AutoXAwayTimerMins = 34; }},
    {"Status", "txtAwayMessage", "x; y=z %1", [](Settings& s) { s.AutoXAwayTimerMsg = "x; y=z %1"; }},
    {"Resource", "txtResource", "orchard", [](Settings& s) { s.Resource = "orchard"; }},
    {"Resource", "Combo1", "-7", [](Settings& s) { s.Priority = "-7"; }},
    {"Authorizations", "rdlAuth1", "on",
     [](Settings& s) {
         s.AuthForAll = true;
         s.AuthAskForAll = false;
     }},
    {"Authorizations", "rdlAcceptMsg2", "on",
     [](Settings& s) {
         s.DoNotReceiveMessFromUnAuth = true;
         s.AcceptMessageFromAll = false;
     }},
    {"Authorizations", "chkAutoResponce", "on", [](Settings& s) { s.AutoReplayToUnAuth = true; }},
    {"Authorizations", "txtAutoResponce", "Later.", [](Settings& s) { s.AutoReplayMess = "Later."; }},
};

QString styleOf(const QFont& font)
{
    return QString(font.bold() ? " bold" : "") + (font.italic() ? " italic" : "");
}

// The states whose texts the panel chooses among, by the text of the row.
void chooseState(QWidget* panel, const QString& text)
{
    auto* states = ui::find<QComboBox>(panel, "ComboStatus");
    auto* texts = ui::find<QListWidget>(panel, "MessList");
    for (int state = 0; state < states->count(); ++state) {
        states->setCurrentIndex(state);
        if (!texts->findItems(text, Qt::MatchExactly).isEmpty())
            return;
    }
}

QString shown(QWidget* panel, const Shown& row)
{
    auto* control = ui::find<QWidget>(panel, row.control);
    if (auto* list = qobject_cast<QListWidget*>(control)) {
        chooseState(panel, row.value);
        return list->currentItem() ? list->currentItem()->text() : QString();
    }
    if (auto* button = qobject_cast<QAbstractButton*>(control))
        return button->isChecked() ? "on" : "off";
    if (auto* combo = qobject_cast<QComboBox*>(control))
        return combo->currentText();
    if (auto* box = qobject_cast<QSpinBox*>(control))
        return QString::number(box->value());
    if (auto* sample = qobject_cast<QLabel*>(control))
        return sample->palette().color(QPalette::Window).name();
    auto* edit = qobject_cast<QLineEdit*>(control);
    return edit->text() + (row.page == "List" ? styleOf(edit->font()) : QString());
}

// As a person would.
void put(QWidget* panel, const Shown& row)
{
    auto* control = ui::find<QWidget>(panel, row.control);
    if (auto* list = qobject_cast<QListWidget*>(control)) {
        chooseState(panel, row.value);
        list->setCurrentItem(list->findItems(row.value, Qt::MatchExactly).value(0));
    } else if (qobject_cast<QAbstractButton*>(control)) {
        if (shown(panel, row) != row.value)
            qobject_cast<QAbstractButton*>(control)->click();
    } else if (auto* box = qobject_cast<QSpinBox*>(control)) {
        box->setValue(row.value.toInt());
    } else if (row.page == "List") {
        ui::click(panel, qstrcmp(row.control, "Shape1") == 0   ? "cmdChangeOnLine"
                         : qstrcmp(row.control, "Shape2") == 0 ? "cmdChangeOffLine"
                                                               : "cmdFontOnLine");
    } else {
        ui::type(panel, row.control, row.value);
    }
}

template <typename AnyClient>
QWidget* page(AnyClient& client, const QString& key)
{
    client.ui->windows.preferences.show(key);
    return qobject_cast<PreferencesForm*>(client.form("PreferencesForm"))->panel(key);
}

} // namespace

// Every setting that the preferences have a place for, through the real forms.
class EverySettingTest : public QObject
{
    Q_OBJECT
private slots:
    void showsInItsPanel_data()
    {
        columns<int>("row");
        for (int index = 0; index < int(std::size(table)); ++index)
            row(qPrintable(table[index].page + ' ' + table[index].control + ' ' + table[index].value), index);
    }
    void showsInItsPanel()
    {
        QFETCH(int, row);
        const Shown& wanted = table[row];
        Settings others; // whose switches let the fields of files and texts show
        others.SoundOnNewMessage = others.SoundOnOnLine = others.SoundOnOffLine = true;
        Settings settings = wanted.page == "Sounds" && wanted.value.startsWith('/') ? others : Settings();
        FakeClient client;
        QVERIFY(shown(page(client, wanted.page), wanted) != wanted.value);
        ui::click(client.form("PreferencesForm"), "cmdUndo");
        wanted.set(settings);
        client.client.settings = settings;
        QCOMPARE(shown(page(client, wanted.page), wanted), wanted.value);
    }

    void comesBackAfterTheProgramWasEnded()
    {
        std::map<QString, QByteArray> kept;
        const auto files = [] {
            return QStringList{paths::settingsFile(), paths::configFolder() + "/StatusMsgs.xml",
                               paths::autostartFolder() + "/BreloIM.desktop"};
        };
        {
            FakeClient client;
            client.world.looks.colours = {0x563412, 0x214365};
            client.world.looks.fonts = {{"Serif", 11.5, false, true}};
            for (const auto& row : table)
                put(page(client, row.page), row);
            ui::click(client.form("PreferencesForm"), "cmdOK");
            QVERIFY(!client.form("PreferencesForm"));
            client.ui->end.exitProgram();
            for (const auto& file : files())
                kept[QFileInfo(file).fileName()] = files::read(file);
        }
        LiveClient client([&](SettingsStore&) {
            for (const auto& file : files())
                files::write(file, kept[QFileInfo(file).fileName()]);
        });
        for (const auto& row : table) {
            const QString got = shown(page(client, row.page), row);
            QVERIFY2(got == row.value, qPrintable(row.page + ' ' + row.control + ": " + got));
        }
        QCOMPARE(client.client.settings.BeginAtStartup, true);
    }
};

BRELO_TEST(EverySettingTest)
#include "EverySettingTest.moc"
