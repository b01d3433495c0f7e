#include "groupchat/RoomFixture.h"
#include "services/forms/BrowseUsrCtrl.h"

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
        QCOMPARE(ui::find<QComboBox>(f->join(), "txtServerName")->currentText(), server);
        QCOMPARE(ui::find<QLineEdit>(f->join(), "txtNick")->text(), "romeo");
        QVERIFY(ui::find<QRadioButton>(f->join(), "OptPublic")->isChecked());
        for (const char* name : {"cmdJoin", "txtRoomName", "lblRoomName"})
            QVERIFY2(!ui::find<QWidget>(f->join(), name)->isEnabled(), name);
        f->inject("<iq type='error' id='VRX_CHATROOM?' from='" + server +
                  "'><query xmlns='jabber:iq:browse'/><error code='403'>Forbidden</error></iq>");
        QVERIFY(list().accessibleDescription().contains("Forbidden"));
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
        QCOMPARE(shownTip(list().item(0)->toolTip()), verse);
        QVERIFY(!canJoin());
        list().setCurrentRow(0, QItemSelectionModel::NoUpdate); // as the focus does
        QTest::keyClick(&list(), Qt::Key_Down);
        QVERIFY(canJoin() && list().item(0)->isSelected());
        ui::find<QLineEdit>(f->join(), "txtNick")->setText("r&j\x01");
        ui::click(f->join(), "cmdJoin");
        QCOMPARE(f->takeSent(), QStringList(askRoom(verse)));
        QVERIFY(!f->join()->isVisible());
        f->conference("VRX_CONF?", "<name>V</name>");
        QVERIFY(f->takeSent().value(1).contains(QString::fromUtf8("<nick>r&amp;j\uFFFD</nick>")));
        // The list is there when the dialog comes again, and nothing is asked anew.
        openDialog();
        QVERIFY(f->takeSent().isEmpty());
        QTest::keyClick(&list(), Qt::Key_Return);
        QCOMPARE(f->takeSent(), QStringList(askRoom(verse)));
        const auto* rooms = ui::find<BrowseUsrCtrl>(f->join(), "BrowseUsrCtrl1");
        QVERIFY(rooms->SelectedJID.isEmpty());
        list().setCurrentRow(1);
        QVERIFY(!rooms->SelectedJID.isEmpty() && canJoin());
        f->browsed("VRX_GET_CHATROOM", service, "<conference jid='" + verse + "'/>");
        QVERIFY(rooms->SelectedJID.isEmpty() && !canJoin());
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

    void otherKindIsSearchedFirst()
    {
        openDialog();
        f->browsed("VRX_CHATROOM?", server,
                   "<conference type='private' jid='p.x'/><conference type='public' jid='" + service + "'/>");
        f->browsed("VRX_GET_CHATROOM", service, "<conference jid='" + verse + "' name='Verse'/>");
        list().setCurrentRow(0);
        f->takeSent();
        ui::click(f->join(), "OptPublic");
        QVERIFY(canJoin());
        ui::click(f->join(), "Option1");
        QVERIFY(rows().isEmpty() && !canJoin() && f->takeSent().isEmpty());
        QVERIFY(list().accessibleDescription().contains("Search"));
        // A room that is made now is none of the public ones.
        ui::click(f->join(), "Check1");
        ui::type(f->join(), "txtRoomName", "tea");
        ui::click(f->join(), "cmdJoin");
        QCOMPARE(f->takeSent(), QStringList(askRoom("tea@p.x")));
    }

    void invitationIsAnswered()
    {
        openDialog();
        ui::click(f->join(), "Option1");
        ui::click(f->join(), "Check1");
        ui::type(f->join(), "txtNick", "other");
        invite("<x xmlns='jabber:x:conference' jid='one@a.example'/>");
        QVERIFY(!ui::find<QCheckBox>(f->join(), "Check1")->isChecked());
        QVERIFY(ui::find<QRadioButton>(f->join(), "OptPublic")->isChecked());
        QCOMPARE(ui::find<QLineEdit>(f->join(), "txtNick")->text(), "romeo");
        QVERIFY(f->join()->isVisible());
        invite("<x xmlns='jabber:x:conference' jid='two@b.example'/>", "Second");
        QCOMPARE(ui::find<QLabel>(f->join(), "lblfromJID")->text(), "juliet@montague.example/b : Second");
        QCOMPARE(ui::find<QComboBox>(f->join(), "txtServerName")->currentText(), "b.example");
        QCOMPARE(ui::find<QComboBox>(f->join(), "txtServerName")->count(), 1);
        for (const char* name : {"Check1", "Frame3", "txtServerName", "Command1", "OptPublic", "Option1"})
            QVERIFY2(!ui::find<QWidget>(f->join(), name)->isEnabled(), name);
        // A long invitation scrolls instead of pushing the buttons away.
        invite("<x xmlns='jabber:x:conference' jid='two@b.example'/>", QString("long ").repeated(200));
        QVERIFY(f->join()->height() < 420);
        QVERIFY(ui::find<QWidget>(f->join(), "lblfromJID")->height() >
                ui::find<QWidget>(f->join(), "invitationText")->height());
        // A late answer of the own server doesn't move the room.
        f->browsed("VRX_CHATROOM?", server, "<conference type='public' jid='" + service + "'/>");
        f->browsed("VRX_GET_CHATROOM", service, "");
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

    void invitationToNowhereIsAMessage()
    {
        for (const QString jid : {"", " jid='nowhere'"}) {
            invite("<x xmlns='jabber:x:conference'" + jid + "/>");
            QVERIFY(!f->join() && f->form("MessageForm"));
        }
    }

    void contactIsInvited_data()
    {
        columns<QString, QString, bool, QString>("room", "asks", "closes", "notice");
        row("open room", verse, "", true, "");
        row("another", "tea@" + service, askRoom({}), true, "");
        row("no address", "t&ea", "", false, "Conference's name is not right or bad formatted!");
    }
    void contactIsInvited()
    {
        const auto [room, asks, closes, notice] = fetched<QString, QString, bool, QString>();
        f->enter();
        f->presence("juliet@montague.example/b", {});
        const auto add = [this](const QString& jid, bool online, bool gateway) {
            f->client.MyRoster.AddItem(jid, {}, online, {}, {}, gateway, {}, {}, {}, {});
        };
        add("off@x", false, false);
        add("gateway.x", true, true);
        add("7@icq." + f->client.site.DefaultServer, true, false);
        f->rosterForm()->Tag = "no@room";
        ui::choose(f->room(), "mnucontattiinvite");
        auto* form = f->form("InviteForm");
        QCOMPARE(ui::find<QComboBox>(form, "Combo2")->currentText(), verse);
        QCOMPARE(ui::find<QComboBox>(form, "Combo1")->itemText(0), "juliet@montague.example");
        QCOMPARE(ui::find<QComboBox>(form, "Combo1")->count(), 1);
        QCOMPARE(ui::find<QComboBox>(form, "Combo2")->count(), 1);
        f->takeSent();
        ui::type(form, "Combo1", "my neighbour");
        ui::click(form, "Command1");
        QVERIFY(f->takeSent().isEmpty() && form->isVisible());
        ui::type(form, "Combo1", "juliet@montague.example/<");
        ui::type(form, "Combo2", room);
        ui::find<QPlainTextEdit>(form, "txtMsg")->setPlainText("Come & see");
        ui::click(form, "Command1");
        const QString sent =
            "<message id=\"JCOM_50\" to=\"juliet@montague.example/&lt;\">"
            "<x xmlns=\"jabber:x:conference\" jid=\"%1\"/><subject>Invitation to: %1</subject>"
            "<body>Come &amp; see</body></message>";
        const QStringList all = f->takeSent();
        QCOMPARE(all.value(0), sent.arg(room.toHtmlEscaped()));
        QCOMPARE(all.value(all.size() - 1), asks.isEmpty() ? all.value(0) : asks);
        if (!asks.isEmpty())
            QCOMPARE(ui::find<QLineEdit>(f->join(), "txtRoomName")->text(), "tea");
        QCOMPARE(f->form("InviteForm") == nullptr, closes);
        const auto* notices = f->form("HeadLineForm");
        QCOMPARE(notices && ui::find<TranscriptView>(notices, "txtMsg")->transcriptText().contains(notice),
                 !notice.isEmpty());
    }

    void controlsCarryTheirCaptions_data()
    {
        columns<QString, QString>("form", "captions");
        row("room", "GroupchatWindowForm",
            "title=Title|chtitle=Change Title|Command1=Change the Chat Group "
            "Title|Command2=Send|Command3=Close|"
            "lblStatus=Chat Group Status|RemJID=rom|mnucontatti=File|mnucontatticlose=Close|"
            "mnucontattimodify=Modify|mnucontattimodifycut=Cut|mnucontattimodifycopy=Copy|"
            "mnucontattimodifypaste=Paste|mnucontattimodifydel=Delete|mnucontattimodifyselectall=Select All|"
            "mnugroupopt=Options|mnugroupcr=Enable carriage ceturn|mnucontattichnick=Change Nick|"
            "mnucontattichat=Start a Private Chat|mnucontattiinvite=Invite a Contact|"
            "Toolbar1Invite=Invite a Contact|Toolbar1Return=Disable/Enable Carriage Return");
        row("join", "JoinConferenceForm",
            "LblJoinConference=Join a Group Chat|"
            "Label1=A Group Chat is a room where you can chat with other people.|Frame3=Room Search|"
            "lblServerName=Server Name|Command1=Search|OptPublic=Public Room|Option1=Private Room|"
            "Frame2=Room Information|lblRoomName=Name|Check1=New|lblNick=Nickname|Frame1=Invitation from...|"
            "cmdJoin=Join|cmdClose=Close");
        row("invite", "InviteForm",
            "Frame1=Personal Info|Label1=Contact's JID|Label2=Conference|"
            "Label3=Text of the Invitation Message ...|Command1=Send|Command2=Close");
    }
    void controlsCarryTheirCaptions()
    {
        const auto [form, captions] = fetched<QString, QString>();
        f->enter();
        ui::choose(f->room(), "Toolbar1Invite");
        openDialog();
        for (const auto& caption : captions.split('|')) {
            const QString name = caption.section('=', 0, 0);
            const auto* control = f->registry.find(form)->findChild<QObject*>(name);
            QVERIFY2(control, qPrintable(name));
            const QVariant title = control->property("title");
            const QString shown = (title.isValid() ? title : control->property("text")).toString();
            QCOMPARE(name + '=' + QString(shown).remove('&'), caption);
        }
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
