#include "contacts/WindowFixture.h"

// The main window and the small windows of its commands.
class RosterFormTest : public QObject
{
    Q_OBJECT
    using Act = std::function<void(WindowFixture&)>;
    std::optional<WindowFixture> window;
private slots:
    void init() { window.emplace(); }

    void aStatusCommandShowsAndSends_data()
    {
        // sent: show and status
        columns<QString, QString, QString>("entry", "label", "sent");
        row("available", "mRosterSAvailable", "Available", "|");
        row("away", "mRosterSAway", "Away", "away|Al momento non al computer");
        row("xa", "mRosterSXAway", "Extended away", "xa|Non al computer per un po'");
        row("dnd", "mRosterSDND", "Do not disturb", "dnd|I'm busy, go away.");
        row("free", "mRosterSFFC", "Free for Chat", "chat|");
    }
    void aStatusCommandShowsAndSends()
    {
        const auto [entry, label, sent] = fetched<QString, QString, QString>();
        window->choose(entry);
        const QString presence = "<presence><show>%1</show><status>%2</status></presence>";
        const QString expected = presence.arg(sent.section('|', 0, 0), sent.section('|', 1));
        QCOMPARE(window->engine.takeSent(), QStringList(expected));
        window->engine.gateway().connected = false;
        window->choose(entry);
        QVERIFY(window->engine.takeSent().isEmpty());
        QCOMPARE(window->form->findChild<QLabel*>("StatusBar2Panel2")->text(), label);
        QStringList checked;
        for (const auto& rule : statusrules::all()) {
            if (window->action(rule.menuItem)->isChecked())
                checked += rule.menuItem;
        }
        QCOMPARE(checked, QStringList(entry));
    }

    // What the client announces by itself is plain availability.
    void theStatusShowsWhatWasAnnouncedLast_data()
    {
        columns<Act, bool>("act", "announced");
        const QString ann = "<item jid='a@x' name='Ann' subscription='both'/>";
        row("a push", Act([ann](auto& w) { w.push(ann); }), true);
        row("a later list", Act([](auto& w) { w.form->showConnected(false); }), true);
        row("the refresh command", Act([](auto& w) { w.choose("mRosterFRefr"); }), true);
        row("the switch", Act([](auto& w) { w.choose("mRosterFShowAll"); }), true);
        row("the preferences", Act([](auto& w) { w.roster->RefreshAppearance(); }), false);
        row("a refresh before the list", Act([](auto& w) {
                w.roster->setIsInitiated(false);
                w.roster->Refresh();
                w.roster->settle();
                QVERIFY(!w.roster->IsInitiated());
            }),
            false);
    }
    void theStatusShowsWhatWasAnnouncedLast()
    {
        const auto [act, announced] = fetched<Act, bool>();
        window->choose("mRosterSFFC");
        window->engine.takeSent();
        act(*window);
        const QString expected = announced ? "Available" : "Free for Chat";
        QCOMPARE(window->form->findChild<QLabel*>("StatusBar2Panel2")->text(), expected);
        QCOMPARE(window->action("mRosterSFFC")->isChecked(), !announced);
        QCOMPARE(window->form->status() == StatusCommand::FFC, !announced);
        QVERIFY(announced || window->engine.takeSent().isEmpty());
    }

    void theStatusFollowsThePointerAtTheTrigger()
    {
        window->client.settings.AutoAwayTimer = true;
        const auto moved = [this](int x) {
            window->outside.pointer.at = {x, 5};
            window->form->myITriggerReceiver().Trigger();
        };
        moved(5);
        window->outside.clock.time = window->outside.clock.time.addSecs(301);
        moved(5);
        moved(5);
        const QString presence = "<presence><show>%1</show><status>%2</status></presence>";
        QCOMPARE(window->engine.takeSent(), QStringList(presence.arg("away", "Al momento non al computer")));
        moved(6);
        QCOMPARE(window->engine.takeSent(), QStringList(presence.arg("", "")));
        window->choose("mRosterSDND");
        moved(7);
        QCOMPARE(window->form->status(), StatusCommand::DND);
    }

    void theSwitchTurnsTheListOver()
    {
        QAction* button = window->action("Toolbar1Button4");
        window->choose("mRosterFShowAll");
        QVERIFY(window->client.settings.ShowOnlineUsers && button->isChecked());
        QCOMPARE(button->toolTip(), "Show all Contacts");
        QCOMPARE(window->action("mRosterFShowAll")->text(), "&Show all Contacts");
        QCOMPARE(window->engine.takeSent(), QStringList("<presence/>"));
        QCOMPARE(window->roster->tree().NodeIndexByKey("a@x"), 0);
        window->engine.gateway().connected = false;
        button->trigger();
        QVERIFY(window->client.settings.ShowOnlineUsers && button->isChecked());
        window->engine.gateway().connected = true;
        button->trigger();
        QVERIFY(!window->client.settings.ShowOnlineUsers && !button->isChecked());
        QVERIFY(window->roster->tree().NodeIndexByKey("a@x") != 0);
    }

    void startChatAsksForAnAddress_data()
    {
        using Answer = MessageBoxes::Answer;
        columns<QString, int, QString, QString, int>("selected", "answer", "typed", "opened", "boxes");
        row("selected contact", "a@x", -1, "", "conversation a@x", 0);
        row("nothing selected, typed", "", int(Answer::Yes), "z@x/r", "conversation z@x/r trick", 2);
        row("a fixed group", "Contacts", int(Answer::Yes), "z@x", "conversation z@x trick", 2);
        row("a folder", "Pals", int(Answer::Yes), " z@x ", "conversation z@x trick", 2);
        row("no address", "", int(Answer::Yes), "not a jid at all", "", 3);
        row("typed nothing", "", int(Answer::Yes), "", "", 2);
        row("no", "", int(Answer::No), "z@x", "", 1);
        row("cancel", "", int(Answer::Cancel), "z@x", "", 1);
    }
    void startChatAsksForAnAddress()
    {
        const auto [selected, answer, typed] = fetched<QString, int, QString>();
        if (!selected.isEmpty())
            window->select(selected);
        else
            window->view->clearSelected();
        window->outside.boxes.answers = {MessageBoxes::Answer(qMax(answer, 0))};
        window->outside.boxes.inputs = {typed};
        QStringList opened;
        window->listen(opened);
        window->choose("mRosterTBeginC");
        QTEST(opened.join(','), "opened");
        QTEST(int(window->outside.boxes.shown.size()), "boxes");
        const QString question =
            "Please, select a contact first; do you want to add the identifier directly?";
        using Box = RecordingBoxes::Box;
        if (answer >= 0)
            QCOMPARE(window->outside.boxes.shown[0],
                     (Box{"Attention!", question, MessageBoxes::Icon::Question,
                          MessageBoxes::Buttons::YesNoCancel}));
    }

    void commandsSendOrAsk_data()
    {
        columns<QString, QString, QString>("command", "sent", "signal");
        const QString browse = R"(<iq type="get" id="VRX_GET_SERVICE" to="montague.example">)"
                               R"(<query xmlns="jabber:iq:browse"></query></iq>)";
        const QString card = R"(<iq type="get" id="vcard_wj_3" to="%1"><VCARD xmlns="vcard-temp"/></iq>)";
        row("find", "mRosterFFind", browse, "find");
        row("find by the tool bar", "Toolbar1Button2", browse, "find");
        row("own vCard", "mRosterFModVCard", card.arg("romeo@montague.example"), "");
        row("a vCard", "mRosterFContrVC", card.arg("z@x"), "");
        row("refresh", "Toolbar1Button5", "<presence/>", "");
        row("server", "mRosterServerName", "", "page Server management");
        row("disconnect", "mRosterTDiscon", "", "disconnect");
        row("disconnect by the tool bar", "Toolbar1Button1", "", "disconnect");
        row("connect while connected", "mRosterTConn", "", "");
        row("exit", "mRosterTExit", "", "exit");
    }
    void commandsSendOrAsk()
    {
        const auto [command, sent] = fetched<QString, QString>();
        window->outside.boxes.inputs = {QString("z@x")};
        QStringList signal;
        window->listen(signal);
        window->choose(command);
        QCOMPARE(window->engine.takeSent().join('\n'), sent);
        QTEST(signal.join(','), "signal");
    }

    void webEntriesOpenPages_data()
    {
        columns<QString, QString, QString>("entry", "site", "opened");
        row("help", "mRosterHelponline", "www.x", "https://www.x/module.php?mod=book");
        row("guide", "mRosterHQuickGuide", "www.x", "https://www.x/var/BreloIM/IM_Guide.html");
        row("bug", "mRosterHBug", "www.x", "https://www.x/module.php?mod=forum");
        row("login", "Toolbar1Button6", "www.x", "https://www.x/module.php?mod=user&op=Login");
        row("no site", "mRosterHFunz", "", "");
    }
    void webEntriesOpenPages()
    {
        const auto [entry, site] = fetched<QString, QString>();
        window->client.site.WebSite = site;
        window->choose(entry);
        QTEST(window->outside.links.opened.join(','), "opened");
        const auto* line = window->form->findChild<QLabel*>("StatusBar1Panel1");
        QCOMPARE(line->isVisible() && !line->text().isEmpty(), site.isEmpty());
        if (!entry.startsWith("mRosterH"))
            return;
        window->outside.links.opened.clear();
        window->engine.gateway().connected = false;
        window->choose(entry);
        QVERIFY(window->outside.links.opened.isEmpty());
    }

    void aRealCloseEmptiesTheLists()
    {
        auto& client = window->client;
        client.MyBanList.Add("z@x");
        client.SessionClosing = true;
        QVERIFY(window->form->requestUnload(CloseMode::Code));
        QCOMPARE(client.MyRoster.Count() + client.MyAgents.Count(), 0);
        QCOMPARE(client.MyGroups.Count() + client.MyBanList.Count(), 0);
        QVERIFY(!window->registry.find("RosterForm"));
    }

    void removeContactIsOpenForContactsOnly()
    {
        auto* menu = window->form->findChild<QMenu*>("mRosterFriends");
        for (const auto& key : {"Pals", "a@x"}) {
            window->select(key);
            menu->popup({});
            QCOMPARE(window->action("mRosterFDel")->isEnabled(), key == QString("a@x"));
            menu->close();
        }
    }

    void aGroupIsMade()
    {
        window->choose("mRosterFCreate");
        Form* form = window->window("AddGroupForm");
        QVERIFY(form && form->isVisible());
        QCOMPARE(form->windowHandle()->transientParent(), window->form->windowHandle());
        auto* name = form->findChild<QLineEdit*>("txtGroup");
        name->setText("Mine");
        QTest::keyClick(name, Qt::Key_Return);
        QVERIFY(window->node("Mine"));
        QCOMPARE(window->node("Mine")->tag, "NewGroup");
        QVERIFY(window->client.MyGroups.Exists("Mine"));
        QVERIFY(form->isVisible());
        const int groups = window->client.MyGroups.Count();
        for (const char* refused : {"Mine", "", "  "}) {
            name->setText(refused);
            form->findChild<QPushButton*>("cmdAddGroup")->click();
            QCOMPARE(std::exchange(window->outside.boxes.shown, {}).size(), 1);
        }
        QCOMPARE(window->client.MyGroups.Count(), groups);
        QVERIFY(window->engine.takeSent().isEmpty());
        form->findChild<QPushButton*>("cmdClose")->click();
        QVERIFY(!window->window("AddGroupForm"));
    }

    void aContactIsMoved_data()
    {
        // shown: name, old group, whether it was the last there
        columns<QString, QString, QString, QString>("key", "group", "shown", "groups");
        row("one of two", "a@x", "Club", "Ann Pals ", "Pals Club Amici");
        row("begins like another", "a@x", "Clu", "Ann Pals ", "Pals Club Amici");
        row("the last one", "c@x", "R&D", "Cid Club LASTITEMINGROUP", "Pals Amici");
        row("the last one of the old default", "e@x", "Pals", "Eve Amici LASTITEMINGROUP", "Pals Club Amici");
        row("the last one without a group", "d@x", "", "d@x Contacts LASTITEMINGROUP", "Pals Club Amici");
    }
    void aContactIsMoved()
    {
        const auto [key, group] = fetched<QString, QString>();
        window->push("<item jid='e@x' name='Eve' subscription='both'><group>Amici</group></item>");
        window->select(key);
        window->chooseOf("MoveFriend");
        Form* form = window->window("MoveFriendForm");
        QVERIFY(form && form->isVisible());
        auto* combo = form->findChild<QComboBox*>("combogroup");
        const QStringList shown{form->findChild<QLabel*>("Friends")->text(),
                                form->findChild<QLineEdit*>("OldGroup")->text(), form->Tag};
        QTEST(shown.join(' '), "shown");
        QCOMPARE(combo->itemText(0) + " " + combo->itemText(1), "Pals Club");
        QTest::keyClicks(combo->lineEdit(), group);
        form->findChild<QPushButton*>("cmdMoveGroup")->click();
        const auto& record = *window->client.MyRoster.record(key);
        const QString sent = R"(<iq id="UP_ITEM" type="set"><query xmlns="jabber:iq:roster"><item jid="%1" )"
                             R"(name="%2"><group>%3</group></item></query></iq>)";
        QCOMPARE(window->engine.takeSent(), QStringList(sent.arg(key, record.nick, group.toHtmlEscaped())));
        QCOMPARE(record.group, group);
        QVERIFY(window->told().startsWith("Asked to move"));
        QStringList left;
        for (int position = 1; position <= window->client.MyGroups.Count(); ++position)
            left += window->client.MyGroups.Item(position)->ExtName;
        QTEST(left.join(' '), "groups");
        QVERIFY(!window->window("MoveFriendForm"));
    }
};

BRELO_TEST(RosterFormTest)
#include "RosterFormTest.moc"
