#include "groupchat/RoomFixture.h"

namespace
{

const QString available = "<presence to=\"" + verse + "\"/>";
const QString gone = "<presence to=\"" + verse + "\" type=\"unavailable\"/>";
const QString nickSet =
    "<iq to=\"" + verse +
    "\" type=\"set\" id=\"VRX_CONF_DATA\"><query xmlns=\"jabber:iq:conference\"><nick>%1</nick>"
    "</query></iq>";

QString said(const QString& inner)
{
    return "<message to=\"" + verse + "\" type=\"GroupChat\">" + inner + "</message>";
}

} // namespace

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
        f->conference("VRX_CONF?", "<name>Other</name>");
        QVERIFY(f->takeSent().isEmpty());
        QCOMPARE(f->room()->windowTitle(), "Verse & prose");
    }

    void refusals_data()
    {
        columns<QString, QString, QString, bool>("id", "error", "box", "makesRoom");
        row("no such room", "VRX_CONF?", "<error code='404'>x</error>", "", true);
        row("unreachable", "VRX_CONF?", "<error code='502'>x</error>",
            "I am sorry but it was impossible to contact the Chat Room Server ...", false);
        row("code not first", "VRX_CONF?", "<error type='cancel' code='404'>x</error>", "", false);
        row("another", "VRX_CONF?", "<error code='403'>x</error>", "", false);
        row("of the entry", "VRX_CONF_DATA", "<error code='404'>x</error>", "", false);
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
    }

    void takenNickIsToldAndAnotherTried()
    {
        f->conference("VRX_CONF?", "<name>V</name>");
        f->takeSent();
        f->conference("VRX_CONF_DATA", "<error code='409'>Conflict</error>", "error");
        QVERIFY(f->status().contains("Conflict"));
        f->world.boxes.inputs = {"r<2"};
        ui::choose(f->room(), "mnucontattichnick");
        QCOMPARE(f->takeSent(),
                 QStringList({"<presence to=\"" + verse + "/r&lt;2\"/>", nickSet.arg("r&lt;2")}));
        // Who was never in has nobody who confirms that he goes.
        f->room()->close();
        QVERIFY(!f->room());
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
        const QString inner = show.isEmpty() ? QString() : "<show>" + show + "</show>";
        for (int twice = 0; twice < 2; ++twice) {
            f->presence(verse + "/will", inner);
            f->presence(verse + "/stranger", inner);
        }
        QCOMPARE(f->history(), line.isEmpty() ? QString() : " <07:08>  Will is now " + line + " \n");
        QCOMPARE(f->room()->occupants.node(2)->Image, image);
        f->presence(me, inner);
        QCOMPARE(ui::find<QComboBox>(f->room(), "Status")->currentIndex(), own);
        f->presence(verse + "/will", {}, "error");
        QCOMPARE(f->nicks(), QStringList({"rom", "Will"}));
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
        ui::type(f->room(), "Text1", "R&D");
        ui::click(f->room(), "Command1");
        QCOMPARE(f->takeSent(), QStringList(said("<subject>R&amp;D</subject>"
                                                 "<body>/me has changed the subject to R&amp;D</body>")));
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
        ui::choose(f->room(), "mnugroupcr");
        QVERIFY(ui::find<QAction>(f->room(), "Toolbar1Return")->isChecked());
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

    void closedRoomHidesUntilItIsConfirmed()
    {
        auto* room = &f->enter();
        ui::click(room, "Command3");
        QVERIFY(f->room() == room && !room->isVisible());
        QCOMPARE(f->takeSent(), QStringList(gone));
        // Asked for again it sends nothing, and says why.
        f->conference("VRX_CONF?", "<name>V</name>");
        QVERIFY(f->takeSent().isEmpty() && !room->isVisible());
        QVERIFY(ui::find<QLabel>(f->rosterForm(), "StatusBar1Panel1")->text().contains("leaving"));
        f->presence(me, {}, "unavailable");
        f->users("<user type='remove' jid='" + me + "'/>");
        QVERIFY(!f->room());
        QCOMPARE(f->takeSent(), QStringList(gone));
        f->enter();
        QVERIFY(f->room()->isVisible());
    }

    void questionThatOutlivesTheRoomSendsNothing()
    {
        f->enter();
        f->world.boxes.inputs = {"rom2"};
        f->world.boxes.meanwhile = [this] {
            f->users("<user type='remove' jid='" + me + "'/>");
            f->takeSent();
        };
        ui::choose(f->room(), "mnucontattichnick");
        QCOMPARE(f->takeSent(), QStringList());
    }

    void silentRoomIsGivenUp()
    {
        f->enter().close();
        f->takeSent();
        f->world.clock.time = f->world.clock.time.addSecs(31);
        f->conference("VRX_CONF?", "<name>V</name>");
        QCOMPARE(f->takeSent(), QStringList({available, nickSet.arg("romeo")}));
        QVERIFY(f->room()->isVisible());
    }

    void typedTextOutlivesALostConnection()
    {
        f->enter();
        f->entry().insertMessage("half a sen");
        f->gateway->connected = false;
        ui::click(f->room(), "Command2");
        QVERIFY(f->status().contains("not connected"));
        f->streamLost();
        QVERIFY(!f->room());
        for (const auto& [user, text] : {std::pair("other", ""), std::pair("romeo", "half a sen")}) {
            f->gateway->userName = user; // whose text it is
            f->streamUp();
            QCOMPARE((f->enter(), f->entry().messageText()), text);
            f->gateway->connected = false;
            f->room()->close();
        }
    }

    void unsentWordsComeBackToTheRoom()
    {
        f->enter();
        const QByteArray text = said("<body>lost</body>").toUtf8();
        auto returned = Stanza::returned(text, Stanza::Kind::Unsent);
        f->client.Core->PluginManager->Queue()->deliver(returned);
        f->client.Core->tick();
        QCOMPARE(f->history(), "Not sent: lost\n");
    }

    void onlyTheOwnNickMarksTheRoom_data()
    {
        columns<QString, bool>("inner", "marks");
        row("named", "<body>hey ROM, come</body>", true);
        row("part of a word", "<body>from Rome</body>", false);
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
        }
    }

    void occupantsAreSpokenToAlone()
    {
        f->enter();
        auto* tree = ui::find<QTreeView>(f->room(), "TreeView1");
        ui::choose(f->room(), "mnucontattichat");
        QVERIFY(!f->form("MessageForm"));
        QCOMPARE(tree->model()->index(1, 0).data().toString(), "Will");
        tree->setCurrentIndex(tree->model()->index(1, 0));
        QTest::keyClick(tree, Qt::Key_Return);
        f->client.Core->tick();
        QCOMPARE(qobject_cast<MessageForm*>(f->form("MessageForm"))->peerJid(), verse + "/will");
        // It stays when the room goes.
        f->users("<user type='remove' jid='" + me + "'/>");
        QVERIFY(!f->room() && f->form("MessageForm"));
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
