#include "messaging/MessagingFixture.h"
#include "settings/Paths.h"
#include "support/Files.h"
#include "support/Table.h"
#include "support/TestRunner.h"

using Box = RecordingBoxes::Box;
using Icon = MessageBoxes::Icon;
using Buttons = MessageBoxes::Buttons;

namespace
{

const QString stranger = QStringLiteral("Paris@verona.example");

} // namespace

// Adding and blocking the peer of a window.
class PeerCommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void addingAsksServerAndPeer()
    {
        MessagingFixture f;
        f.message(stranger + QStringLiteral("/x"), "chat", "<body>hi</body>");
        auto* window = f.window(stranger);
        f.control<QAction>(*window, "Toolbar1Add").trigger();
        QCOMPARE(f.engine.takeSent(),
                 QStringList({QStringLiteral(
                                  "<iq id=\"VRX_Add\" type=\"set\"><query xmlns=\"jabber:iq:roster\"><item "
                                  "jid=\"%1\" name=\"%1\"/></query></iq>")
                                  .arg(stranger),
                              QStringLiteral("<presence type=\"subscribe\" to=\"%1\"/>").arg(stranger)}));
        QCOMPARE(f.world.boxes.shown,
                 QList<Box>({{"Notification",
                              "Your request has been submitted; waiting for a reply from your "
                              "friend, the contact will be "
                              "placed in a group called \"Waiting authorization\"",
                              Icon::Information, Buttons::Ok}}));
        QVERIFY(!f.control<QAction>(*window, "mnuToolsAdd").isEnabled());
        QVERIFY(!f.control<QAction>(*window, "Toolbar1Add").isEnabled());
    }

    void addingAContactIsRefused()
    {
        MessagingFixture f;
        f.message(stranger, "chat", "<body>hi</body>");
        f.client.MyRoster.AddItem(stranger.toLower(), {}, false, {}, {}, false, {}, {}, {}, {});
        f.window(stranger)->mnuToolsAdd_Click();
        QCOMPARE(f.world.boxes.shown, QList<Box>({{"Error", "This Contact is already in your Contact List",
                                                   Icon::Exclamation, Buttons::Ok}}));
        QCOMPARE(f.engine.takeSent(), QStringList());
        QVERIFY(f.control<QAction>(*f.window(stranger), "mnuToolsAdd").isEnabled());
    }

    void blockingAsksFirst_data()
    {
        columns<bool, bool, bool, int>("byToolbar", "blockedBefore", "yes", "refreshes");
        row("menu, yes", false, false, true, 1);
        row("menu, no", false, false, false, 0);
        row("menu, blocked already", false, true, false, 0);
        row("tool bar, yes", true, false, true, 2);
        row("tool bar, no", true, false, false, 1);
    }

    void blockingAsksFirst()
    {
        const auto [byToolbar, blockedBefore, yes, refreshes] = fetched<bool, bool, bool, int>();
        MessagingFixture f;
        auto* window = f.open(juliet);
        window->setPeer(juliet + QStringLiteral("/balcony"));
        if (blockedBefore)
            f.client.MyBanList.Add(juliet);
        if (yes)
            f.world.boxes.answers = {MessageBoxes::Answer::Yes};
        const QString banned = paths::configFolder() + QStringLiteral("/BannedList.xml");
        QSignalSpy refresh(f.hub.get(), &ChatWindow::rosterRefreshRequested);
        f.control<QAction>(*window, byToolbar ? "Toolbar1Block" : "mnustrblock").trigger();
        QCOMPARE(f.world.boxes.shown.size(), 1);
        QCOMPARE(f.world.boxes.shown[0],
                 blockedBefore
                     ? Box({"Note !", "The Contact is already Blocked!", Icon::Information, Buttons::Ok})
                     : Box({"Confirm", "Are you sure that you want to Block this Contact", Icon::Question,
                            Buttons::YesNoCancel}));
        QCOMPARE(refresh.size(), refreshes);
        QCOMPARE(f.client.MyBanList.Count(), int(yes || blockedBefore));
        QCOMPARE(files::read(banned).contains("<item>" + juliet.toUtf8() + "</item>"), yes);
        QVERIFY(window->isVisible());
    }
};

BRELO_TEST(PeerCommandsTest)
#include "PeerCommandsTest.moc"
