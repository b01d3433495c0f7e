#include "groupchat/RoomFixture.h"

namespace
{

QString ask(const QString& id, const QString& to)
{
    return "<iq type=\"get\" id=\"" + id + "\" to=\"" + to +
           "\"><query xmlns=\"jabber:iq:browse\"></query></iq>";
}

QString askRoom(const QString& room)
{
    return "<iq type=\"get\" id=\"VRX_CONF?\" to=\"" + room +
           "\"><query xmlns=\"jabber:iq:conference\"></query></iq>";
}

} // namespace

// The ways into a room: search, a new one, an invitation; and inviting others.
class JoinTest : public QObject
{
    Q_OBJECT
    std::optional<RoomClient> f;

    const QString server = "montague.example";
    const QString service = "rooms.montague.example";

    QListWidget& list() const { return *ui::find<QListWidget>(f->join(), "BrowseResult"); }
    bool canJoin() const { return ui::find<QPushButton>(f->join(), "cmdJoin")->isEnabled(); }
    void openDialog()
    {
        ui::choose(f->rosterForm(), "mRosterTGRChat");
        QVERIFY(f->join()->isVisible());
    }
    void invite(const QString& extensions, const QString& body = "Come &amp; see")
    {
        f->inject("<message from='juliet@montague.example/b'><body>" + body + "</body>" + extensions +
                  "</message>");
    }
    QStringList rows() const
    {
        QStringList names;
        for (int row = 0; row < list().count(); ++row)
            names += list().item(row)->text();
        return names;
    }

private slots:
    void init() { f.emplace(); }
    void cleanup() { f.reset(); }

    void roomIsFoundAndJoined()
    {
        openDialog();
        QCOMPARE(f->takeSent(), QStringList(ask("VRX_CHATROOM?", server)));
        f->browsed("VRX_CHATROOM?", server,
                   "<conference type='private' jid='p.x'/><conference type='public' jid='" + service +
                       "'/><conference type='public' jid='b.x'/>");
        QCOMPARE(f->takeSent(),
                 QStringList({ask("VRX_GET_CHATROOM", service), ask("VRX_GET_CHATROOM", "b.x")}));
        f->browsed("VRX_GET_CHATROOM", "b.x", "<conference jid='old@b.x' name='Old'/>");
        f->browsed("VRX_GET_CHATROOM", service,
                   "<conference jid='" + verse +
                       "' name='Verse'/><conference name='odd'/><conference jid='n@" + service + "'/>");
        QCOMPARE(rows(), QStringList({"Verse", "n@" + service}));
        QVERIFY(!canJoin());
        list().setCurrentRow(0);
        QVERIFY(canJoin());
        ui::type(f->join(), "txtNick", "r&j");
        ui::click(f->join(), "cmdJoin");
        QCOMPARE(f->takeSent(), QStringList(askRoom(verse)));
        QVERIFY(!f->join()->isVisible());
        f->conference("VRX_CONF?", "<name>V</name>");
        QVERIFY(f->takeSent().value(1).contains("<nick>r&amp;j</nick>"));
        // The list is there when the dialog comes again, and nothing is asked anew.
        openDialog();
        QVERIFY(f->takeSent().isEmpty());
        QTest::keyClick(&list(), Qt::Key_Return);
        QCOMPARE(f->takeSent(), QStringList(askRoom(verse)));
    }

    void newRoomLiesOnTheLastService()
    {
        openDialog();
        ui::click(f->join(), "Option1");
        ui::type(f->join(), "txtServerName", "else<where.example");
        f->takeSent();
        ui::click(f->join(), "Command1");
        QCOMPARE(f->takeSent(), QStringList(ask("VRX_CHATROOM?", "else&lt;where.example")));
        f->browsed("VRX_CHATROOM?", server,
                   "<conference type='public' jid='a.x'/><conference type='private' jid='b.x'/>"
                   "<conference type='private' jid='c.x'/>");
        f->takeSent();
        ui::click(f->join(), "Check1");
        QVERIFY(!ui::find<QWidget>(f->join(), "BrowseUsrCtrl1")->isVisible() && canJoin());
        ui::type(f->join(), "txtRoomName", "tea");
        ui::click(f->join(), "cmdJoin");
        QCOMPARE(f->takeSent(), QStringList(askRoom("tea@c.x")));
        QVERIFY(!ui::find<QCheckBox>(f->join(), "Check1")->isChecked());
    }

    void invitationIsAnswered()
    {
        invite("<x xmlns='jabber:x:conference' jid='one@a.example'/>");
        QVERIFY(f->join()->isVisible());
        invite("<x xmlns='jabber:x:conference' jid='two@b.example'/>", "Second");
        QCOMPARE(ui::find<QLabel>(f->join(), "lblfromJID")->text(), "juliet@montague.example/b : Second");
        QCOMPARE(ui::find<QComboBox>(f->join(), "txtServerName")->currentText(), "b.example");
        for (const char* name : {"Check1", "Frame3", "txtServerName", "Command1", "OptPublic", "Option1"})
            QVERIFY2(!ui::find<QWidget>(f->join(), name)->isEnabled(), name);
        // A late answer of the own server doesn't move the room.
        f->browsed("VRX_CHATROOM?", server, "<conference type='public' jid='" + service + "'/>");
        f->takeSent();
        ui::click(f->join(), "cmdJoin");
        QCOMPARE(f->takeSent(), QStringList(askRoom("two@b.example")));
        // A flood leaves no more servers than a list is good for.
        QString many;
        for (int server = 0; server < 100; ++server)
            many += QString("<x xmlns='jabber:x:conference' jid='a@s%1.example'/>").arg(server);
        invite(many + many.replace("@s", "@t"));
        invite("<x xmlns='jabber:x:conference' jid='a@last.example'/>");
        const auto* servers = ui::find<QComboBox>(f->join(), "txtServerName");
        QVERIFY(servers->count() <= 20 && servers->currentText() == "last.example");
        ui::click(f->join(), "cmdJoin");
        openDialog();
        QVERIFY(!ui::find<QWidget>(f->join(), "Frame1")->isVisible());
        QVERIFY(ui::find<QWidget>(f->join(), "Frame3")->isEnabled() && !canJoin());
    }

    void invitationToNoRoomIsAMessage()
    {
        invite("<x xmlns='jabber:x:conference' jid='nowhere'/>");
        QVERIFY(!f->join() && f->form("MessageForm"));
    }

    void contactIsInvited_data()
    {
        columns<QString, QString, bool, QString>("room", "asks", "closes", "notice");
        row("open room", verse, "", true, "");
        row("another", "tea@" + service, askRoom({}), true, "");
        row("no address", "tea", "", false, "Conference's name is not right or bad formatted!");
    }
    void contactIsInvited()
    {
        const auto [room, asks, closes, notice] = fetched<QString, QString, bool, QString>();
        f->enter();
        f->presence("juliet@montague.example/b", {});
        ui::choose(f->room(), "mnucontattiinvite");
        auto* form = f->form("InviteForm");
        QCOMPARE(ui::find<QComboBox>(form, "Combo2")->currentText(), verse);
        QCOMPARE(ui::find<QComboBox>(form, "Combo1")->itemText(0), "juliet@montague.example");
        f->takeSent();
        ui::click(form, "Command1");
        QVERIFY(f->takeSent().isEmpty() && form->isVisible()); // no contact yet
        ui::type(form, "Combo1", "juliet@montague.example");
        ui::type(form, "Combo2", room);
        ui::find<QPlainTextEdit>(form, "txtMsg")->setPlainText("Come & see");
        ui::click(form, "Command1");
        const QString sent =
            "<message id=\"JCOM_50\" to=\"juliet@montague.example\">"
            "<x xmlns=\"jabber:x:conference\" jid=\"%1\"/><subject>Invitation to: %1</subject>"
            "<body>Come &amp; see</body></message>";
        const QStringList all = f->takeSent();
        QCOMPARE(all.value(0), sent.arg(room));
        QCOMPARE(all.value(all.size() - 1), asks.isEmpty() ? sent.arg(room) : asks);
        QCOMPARE(f->form("InviteForm") == nullptr, closes);
        const auto* notices = f->form("HeadLineForm");
        QCOMPARE(notices && ui::find<TranscriptView>(notices, "txtMsg")->transcriptText().contains(notice),
                 !notice.isEmpty());
    }

    void conversationInvitesItsPeer()
    {
        f->enter();
        f->inject(message("chat"));
        ui::choose(f->form("MessageForm"), "mnustrincchgr");
        QCOMPARE(ui::find<QComboBox>(f->form("InviteForm"), "Combo1")->currentText(),
                 "juliet@montague.example");
    }

    void withoutConnectionAWordSaysWhy()
    {
        f->gateway->connected = false;
        ui::choose(f->rosterForm(), "mRosterTGRChat");
        QVERIFY(!f->join());
        QVERIFY(ui::find<QLabel>(f->rosterForm(), "StatusBar1Panel1")->text().contains("not connected"));
    }
};
BRELO_TEST(JoinTest)

#include "JoinTest.moc"
