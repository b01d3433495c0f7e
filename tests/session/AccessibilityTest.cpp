#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "contacts/forms/RosterView.h"
#include "session/forms/CertificateForm.h"
#include "session/forms/SignInForm.h"
#include "settings/CRegistry.h"
#include "support/FakeClient.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

#include <algorithm>

namespace
{

using Open = void (*)(FakeClient&);
using Holds = std::function<bool(FakeClient&)>;

const QString juliet = "juliet@montague.example";

void openConversation(FakeClient& c)
{
    c.ui->windows.messages.openConversation(juliet, true);
    c.client.Core->tick();
}

void openCard(FakeClient& c, const QString& jid)
{
    c.inject(QString("<iq type=\"result\" from=\"%1\"><vCard xmlns=\"vcard-temp\"/></iq>").arg(jid));
}

// The page is the word behind the form's name.
void openPreferences(FakeClient& c)
{
    c.ui->windows.preferences.show(QString(QTest::currentDataTag()).section(' ', 1));
}

// Every window of the program and how a client that is signed in gets it: the form's name, and a word behind
// it where the form has several looks.
const std::pair<const char*, Open> windows[] = {
    {"SignInForm", [](FakeClient&) {}},
    {"LoggingInForm", [](FakeClient& c) { c.ui->windows.session.progress(); }},
    {"CertificateForm", [](FakeClient& c) { new CertificateForm(CertificateInfo(), &c.signInForm()); }},
    {"AboutForm", [](FakeClient& c) { c.ui->windows.session.showAbout(); }},
    {"RosterForm", [](FakeClient&) {}},
    {"AddGroupForm", [](FakeClient& c) { ui::choose(c.rosterForm(), "mRosterFCreate"); }},
    {"MoveFriendForm",
     [](FakeClient& c) {
         c.rosterForm()->Roster1->view().keyboardSearch("Juliet");
         emit c.rosterForm()->Roster1->moveContactRequested();
     }},
    {"ShowInTrayForm", [](FakeClient& c) { c.ui->windows.contacts.showInTray(); }},
    {"MessageForm", openConversation},
    {"LogMessageForm",
     [](FakeClient& c) {
         openConversation(c);
         ui::choose(c.form("MessageForm"), "mnustroldconv");
     }},
    {"HeadLineForm", [](FakeClient& c) { c.ui->windows.messages.notices(); }},
    {"authorizeForm",
     [](FakeClient& c) { c.inject("<presence type=\"subscribe\" from=\"par&amp;is@verona.example\"/>"); }},
    {"VCardForm own", [](FakeClient& c) { openCard(c, "romeo@montague.example"); }},
    {"PreferencesForm Personal", openPreferences},
    {"PreferencesForm Connection", openPreferences},
    {"PreferencesForm Messages", openPreferences},
    {"PreferencesForm Privacy", openPreferences},
    {"PreferencesForm List", openPreferences},
    {"PreferencesForm Sounds", openPreferences},
    {"PreferencesForm Status", openPreferences},
    {"PreferencesForm Resource", openPreferences},
    {"PreferencesForm Authorizations", openPreferences},
    {"PreferencesForm Gateways", openPreferences},
    {"RestoreRegForm",
     [](FakeClient& c) {
         c.ui->windows.preferences.show("Personal");
         ui::click(c.form("PreferencesForm"), "cmdRestoreRegistry");
     }},
    {"VCardForm another's", [](FakeClient& c) { openCard(c, "jul&amp;iet@x"); }},
};

QString formOf(const char* row)
{
    return QString(row).section(' ', 0, 0);
}

// A client with the window of the present row on screen.
struct Shown : FakeClient {
    QWidget* window;
    Shown()
    {
        signIn();
        (*static_cast<Open*>(QTest::qData("open", qMetaTypeId<Open>())))(*this);
        const QString name = formOf(QTest::currentDataTag());
        window = form(qPrintable(name));
        if (!window)
            window = ui::find<QWidget>(&signInForm(), qPrintable(name)); // a dialog of the sign-in window's
        window->show();
    }
};

QList<QWidget*> visibleControls(const QWidget* window)
{
    auto controls = window->findChildren<QWidget*>();
    controls.removeIf([window](QWidget* control) { return !control->isVisibleTo(window); });
    return controls;
}

// What the keys have to reach; inner parts of a control pass the focus to it.
bool takesFocus(QWidget* control)
{
    const auto* radio = qobject_cast<QRadioButton*>(control); // the arrows move within its group
    return control->isEnabled() && control->focusPolicy() != Qt::NoFocus && !control->focusProxy() &&
           (!radio || radio->isChecked());
}

QString described(QWidget* control)
{
    return control->metaObject()->className() + (' ' + control->objectName());
}

QStringList nameless(QWidget* window)
{
    QStringList found;
    for (auto* control : visibleControls(window)) {
        const bool speaks = takesFocus(control) || qobject_cast<QAbstractButton*>(control);
        if (speaks && QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name).isEmpty())
            found += described(control);
    }
    return found;
}

QStringList captions(QWidget* control)
{
    QStringList found;
    if (auto* button = qobject_cast<QAbstractButton*>(control))
        found += button->text();
    else if (auto* label = qobject_cast<QLabel*>(control); label && label->buddy())
        found += label->text();
    else if (auto* tabs = qobject_cast<QTabBar*>(control)) {
        for (int index = 0; index < tabs->count(); ++index)
            found += tabs->tabText(index);
    } else if (qobject_cast<QMenuBar*>(control)) {
        for (const auto* action : control->actions())
            found += action->text();
    }
    return found;
}

// Boxes and options that no key chooses.
QStringList withoutKey(QWidget* window)
{
    QStringList found;
    for (auto* control : visibleControls(window)) {
        auto* button = qobject_cast<QAbstractButton*>(control);
        const bool option = qobject_cast<QCheckBox*>(control) || qobject_cast<QRadioButton*>(control);
        if (option && QKeySequence::mnemonic(button->text()).isEmpty())
            found += described(control);
    }
    return found;
}

// What would be read out with its markup.
QStringList markup(QWidget* window)
{
    static const QRegularExpression marked("</?[a-z]+|&[a-z#0-9]+;");
    QStringList found;
    for (auto* control : visibleControls(window)) {
        for (const auto part : {QAccessible::Name, QAccessible::Description}) {
            const QString read = QAccessible::queryAccessibleInterface(control)->text(part);
            if (read.contains(marked))
                found += described(control) + ": " + read;
        }
    }
    return found;
}

// Mnemonics that stand twice.
QStringList clashing(QWidget* window)
{
    QHash<QKeySequence, QStringList> users;
    for (auto* control : visibleControls(window)) {
        for (const auto& caption : captions(control))
            users[QKeySequence::mnemonic(caption)] += caption;
    }
    users.remove(QKeySequence());
    QStringList found;
    for (const auto& sharing : std::as_const(users)) {
        if (sharing.size() > 1)
            found += sharing.join('/');
    }
    return found;
}

// Controls that Tab doesn't come to on its way round the window.
QStringList unreached(QWidget* window)
{
    const auto controls = visibleControls(window);
    auto missing = controls;
    missing.removeIf([](QWidget* control) { return !takesFocus(control); });
    for (auto steps = controls.size(); steps >= 0 && !missing.isEmpty(); --steps) {
        auto* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : window, Qt::Key_Tab);
        missing.removeOne(QApplication::focusWidget());
    }
    QStringList found;
    for (auto* control : std::as_const(missing))
        found += described(control);
    return found;
}

// Labels whose text is higher than they are.
QStringList cut(QWidget* window)
{
    QStringList found;
    for (auto* label : window->findChildren<QLabel*>()) {
        const int needed =
            label->wordWrap() ? label->heightForWidth(label->width()) : label->minimumSizeHint().height();
        if (label->isVisibleTo(window) && label->height() < needed)
            found += described(label);
    }
    return found;
}

} // namespace

// What someone needs who uses the keys or a screen reader, of every window.
class AccessibilityTest : public QObject
{
    Q_OBJECT

private slots:
    void everyWindowHasItsRow()
    {
        QDirIterator files(qEnvironmentVariable("BRELO_SOURCE_DIR") + "/src", {"*Form.ui"}, QDir::Files,
                           QDirIterator::Subdirectories);
        QVERIFY(files.hasNext());
        while (files.hasNext()) {
            const QString form = QFileInfo(files.next()).baseName();
            const auto isOfForm = [&](const auto& row) { return formOf(row.first) == form; };
            QVERIFY2(std::ranges::any_of(windows, isOfForm), qPrintable(form));
        }
    }

    void theKeysAndTheReaderFindEverything_data()
    {
        columns<Open>("open");
        for (const auto& [name, open] : windows)
            row(name, open);
    }
    void theKeysAndTheReaderFindEverything()
    {
        const Shown client;
        client.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(client.window));
        QCOMPARE(nameless(client.window).join(", "), QString());
        QCOMPARE(withoutKey(client.window).join(", "), QString());
        QCOMPARE(markup(client.window).join(", "), QString());
        QCOMPARE(clashing(client.window).join(", "), QString());
        QCOMPARE(unreached(client.window).join(", "), QString());
    }

    void whatAReaderTogglesIsObeyed_data()
    {
        columns<Open, QString, Holds>("open", "control", "holds");
        const auto setting = [](bool Settings::*member) {
            return Holds([member](FakeClient& c) { return c.client.settings.*member; });
        };
        row("SignInForm", Open([](FakeClient&) {}), "Check1", setting(&Settings::SavePassword));
        row("SignInForm automatic", Open([](FakeClient&) {}), "Check2", setting(&Settings::AutoLogon));
        row("SignInForm secure", Open([](FakeClient&) {}), "Check3", setting(&Settings::SSL));
        row("PreferencesForm Messages", Open(openPreferences), "EnBalloon",
            setting(&Settings::BalloonEnable));
        row("PreferencesForm Connection", Open(openPreferences), "Check1",
            Holds([](FakeClient&) { return CRegistry::hasValue("BreloIM"); }));
        row("PreferencesForm Personal", Open(openPreferences), "chkAlwaysOnTop", setting(&Settings::OnTop));
        row("RosterForm", Open([](FakeClient&) {}), "Toolbar1Button4", setting(&Settings::ShowOnlineUsers));
        row("RosterForm connection", Open([](FakeClient&) {}), "Toolbar1Button1",
            Holds([](FakeClient& c) { return c.client.isConnected(); }));
        row("MessageForm", Open(openConversation), "Toolbar1Return", Holds([](FakeClient& c) {
                return c.form("MessageForm")->findChild<QAction*>("mnuToolsNoChar13")->isChecked();
            }));
    }
    void whatAReaderTogglesIsObeyed()
    {
        Shown client;
        QFETCH(QString, control);
        const auto holds = *static_cast<Holds*>(QTest::qData("holds", qMetaTypeId<Holds>()));
        const bool before = holds(client);
        QWidget* button = client.window->findChild<QAbstractButton*>(control);
        if (auto* action = client.window->findChild<QAction*>(control))
            button = client.window->findChild<QToolBar*>("Toolbar1")->widgetForAction(action);
        auto* assistive = QAccessible::queryAccessibleInterface(button)->actionInterface();
        QVERIFY(assistive->actionNames().contains(QAccessibleActionInterface::toggleAction()));
        assistive->doAction(QAccessibleActionInterface::toggleAction());
        QCOMPARE(holds(client), !before);
    }

    void nothingIsCutWithABigFont_data() { theKeysAndTheReaderFindEverything_data(); }
    void nothingIsCutWithABigFont()
    {
        const QFont usual = QApplication::font();
        const auto restore = qScopeGuard([&] { QApplication::setFont(usual); });
        QFont big = usual;
        big.setPointSize(16);
        QApplication::setFont(big);
        const Shown client;
        QVERIFY(QTest::qWaitForWindowExposed(client.window));
        QCOMPARE(cut(client.window).join(", "), QString());
        QVERIFY(client.window->screen()->availableGeometry().contains(client.window->geometry()));
    }
};

BRELO_TEST(AccessibilityTest)
#include "AccessibilityTest.moc"
