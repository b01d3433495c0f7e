#include "preferences/forms/PreferencePages.h"
#include "session/SessionFixture.h"
#include "session/forms/CertificateForm.h"
#include "settings/CRegistry.h"

#include <algorithm>

namespace
{

using Holds = std::function<bool(FakeClient&)>;

void openConversation(FakeClient& c)
{
    c.ui->windows.messages.openConversation("juliet@montague.example", true);
    c.client.Core->tick();
}

void openCard(FakeClient& c, const QString& jid)
{
    c.inject(QString("<iq type=\"result\" from=\"%1\"><vCard xmlns=\"vcard-temp\"/></iq>").arg(jid));
}

void openRoom(FakeClient& c)
{
    const QString answer = "<iq type='result' id='%1' from='verse@rooms.x'>"
                           "<query xmlns='jabber:iq:conference'><name>Verse</name>%2</query></iq>";
    c.inject(answer.arg("VRX_CONF?", ""));
    c.inject(answer.arg("VRX_CONF_DATA", "<id>verse@rooms.x/1</id><nick>a&amp;b</nick>"));
}

void openSearch(FakeClient& c)
{
    ui::choose(c.rosterForm(), "mRosterFFind");
}

void openSearchForm(FakeClient& c)
{
    c.ui->windows.services.search.ask("users.x");
    const QString answer =
        "<iq type='result' id='%1' from='users.x'><query xmlns='jabber:iq:search'>%2</query></iq>";
    c.inject(answer.arg("VRX_SEARCH_INIT", "<instructions>" +
                                               QString("Fill in what you know. ").repeated(30) +
                                               "</instructions><first/><last>&lt;b&gt;</last>"));
    ui::click(c.form("SearchForm"), "CmdSearch");
    c.inject(answer.arg("VRX_SEARCH_RESULT", "<item jid='a&amp;b@x'><first>&lt;b&gt;A</first></item>"));
}

// The page stands behind the form's name, up to a comma.
void openPreferences(FakeClient& c)
{
    c.client.settings.UserMode = true;
    c.ui->windows.preferences.show(QString(QTest::currentDataTag()).section(' ', 1).section(',', 0, 0));
}

void openGateway(FakeClient& c)
{
    c.inject("<iq type='result'><query xmlns='jabber:iq:agents'><agent jid='a&amp;b.x'><name>A &amp; B</name>"
             "<transport/></agent></query></iq>");
    c.ui->windows.preferences.show("a&b.x");
    const QString line = "All that the gateway says of itself. ";
    c.inject("<iq type='result' id='transportquery' from='a&amp;b.x'><query xmlns='jabber:iq:register'>"
             "<instructions>" +
             line.repeated(40) + "</instructions><username/><password/></query></iq>");
}

// Every window of the program but the pages of the preferences, and how a client that is signed in gets it:
// the form's name, and a word behind it where the form has several looks.
const std::pair<QString, Act> windows[] = {
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
    {"PreferencesForm of a gateway", openGateway},
    {"RestoreRegForm",
     [](FakeClient& c) {
         c.ui->windows.preferences.show("Personal");
         ui::click(c.form("PreferencesForm"), "cmdRestoreRegistry");
     }},
    {"GroupchatWindowForm", openRoom},
    {"JoinConferenceForm", [](FakeClient& c) { c.ui->windows.groups.showJoin(); }},
    {"JoinConferenceForm invited",
     [](FakeClient& c) {
         c.inject("<message from='romeo@x'><x xmlns='jabber:x:conference' jid='a&amp;b@rooms.x'/></message>");
     }},
    {"InviteForm", [](FakeClient& c) { c.ui->windows.groups.showInvite("juliet@montague.example", {}); }},
    {"SearchAddForm", openSearch},
    {"SearchAddForm waiting",
     [](FakeClient& c) {
         openSearch(c);
         c.world.boxes.inputs = {"x"};
         ui::find<QComboBox>(c.form("SearchAddForm"), "Combo1")->setCurrentText("Other Server ...");
     }},
    {"SearchForm", openSearchForm},
    {"Logon", [](FakeClient& c) { ui::choose(c.rosterForm(), "Toolbar1Button7"); }},
    {"VCardForm another's", [](FakeClient& c) { openCard(c, "jul&amp;iet@x"); }},
};

// A client with the window of the present row on screen.
struct Shown : FakeClient {
    QWidget* window;
    Shown()
    {
        signIn();
        (*static_cast<Act*>(QTest::qData("open", qMetaTypeId<Act>())))(*this);
        const QString name = QString(QTest::currentDataTag()).section(' ', 0, 0);
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

// The controls that have a fault; empty when none has.
QString those(QWidget* window, const std::function<bool(QWidget*)>& isFaulty)
{
    QStringList found;
    for (auto* control : visibleControls(window)) {
        if (isFaulty(control))
            found += described(control);
    }
    return found.join(", ");
}

bool isNameless(QWidget* control)
{
    const bool speaks = takesFocus(control) || qobject_cast<QAbstractButton*>(control);
    return speaks && QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name).isEmpty();
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

// A box, an option or an answer to a request that no key chooses.
bool isWithoutKey(QWidget* control)
{
    auto* button = qobject_cast<QAbstractButton*>(control);
    const bool asked = button && control->window()->objectName() == "authorizeForm";
    const bool option = qobject_cast<QCheckBox*>(control) || qobject_cast<QRadioButton*>(control);
    return (asked || option) && QKeySequence::mnemonic(button->text()).isEmpty();
}

// The entries of menus that no key chooses, or not alone. One that stands by itself needs none.
QString withoutOwnKey(QWidget* window)
{
    QStringList found;
    for (const auto* menu : window->findChildren<QWidget*>()) {
        const auto entries = menu->actions();
        if (entries.size() < 2 || !(qobject_cast<const QMenu*>(menu) || qobject_cast<const QMenuBar*>(menu)))
            continue;
        QSet<QKeySequence> keys{QKeySequence()};
        for (const auto* entry : entries) {
            const auto key = QKeySequence::mnemonic(entry->text());
            if (!entry->isSeparator() && std::exchange(keys, keys + QSet{key}).contains(key))
                found += entry->text();
        }
    }
    return found.join(", ");
}

// It would be read out with its markup.
bool isReadWithMarkup(QWidget* control)
{
    static const QRegularExpression marked("</?[a-z]+|&[a-z#0-9]+;");
    const auto* read = QAccessible::queryAccessibleInterface(control);
    return read->text(QAccessible::Name).contains(marked) ||
           read->text(QAccessible::Description).contains(marked);
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
QString unreached(QWidget* window)
{
    QSet<QWidget*> reached;
    for (auto steps = visibleControls(window).size(); steps >= 0; --steps) {
        auto* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : window, Qt::Key_Tab);
        reached += QApplication::focusWidget();
    }
    return those(window, [&](QWidget* control) { return takesFocus(control) && !reached.contains(control); });
}

// A label whose text is higher than it is.
bool isCut(QWidget* control)
{
    auto* label = qobject_cast<QLabel*>(control);
    return label && label->height() < (label->wordWrap() ? label->heightForWidth(label->width())
                                                         : label->minimumSizeHint().height());
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
            const auto isOfForm = [&](const auto& row) { return row.first.section(' ', 0, 0) == form; };
            QVERIFY2(form == "PreferencesForm" || std::ranges::any_of(windows, isOfForm), qPrintable(form));
        }
    }

    void theKeysAndTheReaderFindEverything_data()
    {
        columns<Act>("open");
        for (const auto& [name, open] : windows)
            row(qPrintable(name), open);
        for (const auto& page : preferences::pages())
            row(qPrintable("PreferencesForm " + page.key), Act(openPreferences));
    }
    void theKeysAndTheReaderFindEverything()
    {
        const Shown client;
        client.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(client.window));
        QCOMPARE(those(client.window, isNameless), QString());
        QCOMPARE(those(client.window, isWithoutKey), QString());
        QCOMPARE(those(client.window, isReadWithMarkup), QString());
        QCOMPARE(clashing(client.window).join(", "), QString());
        QCOMPARE(withoutOwnKey(client.window), QString());
        QCOMPARE(unreached(client.window), QString());
    }

    void whatAReaderTogglesIsObeyed_data()
    {
        columns<Act, QString, Holds>("open", "control", "holds");
        const auto setting = [](bool Settings::*member) {
            return Holds([member](FakeClient& c) { return c.client.settings.*member; });
        };
        row("SignInForm", Act([](FakeClient&) {}), "Check1", setting(&Settings::SavePassword));
        row("SignInForm automatic", Act([](FakeClient&) {}), "Check2", setting(&Settings::AutoLogon));
        row("SignInForm secure", Act([](FakeClient&) {}), "Check3", setting(&Settings::SSL));
        row("PreferencesForm Messages", Act(openPreferences), "EnBalloon", setting(&Settings::BalloonEnable));
        row("PreferencesForm Connection", Act(openPreferences), "Check1",
            Holds([](FakeClient&) { return CRegistry::hasValue("BreloIM"); }));
        row("PreferencesForm Personal", Act(openPreferences), "chkAlwaysOnTop", setting(&Settings::OnTop));
        const auto enables = [](const char* control) {
            return Holds([control](FakeClient& c) {
                return ui::find<QWidget>(c.form("PreferencesForm"), control)->isEnabled();
            });
        };
        row("PreferencesForm Connection, log-in", Act(openPreferences), "chkAutoLogon", enables("Check2"));
        row("PreferencesForm Connection, proxy", Act(openPreferences), "chkTypeS5", enables("txtName"));
        row("PreferencesForm Status", Act(openPreferences), "chkIdleMessage", enables("txtIdleMessage"));
        row("PreferencesForm Sounds", Act(openPreferences), "Check1", Holds([](FakeClient& c) {
                return !ui::find<QLineEdit>(c.form("PreferencesForm"), "txtMsgSoundPath")->text().isEmpty();
            }));
        row("RosterForm", Act([](FakeClient&) {}), "Toolbar1Button4", setting(&Settings::ShowOnlineUsers));
        row("RosterForm connection", Act([](FakeClient&) {}), "Toolbar1Button1",
            Holds([](FakeClient& c) { return c.client.isConnected(); }));
        row("MessageForm", Act(openConversation), "Toolbar1Return", Holds([](FakeClient& c) {
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
        QCOMPARE(those(client.window, isCut), QString());
        QVERIFY(client.window->screen()->availableGeometry().contains(client.window->geometry()));
    }
};

BRELO_TEST(AccessibilityTest)
#include "AccessibilityTest.moc"
