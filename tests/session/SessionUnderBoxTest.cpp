#include "FakeClient.h"
#include "messaging/forms/ChatWindow.h"
#include "preferences/forms/PreferencePanel.h"
#include "preferences/forms/PreferencesForm.h"
#include "session/forms/SignInForm.h"
#include "settings/Paths.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

#include <QApplication>
#include <QDir>
#include <QFile>

namespace
{

const QString juliet = QStringLiteral("juliet@montague.example");
const QString stranger = QStringLiteral("paris@verona.example");
const QString refusal = QStringLiteral("<iq type=\"error\"><query xmlns=\"jabber:iq:auth\"/></iq>");

using Act = std::function<void(FakeClient&)>;

// A box of the program: what goes before it, what brings it up, and what is there afterwards when nothing
// happens under it, and when the connection is lost.
struct Box {
    const char* name;
    Act prepare;
    Act show;
    const char* onward;
    const char* lost;
    const char* always = ""; // there even when the session has ended
};

Act answering(MessageBoxes::Answer answer, const Act& show)
{
    return [answer, show](FakeClient& c) {
        c.world.boxes.answers = {answer};
        c.world.boxes.inputs = {stranger};
        show(c);
    };
}

Act yes(const Act& show)
{
    return answering(MessageBoxes::Answer::Yes, show);
}

void connecting(FakeClient& c)
{
    ui::click(&c.signInForm(), "Connect");
}

void damagedBlockList(FakeClient& c)
{
    QDir().mkpath(paths::configFolder());
    QFile file(paths::configFolder() + QStringLiteral("/BannedList.xml"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no list") > 0);
    connecting(c);
    c.streamUp();
}

void signedIn(FakeClient& c)
{
    c.signIn();
}

// The header of a new window goes there.
void logThatCantBeWritten(FakeClient& c)
{
    c.signIn();
    QVERIFY(QDir().mkpath(c.ui->windows.messages.hub.log().path(c.client.ownBareJid())));
}

void message(FakeClient& c)
{
    c.inject(QStringLiteral("<message from=\"%1/b\" to=\"romeo@montague.example/BreloIM\" type=\"chat\">"
                            "<body>hark</body></message>")
                 .arg(juliet));
}

void talking(FakeClient& c)
{
    c.signIn();
    message(c);
}

Act choosing(const char* form, const char* entry)
{
    return [form, entry](FakeClient& c) { ui::choose(c.form(form), entry); };
}

void blockedPage(FakeClient& c)
{
    c.signIn();
    choosing("RosterForm", "mRosterFBlocked")(c);
}

// What happens under a box happens under the one that follows it.
void underTheSecondBox(FakeClient& c)
{
    c.world.boxes.meanwhile = [&c, second = c.world.boxes.meanwhile] { c.world.boxes.meanwhile = second; };
    choosing("RosterForm", "mRosterTBeginC")(c);
}

const Box boxes[] = {
    {"unreadable block list", damagedBlockList,
     [](FakeClient& c) {
         c.inject("<iq><query xmlns=\"jabber:iq:roster\"><item jid=\"a@b\" subscription=\"both\"/></query>"
                  "</iq>");
     },
     "LoggingInForm RosterForm", "RosterForm"},
    {"first time, yes", connecting, yes([](FakeClient& c) { c.inject(refusal); }), "LoggingInForm sent:1",
     "LoggingInForm sent:1"},
    {"first time, no", connecting,
     answering(MessageBoxes::Answer::No, [](FakeClient& c) { c.inject(refusal); }), "SignInForm",
     "SignInForm"},
    {"account refused", connecting,
     [](FakeClient& c) { c.inject("<iq type=\"error\" id=\"VRX_new\"><error>taken</error></iq>"); },
     "SignInForm", "SignInForm"},
    {"password in clear", connecting, yes([](FakeClient& c) { c.host->allowPlainPassword("a.example"); }),
     "LoggingInForm allowed", "LoggingInForm allowed"},
    {"start chat, question", signedIn, yes(choosing("RosterForm", "mRosterTBeginC")),
     "MessageForm RosterForm", "RosterForm"},
    {"start chat, identifier", signedIn, yes(underTheSecondBox), "MessageForm RosterForm", "RosterForm"},
    {"check a card", signedIn, yes(choosing("RosterForm", "mRosterFContrVC")), "RosterForm sent:1",
     "RosterForm"},
    {"log not written", logThatCantBeWritten, message, "MessageForm RosterForm", "RosterForm"},
    {"block the peer", talking, yes(choosing("MessageForm", "mnustrblock")),
     "MessageForm RosterForm sent:1 blocked", "RosterForm blocked", " blocked"},
    {"block an address", blockedPage, yes([](FakeClient& c) {
         ui::click(qobject_cast<PreferencesForm*>(c.form("PreferencesForm"))->panel("Privacy"), "cmdAdd");
     }),
     "PreferencesForm RosterForm sent:1 blocked", "RosterForm blocked", " blocked"},
};

// The windows on screen, and what was sent and stored.
QString outcome(FakeClient& c)
{
    QStringList found;
    for (const auto* window : QApplication::topLevelWidgets()) {
        if (window->isVisible())
            found += window->objectName();
    }
    found.sort();
    if (const auto sent = c.takeSent(); !sent.isEmpty())
        found += QStringLiteral("sent:%1").arg(sent.size());
    if (c.client.MyBanList.Count() > 0)
        found += QStringLiteral("blocked");
    if (c.store.plainPasswordAllowed("a.example"))
        found += QStringLiteral("allowed");
    return found.join(u' ');
}

} // namespace

// A box stands, and the session ends under it: what the box was for is not gone on with.
class SessionUnderBoxTest : public QObject
{
    Q_OBJECT

private slots:
    void nothingGoesOnWithoutItsSession_data()
    {
        columns<Box, Act, QString>("box", "meanwhile", "outcome");
        const auto entry = [](const char* name) {
            return [name](FakeClient& c) { ui::choose(c.menus.menu(), name); };
        };
        const auto add = [](const Box& box, const char* what, const Act& meanwhile, const QString& outcome) {
            QTest::addRow("%s, %s", box.name, what) << box << meanwhile << outcome.trimmed();
        };
        for (const auto& box : boxes) {
            const QString always = QLatin1String(box.always);
            add(
                box, "nothing", [](FakeClient&) {}, QLatin1String(box.onward));
            add(
                box, "connection lost", [](FakeClient& c) { c.streamLost(); }, QLatin1String(box.lost));
            add(box, "disconnect", entry("mnuTrayConnect"), "SignInForm" + always);
            add(box, "exit", entry("mnutrayExit"), always);
        }
    }

    void nothingGoesOnWithoutItsSession()
    {
        QFETCH(Box, box);
        QFETCH(Act, meanwhile);
        FakeClient live;
        box.prepare(live);
        live.takeSent();
        const auto before = live.world.boxes.shown.size();
        live.world.boxes.meanwhile = [&] { meanwhile(live); };
        box.show(live);
        live.client.Core->tick();
        QVERIFY(live.world.boxes.shown.size() > before);
        QVERIFY(!live.world.boxes.meanwhile);
        QTEST(outcome(live), "outcome");
    }
};

BRELO_TEST(SessionUnderBoxTest)
#include "SessionUnderBoxTest.moc"
