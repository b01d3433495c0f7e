#include "contacts/WindowFixture.h"
#include "support/ChildProcess.h"
#include "support/Table.h"
#include "support/TestRunner.h"

// The contact list in its real window.
class RosterTest : public QObject
{
    Q_OBJECT

private slots:
    void aRightClickWorksOutTheMenu_data()
    {
        columns<QString, bool, QString>("key", "agentOnline", "entries");
        row("beside", "", false, "AddFriend AddGroup");
        row("transport off line", "icq.x", false, "GateLogin");
        row("transport on line", "icq.x", true, "LogoffGate");
        row("server", "MONTAGUE.EXAMPLE", false, "");
        row("contact", "a@x", false,
            "AddFriend AddGroup RemoveFriend RenameFriend MoveFriend SendMessage History ShowVCard NotPres");
    }

    void aRightClickWorksOutTheMenu()
    {
        const auto [key, agentOnline] = fetched<QString, bool>();
        WindowFixture window;
        window.client.MyAgents.record("icq.x")->Online = agentOnline;
        window.click(key, Qt::RightButton);
        QVERIFY(window.roster->findChild<QMenu*>("mnuContext")->isVisible());
        QTEST(window.enabledEntries(), "entries");
        QCOMPARE(window.roster->SelectedItem(), key);
    }

    void aGroupLeavesTheMenuAsItWas()
    {
        WindowFixture window;
        auto* menu = window.roster->findChild<QMenu*>("mnuContext");
        window.click("icq.x", Qt::RightButton);
        menu->close();
        window.click("Pals", Qt::RightButton);
        QVERIFY(menu->isVisible());
        QCOMPARE(window.enabledEntries(), QString("GateLogin"));
        menu->close();
        window.click("a@x", Qt::RightButton); // "Search for Contact" keeps its last state
        QVERIFY(!window.enabledEntries().contains("AddFriend"));
        menu->close();
        QTest::mouseClick(window.view->viewport(), Qt::RightButton, Qt::ShiftModifier, window.place("b@x"));
        QVERIFY(!menu->isVisible());
    }

    void withoutAConnectionNodesHaveNoMenu()
    {
        WindowFixture window;
        window.engine.gateway().connected = false;
        auto* menu = window.roster->findChild<QMenu*>("mnuContext");
        window.click("a@x", Qt::RightButton);
        QVERIFY(!menu->isVisible());
        window.click("", Qt::RightButton);
        QVERIFY(menu->isVisible());
        QCOMPARE(window.enabledEntries(), QString());
    }

    void theMenuKeyShowsTheMenuOfTheSelection()
    {
        WindowFixture window;
        window.select("icq.x");
        QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, {});
        QCoreApplication::sendEvent(window.view->viewport(), &key);
        auto* menu = window.roster->findChild<QMenu*>("mnuContext");
        QVERIFY(menu->isVisible());
        QCOMPARE(window.enabledEntries(), QString("GateLogin"));
        menu->close();
        QTest::keyClick(window.view, Qt::Key_F10, Qt::ShiftModifier);
        QVERIFY(menu->isVisible());
    }

    void aToolTipTellsWhatTheRowHasNoRoomFor()
    {
        WindowFixture window;
        window.client.MyRoster.record("a@x")->StatusMsg = "at <home>";
        const auto& tree = window.roster->tree();
        const auto told = [&](const char* key, int role) {
            return tree.indexOf(tree.Item(tree.NodeIndexOfKey(key))).data(role).toString();
        };
        QCOMPARE(told("a@x", Qt::ToolTipRole), QString("Ann<br>a@x<br>at &lt;home&gt;"));
        QCOMPARE(told("a@x", Qt::AccessibleDescriptionRole), QString("Ann\na@x\nat <home>"));
        QCOMPARE(told("Pals", Qt::ToolTipRole), QString());
    }

    void entriesSendTheirStanzas_data()
    {
        columns<QString, QString, QStringList>("entry", "key", "sent");
        row("login", "GateLogin", "icq.x", QStringList(R"(<presence to="icq.x"/>)"));
        row("log off", "LogoffGate", "icq.x", QStringList(R"(<presence to="icq.x" type="unavailable"/>)"));
        row("remove", "RemoveFriend", "a@x",
            QStringList(R"(<iq id="VRX_Del" type="set"><query xmlns="jabber:iq:roster"><item jid="a@x" )"
                        R"(name="Ann" subscription="remove"><group>Pals</group></item></query></iq>)"));
        row("vCard", "ShowVCard", "a@x",
            QStringList(R"(<iq type="get" id="vcard_wj_3" to="a@x"><VCARD xmlns="vcard-temp"/></iq>)"));
        row("notify", "NotPres", "a@x", QStringList(R"(<presence to="a@x" type="subscribe"/>)"));
        row("search", "AddFriend", "a@x", QStringList());
    }

    void entriesSendTheirStanzas()
    {
        const auto [entry, key] = fetched<QString, QString>();
        WindowFixture window;
        window.select(key);
        window.choose("mnuContext" + entry);
        QTEST(window.engine.takeSent(), "sent");
        QVERIFY(window.client.MyRoster.DoesJIDExist(key)); // until the server says so
    }

    void aDoubleClickOpens_data()
    {
        columns<QString, bool, QString>("key", "admin", "opened");
        row("contact", "a@x", false, "conversation a@x trick");
        row("transport", "icq.x", false, "page ICQ");
        row("server", "MONTAGUE.EXAMPLE", false, "notices");
        row("server with rights", "MONTAGUE.EXAMPLE", true, "page Server management");
        row("group", "Pals", false, "");
        row("empty fixed group", "Waiting authorization", false, "");
    }

    void aDoubleClickOpens()
    {
        const auto [key, admin] = fetched<QString, bool>();
        WindowFixture window;
        window.client.settings.UserMode = admin;
        QStringList opened;
        connect(window.form, &RosterForm::openConversation, this, [&](const QString& jid, bool trick) {
            opened += "conversation " + jid + (trick ? " trick" : "");
        });
        connect(window.form, &RosterForm::showPreferences, this,
                [&](const QString& page) { opened += "page " + page; });
        connect(window.form, &RosterForm::showNotices, this, [&] { opened += "notices"; });
        window.click(key);
        QTest::mouseDClick(window.view->viewport(), Qt::LeftButton, {}, window.place(key));
        QTEST(opened.join(','), "opened");
        opened.clear();
        window.select(key);
        QTest::keyClick(window.view, Qt::Key_Return);
        QTEST(opened.join(','), "opened");
    }

    void aBlockedContactIsNotOpened()
    {
        WindowFixture window;
        window.client.MyBanList.Add("a@x");
        QSignalSpy opened(window.roster, &Roster::openConversation);
        window.select("a@x");
        window.choose("mnuContextSendMessage");
        QCOMPARE(opened.count(), 0);
        QCOMPARE(window.outside.boxes.shown,
                 QList<RecordingBoxes::Box>({{"Notification", "The Contact is Blocked !",
                                              MessageBoxes::Icon::Exclamation, MessageBoxes::Buttons::Ok}}));
    }

    void aLabelIsEditedInPlace()
    {
        WindowFixture window;
        window.select("a@x");
        QTest::keyClick(window.view, Qt::Key_F2);
        auto* editor = window.view->findChild<QLineEdit*>();
        QVERIFY(editor);
        editor->setText("Annie <3 %6");
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_VERIFY(!window.view->isBusy());
        QCOMPARE(window.engine.takeSent(),
                 QStringList(R"(<iq id="UP_NICK" type="set"><query xmlns="jabber:iq:roster"><item jid="a@x" )"
                             R"(name="Annie &lt;3 %6"><group>Pals</group></item></query></iq>)"));
        QCOMPARE(window.client.MyRoster.record("a@x")->nick, QString("Annie <3 %6"));
        window.choose("mnuContextRenameFriend");
        auto* second = window.view->findChild<QLineEdit*>();
        QVERIFY(second);
        second->setText("Nobody");
        QTest::keyClick(second, Qt::Key_Escape);
        QVERIFY(window.engine.takeSent().isEmpty());
    }

    void anEditOutlivesAPush()
    {
        WindowFixture window;
        window.select("a@x");
        QTest::keyClick(window.view, Qt::Key_F2);
        auto* editor = window.view->findChild<QLineEdit*>();
        QVERIFY(editor);
        editor->setText("Half a na");
        window.push("<item jid='b@x' name='Robert' subscription='both'><group>Club</group></item>");
        window.form->myITriggerReceiver().Trigger();
        QCoreApplication::processEvents();
        QVERIFY(window.view->isBusy());
        window.engine.takeSent();
        QTest::keyClicks(editor, "me");
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_VERIFY(!window.view->isBusy());
        QCOMPARE(window.client.MyRoster.record("a@x")->nick, QString("Half a name"));
        QCOMPARE(window.engine.takeSent().size(), 1);
        window.form->myITriggerReceiver().Trigger();
        auto& tree = window.roster->tree();
        QCOMPARE(tree.Item(tree.NodeIndexOfKey("b@x"))->parent->key, QString("Club"));
    }

    void whatIsNoContactKeepsItsName()
    {
        WindowFixture window;
        for (const auto& key : {"Contacts", "MONTAGUE.EXAMPLE"}) {
            window.select(key);
            QTest::keyClick(window.view, Qt::Key_F2);
            QVERIFY(!window.view->isBusy());
        }
    }

    void deleteRemovesTheSelectedContact()
    {
        WindowFixture window;
        window.select("Pals");
        QTest::keyClick(window.view, Qt::Key_Delete);
        window.engine.gateway().connected = false;
        window.select("a@x");
        QTest::keyClick(window.view, Qt::Key_Delete);
        QVERIFY(window.engine.takeSent().isEmpty());
        window.engine.gateway().connected = true;
        QTest::keyClick(window.view, Qt::Key_Delete);
        QVERIFY(window.engine.takeSent().value(0).startsWith("<iq id=\"VRX_Del\""));
    }

    void aDropIsTakenFromTheMouse()
    {
        WindowFixture window;
        window.click("a@x");
        QMimeData data;
        data.setData("application/x-breloim-contact", "a@x");
        const QPoint target = window.place("Club");
        QDragEnterEvent enter(target, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.view->viewport(), &enter);
        QVERIFY(enter.isAccepted());
        QDragMoveEvent over(target, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.view->viewport(), &over);
        QVERIFY(over.isAccepted());
        QDropEvent drop(target, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.view->viewport(), &drop);
        QVERIFY(window.engine.takeSent().value(0).contains("<group>Club</group>"));
        QVERIFY(!window.view->isBusy());
        auto& tree = window.roster->tree();
        QCOMPARE(tree.Item(tree.NodeIndexOfKey("a@x"))->parent->key, QString("Club"));
    }

    // The drag runs an event loop of its own on the view, in which the session can end.
    void aWindowUnloadedUnderADragOutlivesIt()
    {
        if (QGuiApplication::platformName() != "minimal")
            return onPlatformWithDrags();
        WindowFixture window;
        const QPointer<RosterForm> form = window.form;
        bool dragged = false;
        bool livedOn = false;
        const auto end = [&] {
            livedOn = form;
            QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, {});
            QCoreApplication::sendEvent(this, &escape);
        };
        const auto unload = [&] {
            dragged = window.view->isBusy();
            window.client.SessionClosing = true;
            window.form->requestUnload(CloseMode::Code);
            QTimer::singleShot(0, this, end);
        };
        QEventLoop program;
        QTimer::singleShot(0, this, [&] {
            QTimer::singleShot(0, this, unload);
            window.drag("a@x", "Club");
            program.quit();
        });
        program.exec();
        QVERIFY(dragged);
        QVERIFY(livedOn);
        QVERIFY(!window.registry.find("RosterForm"));
        QTRY_VERIFY(!form);
        QVERIFY(window.engine.takeSent().isEmpty());
    }

    void selectionAndFoldersOutliveARebuild()
    {
        WindowFixture window;
        QString items;
        for (int contact = 0; contact < 100; ++contact)
            items += QString("<item jid='m%1@x' subscription='both'><group>Many</group></item>").arg(contact);
        window.push(items);
        window.select("m90@x");
        const int place = window.view->verticalScrollBar()->value();
        QVERIFY(place > 0);
        window.push("<item jid='a@x' name='Anna' subscription='both'/>");
        window.roster->settle();
        QCOMPARE(window.roster->SelectedItem(), QString("m90@x"));
        QCOMPARE(window.view->verticalScrollBar()->value(), place);
        auto& tree = window.roster->tree();
        QVERIFY(window.view->isExpanded(tree.indexOf(tree.Item(tree.NodeIndexOfKey("Many")))));
        window.view->collapse(tree.indexOf(tree.Item(tree.NodeIndexOfKey("Many"))));
        window.push("<item jid='m90@x' subscription='remove'/>");
        QCOMPARE(window.roster->SelectedItem(), QString());
        QVERIFY(!window.view->isExpanded(tree.indexOf(tree.Item(tree.NodeIndexOfKey("Many")))));
        QVERIFY(window.view->isExpanded(tree.indexOf(tree.Item(tree.NodeIndexOfKey("Pals")))));
    }

    void aChangeOutsideOfATickReachesTheScreen()
    {
        WindowFixture window;
        QSignalSpy reset(window.view->model(), &QAbstractItemModel::modelReset);
        QVERIFY(window.roster->AddGroupItem("Mine"));
        QVERIFY(!window.roster->AddGroupItem("Mine"));
        QTRY_COMPARE(reset.count(), 1);
    }

private:
    // Runs the present test in a process of its own: offscreen, a drag ends as soon as it starts.
    static void onPlatformWithDrags()
    {
        QProcess process;
        child::endsWithUs(process);
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "minimal");
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), {QTest::currentTestFunction()});
        QVERIFY(process.waitForFinished());
        QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
                 process.readAllStandardOutput().constData());
    }
};

BRELO_TEST(RosterTest)
#include "RosterTest.moc"
