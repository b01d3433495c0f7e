#include "FakeClient.h"
#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "contacts/forms/RosterView.h"
#include "session/forms/CertificateForm.h"
#include "session/forms/LoggingInForm.h"
#include "session/forms/SignInForm.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

#include <QAccessible>
#include <QDirIterator>
#include <QLabel>
#include <QMenuBar>
#include <QRadioButton>
#include <QTabBar>
#include <QTest>

namespace
{

using Open = QWidget* (*)(FakeClient&);

const QString juliet = "juliet@montague.example";

QWidget* openConversation(FakeClient& c)
{
    c.signIn();
    c.ui->windows.openConversation(juliet, true);
    c.client.Core->tick();
    return c.form("MessageForm");
}

QWidget* openCard(FakeClient& c, const QString& jid)
{
    c.signIn();
    c.inject(QStringLiteral("<iq type=\"result\" from=\"%1\"><vCard xmlns=\"vcard-temp\"/></iq>").arg(jid));
    return c.form("VCardForm");
}

// Every window of the program: its form's name, and a word behind it where a form has several looks.
const std::pair<const char*, Open> windows[] = {
    {"SignInForm", [](FakeClient& c) -> QWidget* { return &c.signInForm(); }},
    {"LoggingInForm", [](FakeClient& c) -> QWidget* { return &c.ui->windows.progress(); }},
    {"CertificateForm",
     [](FakeClient& c) -> QWidget* { return new CertificateForm(CertificateInfo(), &c.signInForm()); }},
    {"AboutForm",
     [](FakeClient& c) -> QWidget* {
         c.ui->windows.showAbout();
         return c.form("AboutForm");
     }},
    {"RosterForm",
     [](FakeClient& c) -> QWidget* {
         c.signIn();
         return c.rosterForm();
     }},
    {"AddGroupForm",
     [](FakeClient& c) -> QWidget* {
         c.signIn();
         ui::choose(c.rosterForm(), "mRosterFCreate");
         return c.form("AddGroupForm");
     }},
    {"MoveFriendForm",
     [](FakeClient& c) -> QWidget* {
         c.signIn();
         c.rosterForm()->Roster1->view().keyboardSearch("Juliet");
         emit c.rosterForm()->Roster1->moveContactRequested();
         return c.form("MoveFriendForm");
     }},
    {"ShowInTrayForm",
     [](FakeClient& c) -> QWidget* {
         c.ui->windows.showInTray();
         return c.form("ShowInTrayForm");
     }},
    {"MessageForm", openConversation},
    {"LogMessageForm",
     [](FakeClient& c) -> QWidget* {
         ui::choose(openConversation(c), "mnustroldconv");
         return c.form("LogMessageForm");
     }},
    {"HeadLineForm",
     [](FakeClient& c) -> QWidget* {
         c.signIn();
         c.ui->writeNotice(juliet, "body", "subject");
         return c.form("HeadLineForm");
     }},
    {"authorizeForm",
     [](FakeClient& c) -> QWidget* {
         c.signIn();
         c.inject("<presence type=\"subscribe\" from=\"paris@verona.example\"/>");
         return c.form("authorizeForm");
     }},
    {"VCardForm own", [](FakeClient& c) { return openCard(c, "romeo@montague.example"); }},
    {"VCardForm another's", [](FakeClient& c) { return openCard(c, juliet); }},
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
    auto missing = visibleControls(window);
    missing.removeIf([](QWidget* control) { return !takesFocus(control); });
    for (auto steps = missing.size(); steps >= 0; --steps) {
        auto* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : window, Qt::Key_Tab);
        missing.removeOne(QApplication::focusWidget());
    }
    QStringList found;
    for (auto* control : std::as_const(missing))
        found += described(control);
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
            QVERIFY2(
                std::ranges::any_of(
                    windows, [&](const auto& row) { return form == QString(row.first).section(' ', 0, 0); }),
                qPrintable(form));
        }
    }

    void theKeysAndTheReaderFindEverything_data()
    {
        QTest::addColumn<Open>("open");
        for (const auto& [name, open] : windows)
            row(name, open);
    }

    void theKeysAndTheReaderFindEverything()
    {
        QFETCH(Open, open);
        FakeClient client;
        auto* window = open(client);
        QVERIFY(window);
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QCOMPARE(nameless(window).join(", "), QString());
        QCOMPARE(clashing(window).join(", "), QString());
        QCOMPARE(unreached(window).join(", "), QString());
    }
};

BRELO_TEST(AccessibilityTest)
#include "AccessibilityTest.moc"
