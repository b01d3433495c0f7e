#include "groupchat/RoomFixture.h"
#include "messaging/FileComponent.h"
#include "settings/Paths.h"
#include "support/Files.h"

#include <QContextMenuEvent>
#include <QMenu>

// A room's stanzas, and what its window shows of them.
class RoomTest : public QObject
{
    Q_OBJECT
    std::optional<RoomClient> f;

private slots:
    void init() { f.emplace(); }
    void cleanup() { f.reset(); }

    void roomIsEnteredOnce()
    {
        f->conference("VRX_CONF?", "<name>Verse &amp; prose</name>");
        QCOMPARE(f->takeSent(), QStringList({available, nickSet.arg("romeo")}));
        QVERIFY(f->room()->isVisible());
        QCOMPARE(f->room()->windowTitle(), "Verse & prose");
        QCOMPARE(f->room()->Tag, verse);
        f->conference("VRX_CONF_DATA", {}); // names nobody
        QVERIFY(f->nicks().isEmpty());
        f->conference("VRX_CONF_DATA", "<id>" + me + "</id><nick>rom</nick>");
        QCOMPARE(f->nicks(), QStringList("rom"));
        QCOMPARE(ui::find<QLabel>(f->room(), "RemJID")->text(), "rom");
        QCOMPARE(ui::find<QComboBox>(f->room(), "Status")->currentText(), "Connected");
        QTRY_VERIFY(f->entry().hasFocus());
        f->room()->showMinimized();
        f->conference("VRX_CONF?", "<name>Other</name>");
        QVERIFY(f->takeSent().isEmpty() && !f->room()->isMinimized());
        QCOMPARE(f->room()->windowTitle(), "Verse & prose");
    }

    void refusals_data()
    {
        columns<QString, QString, QString, bool>("id", "error", "box", "makesRoom");
        row("no such room", "VRX_CONF?", "<error code='404'>x</error>", "", true);
        row("no entry", "VRX_CONF_DATA", "<error code='404'>x</error>", "", false);
        row("unreachable", "VRX_CONF?", "<error code='502'>x</error>",
            "I am sorry but it was impossible to contact the Chat Room Server ...", false);
        row("code not first", "VRX_CONF?", "<error type='cancel' code='404'>x</error>", "", false);
        row("another", "VRX_CONF?", "<error code='403'>x</error>", "", false);
        row("of something else", "VRX_browser", "<error code='404'>x</error>", "", false);
    }
    void refusals()
    {
        const auto [id, error, box, makesRoom] = fetched<QString, QString, QString, bool>();
        f->conference(id, error, "error");
        QCOMPARE(f->room() != nullptr, makesRoom);
        QCOMPARE(f->takeSent(), makesRoom ? QStringList({available, nickSet.arg("romeo")}) : QStringList());
        QCOMPARE(f->world.boxes.shown.isEmpty() ? "" : f->world.boxes.shown.first().text, box);
        if (makesRoom)
            QCOMPARE(f->room()->windowTitle(), verse);
        QCOMPARE(f->mainStatus().contains("can't be entered"),
                 box.isEmpty() && !makesRoom && id != "VRX_browser");
    }

    void refusedNickIsToldAndAnotherTried_data()
    {
        columns<QString>("error");
        row("taken", "<error code='409'>Conflict</error>");
        row("none", "<error code='406'>Conflict</error>");
    }
    void refusedNickIsToldAndAnotherTried()
    {
        f->conference("VRX_CONF?", "<name>V</name>");
        f->takeSent();
        QCOMPARE(ui::find<QComboBox>(f->room(), "Status")->currentIndex(), -1);
        f->conference("VRX_CONF_DATA", std::get<0>(fetched<QString>()), "error");
        QVERIFY(f->status().contains("Conflict") && f->status().contains("Change Nick"));
        f->conference("VRX_CONF_DATA", "<nick>r</nick>"); // names no entry
        QVERIFY(f->nicks().isEmpty());
        // What is said outside the room would be lost.
        f->entry().insertMessage("hello");
        QTest::keyClick(&f->entry(), Qt::Key_Return);
        QVERIFY(f->takeSent().isEmpty() && f->entry().messageText() == "hello");
        QVERIFY(f->status().contains("not in the room"));
        f->world.boxes.inputs = {"r<2"};
        ui::choose(f->room(), "mnucontattichnick");
        QCOMPARE(f->takeSent(),
                 QStringList({"<presence to=\"" + verse + "/r&lt;2\"/>", nickSet.arg("r&lt;2")}));
        // Who was never in has nobody who confirms that he goes.
        f->room()->close();
        QVERIFY(!f->room());
        QCOMPARE(f->takeSent(), QStringList(gone));
        f->enter();
        QTest::keyClick(&f->entry(), Qt::Key_Return);
        QCOMPARE(f->takeSent(), QStringList(said("<body>hello</body>")));
    }

    void nickIsAskedOfTheRoomWhileItIsThere()
    {
        f->enter();
        f->world.boxes.inputs = {"r&2"};
        for (const char* asked : {"/r&amp;2", "/"}) { // what is given up is sent as well
            ui::choose(f->room(), "mnucontattichnick");
            QCOMPARE(f->takeSent(), QStringList("<presence to=\"" + verse + asked + "\"/>"));
        }
        f->world.boxes.inputs = {"r"};
        f->world.boxes.meanwhile = [this] { f->users("<user type='remove' jid='" + me + "'/>"); };
        ui::choose(f->room(), "mnucontattichnick");
        QCOMPARE(f->takeSent(), QStringList(gone));
    }

    void membersComeAndGo_data()
    {
        columns<QString, QStringList, bool>("push", "nicks", "stays");
        const QString will = "jid='" + verse + "/will'";
        const QString kit = "<user jid='" + verse + "/kit' name='Kit'/>";
        const QStringList both{"rom", "Will"};
        row("new", kit, QStringList{"rom", "Will", "Kit"}, true);
        row("twice", kit + kit, QStringList{"rom", "Will", "Kit"}, true);
        row("renamed", "<user " + will + " name='Bill'/>", QStringList{"rom", "Bill"}, true);
        row("on two lines",
            "<user " + will + " name='W&#10;ill'/><user jid='" + verse + "/k' name='K&#13;&#xFDD0;&#x85;t'/>",
            QStringList{"rom", "W ill", "K   t"}, true);
        row("without name, then good", "<user jid='x@y/z'/>" + kit, QStringList{"rom", "Will", "Kit"}, true);
        row("without jid, then good", "<user name='x'/>" + kit, QStringList{"rom", "Will", "Kit"}, true);
        row("removed, and no more", "<user type='remove' " + will + "/>" + kit, QStringList{"rom"}, true);
        row("unknown removed", "<user type='remove' jid='x@y/z' name='X'/>", both, true);
        row("own renamed", "<user jid='" + me + "' name='rom2'/>", QStringList{"rom2", "Will"}, true);
        row("own removed", "<user type='remove' jid='" + me + "'/>", QStringList{}, false);
        row("own named before", "<user jid='" + me + "' name='rom'/><user type='remove' " + will + "/>",
            QStringList{}, false);
    }
    void membersComeAndGo()
    {
        const auto [push, nicks, stays] = fetched<QString, QStringList, bool>();
        f->enter();
        f->users(push);
        QCOMPARE(f->room() != nullptr, stays);
        QCOMPARE(f->takeSent(), stays ? QStringList() : QStringList(gone));
        QCOMPARE(f->mainStatus().contains("no longer in Verse & prose"), !stays);
        if (stays)
            QCOMPARE(f->nicks(), nicks);
        if (nicks.value(0) == "rom2")
            QVERIFY(f->room()->ownNick() == "rom2" && f->status().contains("rom2"));
    }

    void noOccupantSpeaksForTheRoom()
    {
        f->enter();
        f->browsed("", verse + "/will", "<user type='remove' jid='" + me + "'/><user jid='x@y/z' name='X'/>",
                   "set");
        QVERIFY(f->room() && f->takeSent().isEmpty());
        QCOMPARE(f->nicks(), QStringList({"rom", "Will"}));
    }

    void presencesAreToldOnce_data()
    {
        columns<QString, QString, QString, int>("show", "line", "image", "own");
        row("away", "away", "Away", "Away", 1);
        row("xa", "xa", "Extended Away", "xAway", 2);
        row("dnd", "dnd", "Do Not Disturb", "dnd", 3);
        row("chat", "chat", "Free For Chat", "free4chat", 4);
        row("unknown", "busy", "", "Online", 0);
        row("the same", "", "", "Online", 0);
    }
    void presencesAreToldOnce()
    {
        const auto [show, line, image, own] = fetched<QString, QString, QString, int>();
        f->enter();
        const QSignalSpy repaints(ui::find<QTreeView>(f->room(), "TreeView1")->model(),
                                  &QAbstractItemModel::dataChanged);
        const QString inner = show.isEmpty() ? QString() : "<show>" + show + "</show>";
        for (int twice = 0; twice < 2; ++twice) {
            f->presence(verse + "/will", inner);
            f->presence(verse + "/stranger", inner);
        }
        QCOMPARE(f->history(), line.isEmpty() ? QString() : " <07:08>  Will is now " + line + " \n");
        QCOMPARE(f->room()->occupants.node(2)->Image, image);
        QCOMPARE(repaints.size(), line.isEmpty() ? 0 : 1);
        QCOMPARE(ui::find<QComboBox>(f->room(), "Status")->currentIndex(), 0);
        f->presence(me, inner);
        QCOMPARE(ui::find<QComboBox>(f->room(), "Status")->currentIndex(), own);
        f->presence(verse + "/will", inner.isEmpty() ? "<show>dnd</show>" : QString(), "error");
        QCOMPARE(f->nicks(), QStringList({"rom", "Will"}));
        QCOMPARE(f->room()->occupants.node(2)->Image, image);
        f->presence(verse + "/will", {}, "unavailable");
        QCOMPARE(f->nicks(), QStringList("rom"));
    }

    void messagesBecomeLines_data()
    {
        columns<QString, QString, QString, QString, QColor>("from", "inner", "line", "probe", "colour");
        const QString will = verse + "/will";
        const QColor action(185, 0, 0);
        const QColor nick(99, 181, 64);
        row("ordinary", will, "<body>a &lt;b&gt;</body>", " <07:08>  Will: a <b>\n", "Will", nick);
        row("stranger", verse + "/x", "<body>hi</body>", " <07:08>  : hi\n", "hi", QColor(Qt::black));
        row("action", will, "<body>/me waves, so /me</body>", "*** Will waves, so Will \n", "***", action);
        row("action on two lines", will, "<body>/me waves&#10;*** Kit leaves</body>",
            "*** Will waves\n    *** Kit leaves \n", "***", action);
        row("upper", will, "<body>/ME waves</body>", "*** Will waves \n", "waves", action);
        row("both", will, "<body>/me and /ME</body>", "*** Will and /ME \n", "and", action);
        row("mixed", will, "<body>/Me waves</body>", " <07:08>  Will: /Me waves\n", "Will", nick);
        row("of the room", verse, "<body>closes</body>", " <07:08>  closes \n", "closes", QColor(80, 80, 80));
        row("no words", will, "<subject>s</subject>", "", "", QColor());
        row("of this morning", will, "<body>old</body><x xmlns='jabber:x:delay' stamp='20040506T03:00:00'/>",
            " <03:00>  Will: old\n", "<", QColor(62, 128, 194));
    }
    void messagesBecomeLines()
    {
        const auto [from, inner, line, probe, colour] = fetched<QString, QString, QString, QString, QColor>();
        f->enter();
        f->says(from, inner);
        QCOMPARE(f->history(), line);
        const QByteArray log =
            files::read(paths::logFolder() + "/montague.example/romeo/" + fileComponent(verse, ".log"));
        QCOMPARE(log.contains((" (07:08:09): " + line.section(": ", 1).trimmed() + "\r\n").toUtf8()) ||
                     log.contains(
                         (" (07:08:09): " + line.section("*** ", 1).section('\n', 0, 0).trimmed()).toUtf8()),
                 !line.isEmpty() && !inner.contains("delay"));
        const auto found = ui::find<TranscriptView>(f->room(), "vbalRichEdit1")->document()->find(probe);
        QCOMPARE(found.isNull() ? QColor() : found.charFormat().foreground().color(), colour);
    }

    void subjectIsShownAndSet()
    {
        f->enter();
        f->says(verse + "/will",
                "<subject>Sonnets</subject><body>/me has changed the subject to Sonnets</body>");
        QCOMPARE(ui::find<QLineEdit>(f->room(), "Text1")->text(), "Sonnets");
        QCOMPARE(f->history(), "*** Will has changed the subject to Sonnets \n");
        ui::find<QLineEdit>(f->room(), "Text1")->setText("R&D\x02");
        const QString sent =
            said(QString::fromUtf8("<subject>R&amp;D\uFFFD</subject>"
                                   "<body>/me has changed the subject to R&amp;D\uFFFD</body>"));
        ui::click(f->room(), "Command1");
        ui::find<QLineEdit>(f->room(), "Text1")->setFocus();
        QTest::keyClick(ui::find<QLineEdit>(f->room(), "Text1"), Qt::Key_Return);
        QCOMPARE(f->takeSent(), QStringList({sent, sent}));
    }

    void enterSendsTheFirstLineAndKeepsTheRest()
    {
        f->enter();
        QTest::keyClick(&f->entry(), Qt::Key_Return);
        QVERIFY(f->takeSent().isEmpty());
        f->entry().insertMessage("one & a half\ntwo\nthree");
        QTest::keyClick(&f->entry(), Qt::Key_Return);
        QCOMPARE(f->takeSent(), QStringList(said("<body>one &amp; a half</body>")));
        QCOMPARE(f->entry().messageText(), "two\nthree");
        QVERIFY(f->history().isEmpty()); // the room's copy is what is written
        ui::click(f->room(), "Command2");
        QCOMPARE(f->takeSent(), QStringList(said("<body>two\nthree</body>")));
        QVERIFY(f->entry().messageText().isEmpty());
        f->entry().insertMessage(QString("x\x03"));
        ui::click(f->room(), "Command2");
        QCOMPARE(f->takeSent(), QStringList(said(QString::fromUtf8("<body>x\uFFFD</body>"))));
        ui::choose(f->room(), "mnugroupcr");
        QVERIFY(ui::find<QAction>(f->room(), "Toolbar1Return")->isChecked());
        ui::choose(f->room(), "Toolbar1Return");
        QVERIFY(!ui::find<QAction>(f->room(), "mnugroupcr")->isChecked());
        ui::choose(f->room(), "Toolbar1Return");
        QTest::keyClicks(&f->entry(), "a");
        QTest::keyClick(&f->entry(), Qt::Key_Return);
        QCOMPARE(f->entry().messageText(), "a\n");
        QVERIFY(f->takeSent().isEmpty());
    }

    void onlyAwayAnnouncesItself_data()
    {
        columns<int, QString>("choice", "sent");
        row("Connected", 0, "");
        row("Away", 1, "<presence to=\"" + verse + "\"><show>away</show><status>away</status></presence>");
        row("Xtended Away", 2, "");
        row("Do Not Disturb", 3, "");
        row("Free for Chat!", 4, "");
    }
    void onlyAwayAnnouncesItself()
    {
        const auto [choice, sent] = fetched<int, QString>();
        f->enter();
        auto* box = ui::find<QComboBox>(f->room(), "Status");
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Home);
        f->takeSent();
        box->setCurrentIndex(choice);
        emit box->activated(choice);
        QCOMPARE(f->takeSent().join(QString()), sent);
        f->presence(me, "<show>away</show>");
        emit box->activated(1);
        QVERIFY(f->takeSent().isEmpty());
    }

    void onlyTheOwnNickMarksTheRoom_data()
    {
        columns<QString, bool>("inner", "marks");
        row("named", "<body>hey ROM, come</body>", true);
        row("part of a word", "<body>from Rome</body>", false);
        row("part of a word, then named", "<body>from Rome, rom</body>", true);
        row("nobody", "<body>hello</body>", false);
        row("of before", "<body>rom</body><x xmlns='jabber:x:delay' stamp='20040505T06:00:00'/>", false);
    }
    void onlyTheOwnNickMarksTheRoom()
    {
        const auto [inner, marks] = fetched<QString, bool>();
        f->enter();
        f->rosterForm()->activateWindow();
        QTRY_VERIFY(!f->room()->isActiveWindow());
        f->says(me, "<body>rom</body>");
        f->says(verse + "/will", inner);
        auto& unread = f->ui->windows.messages.hub.unread;
        QCOMPARE(unread.peers(), marks ? QStringList(verse) : QStringList());
        if (marks) {
            QVERIFY(f->ui->windows.messages.hub.openOldestUnread());
            QTRY_VERIFY(unread.peers().isEmpty());
            // A room that is left unread can't be opened any more.
            f->rosterForm()->activateWindow();
            QTRY_VERIFY(!f->room()->isActiveWindow());
            f->says(verse + "/will", inner);
            f->room()->close();
            QVERIFY(unread.peers().isEmpty());
        }
    }

    void historyServesTheHand()
    {
        f->enter();
        auto* history = ui::find<TranscriptView>(f->room(), "vbalRichEdit1");
        auto* edit = ui::find<QMenu>(f->room(), "mnucontattimodify");
        emit history->linkPressed("https://a.example/");
        QCOMPARE(f->world.links.opened, QStringList("https://a.example/"));
        QTest::keyClicks(history, "h");
        QCOMPARE(f->entry().messageText(), "h");
        emit history->menuRequested({}, true);
        QVERIFY(!edit->isVisible());
        emit history->menuRequested({}, false);
        QVERIFY(edit->isVisible());
        edit->close();
        auto* tree = ui::find<QTreeView>(f->room(), "TreeView1");
        for (const auto modifier : {Qt::ShiftModifier, Qt::NoModifier}) {
            QContextMenuEvent click(QContextMenuEvent::Mouse, {1, 1}, {1, 1}, modifier);
            QApplication::sendEvent(tree->viewport(), &click);
            QCOMPARE(ui::find<QMenu>(f->room(), "mnugroupopt")->isVisible(), modifier == Qt::NoModifier);
        }
        QVERIFY(f->room()->minimumWidth() >= 512 && f->room()->minimumHeight() >= 432);
        ui::choose(f->room(), "mnucontatticlose");
        QVERIFY(!f->room()->isVisible());
    }

    void occupantsAreSpokenToAlone()
    {
        f->enter();
        f->users("<user jid='" + verse + "/bob' name='bob'/>"); // sorted without regard to case
        auto* tree = ui::find<QTreeView>(f->room(), "TreeView1");
        ui::choose(f->room(), "mnucontattichat");
        QVERIFY(!f->form("MessageForm"));
        const auto will = tree->model()->index(2, 0);
        QCOMPARE(will.data().toString(), "Will");
        QCOMPARE(will.data(Qt::AccessibleDescriptionRole).toString(), "Available");
        tree->setCurrentIndex(will);
        for (const bool byKey : {true, false}) {
            if (byKey)
                QTest::keyClick(tree, Qt::Key_Return);
            else
                QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(will).center());
            f->client.Core->tick();
            const auto* chat = qobject_cast<MessageForm*>(f->form("MessageForm"));
            QVERIFY(chat && chat->isVisible() && chat->peerJid() == verse + "/will");
            QCOMPARE(ui::find<QLineEdit>(chat, "txtNick")->text(), "Will");
            f->form("MessageForm")->hide();
        }
        f->users("<user jid='" + verse + "/will' name='Bill'/>");
        f->inject("<message type='chat' from='" + verse + "/will'><body>pst</body></message>");
        QCOMPARE(ui::find<QLineEdit>(f->form("MessageForm"), "txtNick")->text(), "Bill");
        // It stays when the room goes.
        f->users("<user type='remove' jid='" + me + "'/>");
        QVERIFY(!f->room() && f->form("MessageForm"));
    }

    void blockedOccupantReachesNothing()
    {
        f->enter();
        const QString will = verse + "/will";
        f->users("<user jid='" + verse + "/kit' name='R&amp;J &lt;b&gt;'/>");
        QCOMPARE(shownTip(f->room()->occupants.index(2).data(Qt::ToolTipRole).toString()),
                 "R&J <b>\nAvailable");
        f->inject(message("chat", will));
        f->world.boxes.answers = {MessageBoxes::Answer::Yes};
        ui::choose(f->form("MessageForm"), "mnustrblock");
        f->form("MessageForm")->hide();
        f->inject(message("chat", will));
        QVERIFY(!f->form("MessageForm")->isVisible());
        f->says(will, "<body>in the room</body>");
        QVERIFY(f->history().isEmpty());
        f->says(verse + "/kit", "<body>hark</body>");
        QVERIFY(f->history().contains("hark"));
        f->users("<user type='remove' jid='" + will + "'/>");
        QCOMPARE(f->nicks(), QStringList({"rom", "R&J <b>"}));
    }

    void hostileNicksAndBodiesStayBounded()
    {
        f->enter();
        f->users("<user jid='" + verse + "/will' name='" + QString(100'000, 'n') + "'/>");
        f->says(verse + "/will", "<body>" + QString("/me").repeated(300'000) + "</body>");
        QVERIFY(f->history().size() < 200'000);
        QVERIFY(f->history().contains("more characters"));
    }
};
BRELO_TEST(RoomTest)

#include "RoomTest.moc"
