#include "contacts/WindowFixture.h"
#include "support/Table.h"
#include "support/TestRunner.h"

// The main window and the small windows of its commands.
class RosterFormTest : public QObject
{
    Q_OBJECT

private slots:
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
        WindowFixture window;
        window.choose(entry);
        const QString presence = "<presence><show>%1</show><status>%2</status></presence>";
        QCOMPARE(window.engine.takeSent(),
                 QStringList(presence.arg(sent.section('|', 0, 0), sent.section('|', 1))));
        window.engine.gateway().connected = false;
        window.choose(entry);
        QVERIFY(window.engine.takeSent().isEmpty());
        QCOMPARE(window.form->findChild<QLabel*>("StatusBar2Panel2")->text(), label);
        QStringList checked;
        for (const auto& rule : statusrules::all()) {
            if (window.action(rule.menuItem)->isChecked())
                checked += rule.menuItem;
        }
        QCOMPARE(checked, QStringList(entry));
    }

    void theStatusFollowsThePointerAtTheTrigger()
    {
        WindowFixture window;
        window.client.settings.AutoAwayTimer = true;
        auto& trigger = window.form->myITriggerReceiver();
        window.outside.pointer.at = {5, 5};
        trigger.Trigger();
        window.outside.clock.time = window.outside.clock.time.addSecs(301);
        trigger.Trigger();
        trigger.Trigger();
        QCOMPARE(
            window.engine.takeSent(),
            QStringList("<presence><show>away</show><status>Al momento non al computer</status></presence>"));
        window.outside.pointer.at = {6, 5};
        trigger.Trigger();
        QCOMPARE(window.engine.takeSent(),
                 QStringList("<presence><show></show><status></status></presence>"));
        window.choose("mRosterSDND");
        window.outside.pointer.at = {7, 5};
        trigger.Trigger();
        QCOMPARE(window.form->status(), StatusCommand::DND);
    }

    void theSwitchTurnsTheListOver()
    {
        WindowFixture window;
        QAction* button = window.action("Toolbar1Button4");
        window.choose("mRosterFShowAll");
        QVERIFY(window.client.settings.ShowOnlineUsers && button->isChecked());
        QCOMPARE(button->toolTip(), QString("Show all Contacts"));
        QCOMPARE(window.action("mRosterFShowAll")->text(), QString("Show all Contacts"));
        QCOMPARE(window.engine.takeSent(), QStringList("<presence/>"));
        QCOMPARE(window.roster->tree().NodeIndexByKey("a@x"), 0);
        window.engine.gateway().connected = false;
        button->trigger();
        QVERIFY(window.client.settings.ShowOnlineUsers && button->isChecked());
        window.engine.gateway().connected = true;
        button->trigger();
        QVERIFY(!window.client.settings.ShowOnlineUsers && !button->isChecked());
        QVERIFY(window.roster->tree().NodeIndexByKey("a@x") != 0);
    }

    void startChatAsksForAnAddress_data()
    {
        using Answer = MessageBoxes::Answer;
        columns<QString, int, QString, QString>("selected", "answer", "typed", "opened");
        row("selected contact", "a@x", -1, "", "a@x false");
        row("nothing selected, typed", "", int(Answer::Yes), "z@x/r", "z@x/r true");
        row("a fixed group", "Contacts", int(Answer::Yes), "z@x", "z@x true");
        row("typed nothing", "", int(Answer::Yes), "", "");
        row("no", "", int(Answer::No), "z@x", "");
        row("cancel", "", int(Answer::Cancel), "z@x", "");
    }

    void startChatAsksForAnAddress()
    {
        const auto [selected, answer, typed] = fetched<QString, int, QString>();
        WindowFixture window;
        if (!selected.isEmpty())
            window.select(selected);
        else
            window.view->clearSelected();
        window.outside.boxes.answers = {MessageBoxes::Answer(qMax(answer, 0))};
        window.outside.boxes.inputs = {typed};
        QString opened;
        connect(window.form, &RosterForm::openConversation, this,
                [&](const QString& jid, bool trick) { opened = jid + (trick ? " true" : " false"); });
        window.choose("mRosterTBeginC");
        QTEST(opened, "opened");
        QCOMPARE(!window.outside.boxes.shown.isEmpty(), answer >= 0);
        if (answer >= 0)
            QCOMPARE(window.outside.boxes.shown[0],
                     (RecordingBoxes::Box{
                         "Attention!",
                         "Please, select a contact first; do you want to add the identifier directly?",
                         MessageBoxes::Icon::Question, MessageBoxes::Buttons::YesNoCancel}));
    }

    void commandsSendOrAsk_data()
    {
        columns<QString, QString, QString>("command", "sent", "signal");
        const QString browse =
            R"(<iq type="get" id="VRX_GET_SERVICE" to="montague.example"><query xmlns="jabber:iq:browse"></query></iq>)";
        row("find", "mRosterFFind", browse, "find");
        row("find by the tool bar", "Toolbar1Button2", browse, "find");
        row("own vCard", "mRosterFModVCard",
            R"(<iq type="get" id="vcard_wj_3" to="romeo@montague.example"><VCARD xmlns="vcard-temp"/></iq>)",
            "");
        row("a vCard", "mRosterFContrVC",
            R"(<iq type="get" id="vcard_wj_3" to="z@x"><VCARD xmlns="vcard-temp"/></iq>)", "");
        row("refresh", "Toolbar1Button5", "<presence/>", "");
        row("preferences", "mRosterTPref", "", "page Personal");
        row("gateways", "mRosterTGateways", "", "page Gateways");
        row("blocked", "mRosterFBlocked", "", "page Privacy");
        row("server", "mRosterServerName", "", "page Server management");
        row("disconnect", "mRosterTDiscon", "", "disconnect");
        row("disconnect by the tool bar", "Toolbar1Button1", "", "disconnect");
        row("connect", "mRosterTConn", "", "connect");
        row("exit", "mRosterTExit", "", "exit");
    }

    void commandsSendOrAsk()
    {
        const auto [command, sent] = fetched<QString, QString>();
        WindowFixture window;
        window.outside.boxes.inputs = {QString("z@x")};
        QStringList signal;
        connect(window.form, &RosterForm::findContactsRequested, this, [&] { signal += "find"; });
        connect(window.form, &RosterForm::showPreferences, this,
                [&](const QString& page) { signal += "page " + page; });
        connect(window.form, &RosterForm::disconnectRequested, this, [&] { signal += "disconnect"; });
        connect(window.form, &RosterForm::connectRequested, this, [&] { signal += "connect"; });
        connect(window.form, &RosterForm::exitRequested, this, [&] { signal += "exit"; });
        window.choose(command);
        QCOMPARE(window.engine.takeSent().join('\n'), sent);
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
        WindowFixture window;
        window.client.site.WebSite = site;
        window.choose(entry);
        QTEST(window.outside.links.opened.join(','), "opened");
        auto* bar = window.form->findChild<QStatusBar*>("StatusBar1");
        QCOMPARE(bar->isVisible() && !bar->currentMessage().isEmpty(), site.isEmpty());
        if (!entry.startsWith("mRosterH"))
            return;
        window.outside.links.opened.clear();
        window.engine.gateway().connected = false;
        window.choose(entry);
        QVERIFY(window.outside.links.opened.isEmpty());
    }

    void aRealCloseEmptiesTheLists()
    {
        WindowFixture window;
        window.client.MyBanList.Add("z@x");
        window.client.SessionClosing = true;
        QVERIFY(window.form->requestUnload(CloseMode::Code));
        const auto& client = window.client;
        QCOMPARE(client.MyRoster.Count() + client.MyAgents.Count() + client.MyGroups.Count() +
                     client.MyBanList.Count(),
                 0);
        QVERIFY(!window.registry.find("RosterForm"));
    }

    void removeContactIsOpenForContactsOnly()
    {
        WindowFixture window;
        auto* menu = window.form->findChild<QMenu*>("mRosterFriends");
        for (const auto& key : {"Pals", "a@x"}) {
            window.select(key);
            menu->popup({});
            QCOMPARE(window.action("mRosterFDel")->isEnabled(), key == QString("a@x"));
            menu->close();
        }
    }

    void aGroupIsMade()
    {
        WindowFixture window;
        window.choose("mRosterFCreate");
        Form* form = window.window("AddGroupForm");
        QVERIFY(form && form->isVisible());
        QCOMPARE(form->windowHandle()->transientParent(), window.form->windowHandle());
        form->findChild<QLineEdit*>("txtGroup")->setText("Mine");
        QTest::keyClick(form->findChild<QLineEdit*>("txtGroup"), Qt::Key_Return);
        auto& tree = window.roster->tree();
        const TreeNode* made = tree.Item(tree.NodeIndexOfKey("Mine"));
        QVERIFY(made);
        QCOMPARE(made->tag, QString("NewGroup"));
        QVERIFY(window.client.MyGroups.Exists("Mine"));
        QVERIFY(form->isVisible());
        const int groups = window.client.MyGroups.Count();
        for (const char* refused : {"Mine", "", "  "}) {
            form->findChild<QLineEdit*>("txtGroup")->setText(refused);
            form->findChild<QPushButton*>("cmdAddGroup")->click();
            QCOMPARE(window.outside.boxes.shown.size(), 1);
            window.outside.boxes.shown.clear();
        }
        QCOMPARE(window.client.MyGroups.Count(), groups);
        QVERIFY(window.engine.takeSent().isEmpty());
        form->findChild<QPushButton*>("cmdClose")->click();
        QVERIFY(!window.window("AddGroupForm"));
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
        WindowFixture window;
        window.push("<item jid='e@x' name='Eve' subscription='both'><group>Amici</group></item>");
        window.select(key);
        window.choose("mnuContextMoveFriend");
        Form* form = window.window("MoveFriendForm");
        QVERIFY(form && form->isVisible());
        auto* combo = form->findChild<QComboBox*>("combogroup");
        QTEST(form->findChild<QLabel*>("Friends")->text() + " " +
                  form->findChild<QLineEdit*>("OldGroup")->text() + " " + form->Tag,
              "shown");
        QCOMPARE(combo->itemText(0) + " " + combo->itemText(1), QString("Pals Club"));
        QTest::keyClicks(combo->lineEdit(), group);
        form->findChild<QPushButton*>("cmdMoveGroup")->click();
        QCOMPARE(
            window.engine.takeSent(),
            QStringList(
                QString(
                    R"(<iq id="UP_ITEM" type="set"><query xmlns="jabber:iq:roster"><item jid="%1" name="%2">)"
                    R"(<group>%3</group></item></query></iq>)")
                    .arg(key, window.client.MyRoster.record(key)->nick, group.toHtmlEscaped())));
        QCOMPARE(window.client.MyRoster.record(key)->group, group);
        QStringList left;
        for (int position = 1; position <= window.client.MyGroups.Count(); ++position)
            left += window.client.MyGroups.Item(position)->ExtName;
        QTEST(left.join(' '), "groups");
        QVERIFY(!window.window("MoveFriendForm"));
    }
};

BRELO_TEST(RosterFormTest)
#include "RosterFormTest.moc"
