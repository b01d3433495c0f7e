#include "contacts/WindowFixture.h"
#include "desktop/forms/WaitAnimation.h"
#include "support/TestRunner.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QWindow>

// The main window and the small windows of its commands.
class RosterFormTest : public QObject
{
    Q_OBJECT

private slots:
    void aStatusCommandShowsAndSends_data();
    void aStatusCommandShowsAndSends();
    void theStatusFollowsThePointerAtTheTrigger();
    void theSwitchTurnsTheListOver();
    void startChatAsksForAnAddress_data();
    void startChatAsksForAnAddress();
    void commandsSendOrAsk_data();
    void commandsSendOrAsk();
    void webEntriesOpenPages_data();
    void webEntriesOpenPages();
    void aCloseGoesToTheTray();
    void aRealCloseEmptiesTheLists();
    void theLostConnectionShowsTheWaitPicture();
    void removeContactIsOpenForContactsOnly();
    void theServerRowBringsTheNoticesToTheFront();
    void aGroupIsMade();
    void aContactIsMoved_data();
    void aContactIsMoved();
};

void RosterFormTest::aStatusCommandShowsAndSends_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("show");
    QTest::newRow("available") << "mRosterSAvailable"
                               << "Available"
                               << "";
    QTest::newRow("away") << "mRosterSAway"
                          << "Away"
                          << "away";
    QTest::newRow("xa") << "mRosterSXAway"
                        << "Extended away"
                        << "xa";
    QTest::newRow("dnd") << "mRosterSDND"
                         << "Do not disturb"
                         << "dnd";
    QTest::newRow("free") << "mRosterSFFC"
                          << "Free for Chat"
                          << "chat";
}

void RosterFormTest::aStatusCommandShowsAndSends()
{
    QFETCH(QString, entry);
    QFETCH(QString, show);
    WindowFixture window;
    window.choose(entry);
    const QStringList sent = window.engine.takeSent();
    QCOMPARE(sent.size(), 1);
    QVERIFY2(sent[0].startsWith("<presence><show>" + show + "</show><status>"), qPrintable(sent[0]));
    window.engine.gateway().connected = false;
    window.choose(entry);
    QVERIFY(window.engine.takeSent().isEmpty());
    QTEST(window.form->findChild<QLabel*>("StatusBar2Panel2")->text(), "label");
    QStringList checked;
    for (const auto& rule : statusrules::all()) {
        if (window.action(rule.menuItem)->isChecked())
            checked += rule.menuItem;
    }
    QCOMPARE(checked, QStringList(entry));
}

void RosterFormTest::theStatusFollowsThePointerAtTheTrigger()
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
    QCOMPARE(window.engine.takeSent(), QStringList("<presence><show></show><status></status></presence>"));
    window.choose("mRosterSDND");
    window.outside.pointer.at = {7, 5};
    trigger.Trigger();
    QCOMPARE(window.form->status(), StatusCommand::DND);
}

void RosterFormTest::theSwitchTurnsTheListOver()
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

void RosterFormTest::startChatAsksForAnAddress_data()
{
    using Answer = MessageBoxes::Answer;
    QTest::addColumn<QString>("selected");
    QTest::addColumn<int>("answer");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("opened");
    QTest::newRow("selected contact") << "a@x" << -1 << ""
                                      << "a@x false";
    QTest::newRow("nothing selected, typed") << "" << int(Answer::Yes) << "z@x/r"
                                             << "z@x/r true";
    QTest::newRow("a fixed group") << "Contacts" << int(Answer::Yes) << "z@x"
                                   << "z@x true";
    QTest::newRow("typed nothing") << "" << int(Answer::Yes) << ""
                                   << "";
    QTest::newRow("no") << "" << int(Answer::No) << "z@x"
                        << "";
    QTest::newRow("cancel") << "" << int(Answer::Cancel) << "z@x"
                            << "";
}

void RosterFormTest::startChatAsksForAnAddress()
{
    QFETCH(QString, selected);
    QFETCH(int, answer);
    QFETCH(QString, typed);
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
        QCOMPARE(
            window.outside.boxes.shown[0],
            (RecordingBoxes::Box{
                "Attention!", "Please, select a contact first; do you want to add the identifier directly?",
                MessageBoxes::Icon::Question, MessageBoxes::Buttons::YesNoCancel}));
}

void RosterFormTest::commandsSendOrAsk_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("sent");
    QTest::addColumn<QString>("signal");
    const QString browse =
        R"(<iq type="get" id="VRX_GET_SERVICE" to="montague.example"><query xmlns="jabber:iq:browse"></query></iq>)";
    QTest::newRow("find") << "mRosterFFind" << browse << "find";
    QTest::newRow("find by the tool bar") << "Toolbar1Button2" << browse << "find";
    QTest::newRow("own vCard")
        << "mRosterFModVCard"
        << R"(<iq type="get" id="vcard_wj_3" to="romeo@montague.example"><VCARD xmlns="vcard-temp"/></iq>)"
        << "";
    QTest::newRow("a vCard") << "mRosterFContrVC"
                             << R"(<iq type="get" id="vcard_wj_3" to="z@x"><VCARD xmlns="vcard-temp"/></iq>)"
                             << "";
    QTest::newRow("refresh") << "Toolbar1Button5"
                             << "<presence/>"
                             << "";
    QTest::newRow("preferences") << "mRosterTPref"
                                 << ""
                                 << "page Personal";
    QTest::newRow("gateways") << "mRosterTGateways"
                              << ""
                              << "page Gateways";
    QTest::newRow("blocked") << "mRosterFBlocked"
                             << ""
                             << "page Privacy";
    QTest::newRow("server") << "mRosterServerName"
                            << ""
                            << "page Server management";
    QTest::newRow("disconnect") << "mRosterTDiscon"
                                << ""
                                << "disconnect";
    QTest::newRow("disconnect by the tool bar") << "Toolbar1Button1"
                                                << ""
                                                << "disconnect";
    QTest::newRow("connect") << "mRosterTConn"
                             << ""
                             << "connect";
    QTest::newRow("exit") << "mRosterTExit"
                          << ""
                          << "exit";
}

void RosterFormTest::commandsSendOrAsk()
{
    QFETCH(QString, command);
    QFETCH(QString, sent);
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

void RosterFormTest::webEntriesOpenPages_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("site");
    QTest::addColumn<QString>("opened");
    QTest::newRow("help") << "mRosterHelponline"
                          << "www.x"
                          << "https://www.x/module.php?mod=book";
    QTest::newRow("guide") << "mRosterHQuickGuide"
                           << "www.x"
                           << "https://www.x/var/BreloIM/IM_Guide.html";
    QTest::newRow("bug") << "mRosterHBug"
                         << "www.x"
                         << "https://www.x/module.php?mod=forum";
    QTest::newRow("login") << "Toolbar1Button6"
                           << "www.x"
                           << "https://www.x/module.php?mod=user&op=Login";
    QTest::newRow("no site") << "mRosterHFunz"
                             << ""
                             << "";
}

void RosterFormTest::webEntriesOpenPages()
{
    QFETCH(QString, entry);
    QFETCH(QString, site);
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

void RosterFormTest::aCloseGoesToTheTray()
{
    WindowFixture window;
    QSignalSpy state(window.form, &RosterForm::trayMenuState);
    QSignalSpy notice(window.form, &RosterForm::showInTrayRequested);
    window.form->close();
    QVERIFY(!window.form->isVisible() && window.form->isMinimized());
    QCOMPARE(state.value(0), QVariantList({true, false}));
    QCOMPARE(notice.count(), 1);
    QCOMPARE(window.client.MyRoster.Count(), 5);
    QVERIFY(window.registry.find("RosterForm"));
}

void RosterFormTest::aRealCloseEmptiesTheLists()
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

void RosterFormTest::theLostConnectionShowsTheWaitPicture()
{
    WindowFixture window;
    auto* picture = window.form->findChild<WaitAnimation*>("Image1");
    auto* text = window.form->findChild<QLabel*>("StatusBar2Panel2");
    QAction* button = window.action("Toolbar1Button1");
    window.form->showDisconnected();
    QVERIFY(!window.roster->isVisible() && picture->isVisible());
    QCOMPARE(text->text(), QString("Diconnected"));
    QCOMPARE(button->toolTip(), QString("Connect"));
    QVERIFY(!button->isChecked());
    window.form->showConnected(true);
    QVERIFY(window.roster->isVisible() && !picture->isVisible() && !picture->isRunning());
    QCOMPARE(text->text(), QString("Available"));
    QVERIFY(button->isChecked());
    window.engine.gateway().secure = true;
    window.form->showConnected(false);
    QCOMPARE(window.form->findChild<QLabel*>("StatusBar2Panel3")->text(), QString("SSL"));
}

void RosterFormTest::removeContactIsOpenForContactsOnly()
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

void RosterFormTest::theServerRowBringsTheNoticesToTheFront()
{
    WindowFixture window;
    Form notices(window.registry, "HeadLineForm");
    notices.show();
    window.form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.form));
    window.select("MONTAGUE.EXAMPLE");
    QTest::keyClick(window.view, Qt::Key_Return);
    QVERIFY(QTest::qWaitForWindowActive(&notices));
}

void RosterFormTest::aGroupIsMade()
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

void RosterFormTest::aContactIsMoved_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("shown"); // name, old group, whether it was the last there
    QTest::addColumn<QString>("groups");
    QTest::newRow("one of two") << "a@x"
                                << "Club"
                                << "Ann Pals "
                                << "Pals Club Amici";
    QTest::newRow("begins like another") << "a@x"
                                         << "Clu"
                                         << "Ann Pals "
                                         << "Pals Club Amici";
    QTest::newRow("the last one") << "c@x"
                                  << "R&D"
                                  << "Cid Club LASTITEMINGROUP"
                                  << "Pals Amici";
    QTest::newRow("the last one of the old default") << "e@x"
                                                     << "Pals"
                                                     << "Eve Amici LASTITEMINGROUP"
                                                     << "Pals Club Amici";
    QTest::newRow("the last one without a group") << "d@x"
                                                  << ""
                                                  << "d@x Contacts LASTITEMINGROUP"
                                                  << "Pals Club Amici";
}

void RosterFormTest::aContactIsMoved()
{
    QFETCH(QString, key);
    QFETCH(QString, group);
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
            QString(R"(<iq id="UP_ITEM" type="set"><query xmlns="jabber:iq:roster"><item jid="%1" name="%2">)"
                    R"(<group>%3</group></item></query></iq>)")
                .arg(key, window.client.MyRoster.record(key)->nick, group.toHtmlEscaped())));
    QCOMPARE(window.client.MyRoster.record(key)->group, group);
    QStringList left;
    for (int position = 1; position <= window.client.MyGroups.Count(); ++position)
        left += window.client.MyGroups.Item(position)->ExtName;
    QTEST(left.join(' '), "groups");
    QVERIFY(!window.window("MoveFriendForm"));
}

BRELO_TEST(RosterFormTest)
#include "RosterFormTest.moc"
