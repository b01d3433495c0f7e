#include "messaging/forms/ChatWindow.h"
#include "session/SessionFixture.h"
#include "settings/Paths.h"
#include "support/Files.h"

namespace
{

const QString stranger = "paris@verona.example";

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

Act answering(const Act& show, MessageBoxes::Answer answer = MessageBoxes::Answer::Yes)
{
    return [answer, show](FakeClient& c) {
        c.world.boxes.answers = {answer};
        c.world.boxes.inputs = {stranger};
        show(c);
    };
}

void damagedBlockList(FakeClient& c)
{
    files::write(paths::configFolder() + "/BannedList.xml", "no list");
    c.connectToServer();
    c.streamUp();
}

const Act connecting = &FakeClient::connectToServer;
const Act signedIn = &FakeClient::signIn;

// The header of a new window goes there.
void logThatCantBeWritten(FakeClient& c)
{
    c.signIn();
    QVERIFY(QDir().mkpath(c.ui->windows.messages.hub.log().path(c.client.ownBareJid())));
}

void hark(FakeClient& c)
{
    c.inject(message("chat"));
}

void talking(FakeClient& c)
{
    c.signIn();
    hark(c);
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
         c.inject("<iq><query xmlns='jabber:iq:roster'><item jid='a@b' subscription='both'/></query></iq>");
     },
     "LoggingInForm RosterForm", "RosterForm"},
    {"first time, yes", connecting, answering([](FakeClient& c) { c.inject(refusal); }),
     "LoggingInForm sent:1", "LoggingInForm sent:1"},
    {"first time, no", connecting,
     answering([](FakeClient& c) { c.inject(refusal); }, MessageBoxes::Answer::No), "SignInForm",
     "SignInForm"},
    {"account refused", connecting,
     [](FakeClient& c) { c.inject("<iq type=\"error\" id=\"VRX_new\"><error>taken</error></iq>"); },
     "SignInForm", "SignInForm"},
    {"password in clear", connecting,
     answering([](FakeClient& c) { c.host->allowPlainPassword("a.example"); }), "LoggingInForm allowed",
     "LoggingInForm allowed"},
    {"less safe than before", connecting, answering([](FakeClient& c) {
         if (c.host->allowLess("romeo@a.example", {true, true, Proof::ScramSha256}, {}))
             c.store.allowPlainPassword("a.example");
     }),
     "LoggingInForm allowed", "LoggingInForm allowed"},
    {"start chat, question", signedIn, answering(choosing("RosterForm", "mRosterTBeginC")),
     "MessageForm RosterForm", "RosterForm"},
    {"start chat, identifier", signedIn, answering(underTheSecondBox), "MessageForm RosterForm",
     "RosterForm"},
    {"check a card", signedIn, answering(choosing("RosterForm", "mRosterFContrVC")), "RosterForm sent:1",
     "RosterForm"},
    {"log not written", logThatCantBeWritten, hark, "MessageForm RosterForm", "RosterForm"},
    {"block the peer", talking, answering(choosing("MessageForm", "mnustrblock")),
     "MessageForm RosterForm sent:1 blocked", "RosterForm blocked", " blocked"},
    {"block an address", blockedPage, answering([](FakeClient& c) {
         ui::click(qobject_cast<PreferencesForm*>(c.form("PreferencesForm"))->panel("Privacy"), "cmdAdd");
     }),
     "PreferencesForm RosterForm blocked", "RosterForm blocked", " blocked"},
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
        found += QString("sent:%1").arg(sent.size());
    if (c.client.MyBanList.Count() > 0)
        found += QString("blocked");
    if (c.store.plainPasswordAllowed("a.example"))
        found += QString("allowed");
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
            add(box, "nothing", Act([](FakeClient&) {}), QLatin1String(box.onward));
            add(box, "connection lost", &FakeClient::streamLost, QLatin1String(box.lost));
            add(box, "disconnect", entry("mnuTrayConnect"), "SignInForm" + always);
            add(box, "exit", entry("mnutrayExit"), always);
        }
    }
    void nothingGoesOnWithoutItsSession()
    {
        const auto [box, meanwhile] = fetched<Box, Act>();
        FakeClient live;
        box.prepare(live);
        live.takeSent();
        const auto before = live.world.boxes.shown.size();
        live.world.boxes.meanwhile = [&] { meanwhile(live); };
        box.show(live);
        live.client.Core->tick();
        QVERIFY(live.world.boxes.shown.size() > before && !live.world.boxes.meanwhile);
        QTEST(outcome(live), "outcome");
    }
};

BRELO_TEST(SessionUnderBoxTest)
#include "SessionUnderBoxTest.moc"
