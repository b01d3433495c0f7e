#include "contacts/WindowFixture.h"
#include "support/ChildProcess.h"

// The contact list in its real window.
class RosterTest : public QObject
{
    Q_OBJECT

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

    std::optional<WindowFixture> window;
private slots:
    void init() { window.emplace(); }

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
        window->client.MyAgents.record("icq.x")->Online = agentOnline;
        window->click(key, Qt::RightButton);
        QVERIFY(window->contactMenu()->isVisible());
        QTEST(window->enabledEntries(), "entries");
        QCOMPARE(window->roster->SelectedItem(), key);
    }

    void aGroupLeavesTheMenuAsItWas()
    {
        window->click("icq.x", Qt::RightButton);
        window->contactMenu()->close();
        window->click("Pals", Qt::RightButton);
        QVERIFY(window->contactMenu()->isVisible());
        QCOMPARE(window->enabledEntries(), "GateLogin");
        window->contactMenu()->close();
        window->click("a@x", Qt::RightButton); // "Search for Contact" keeps its last state
        QVERIFY(!window->enabledEntries().contains("AddFriend"));
        window->contactMenu()->close();
        QTest::mouseClick(window->view->viewport(), Qt::RightButton, Qt::ShiftModifier, window->place("b@x"));
        QVERIFY(!window->contactMenu()->isVisible());
        // Without a connection nodes have no menu.
        window->engine.gateway().connected = false;
        window->click("a@x", Qt::RightButton);
        QVERIFY(!window->contactMenu()->isVisible());
        window->click("", Qt::RightButton);
        QVERIFY(window->contactMenu()->isVisible());
        QCOMPARE(window->enabledEntries(), QString());
    }

    void theMenuKeyShowsTheMenuOfTheSelection()
    {
        window->select("icq.x");
        QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, {});
        QCoreApplication::sendEvent(window->view->viewport(), &key);
        QVERIFY(window->contactMenu()->isVisible());
        QCOMPARE(window->enabledEntries(), "GateLogin");
        window->contactMenu()->close();
        QTest::keyClick(window->view, Qt::Key_F10, Qt::ShiftModifier);
        QVERIFY(window->contactMenu()->isVisible());
    }

    void aToolTipTellsWhatTheRowHasNoRoomFor()
    {
        window->client.MyRoster.record("a@x")->StatusMsg = "at <home>";
        const QModelIndex ann = window->index("a@x");
        QCOMPARE(ann.data(Qt::ToolTipRole), "Ann<br>a@x<br>at &lt;home&gt;");
        QCOMPARE(ann.data(Qt::AccessibleDescriptionRole), "Ann\na@x\nat <home>");
        QCOMPARE(window->index("Pals").data(Qt::ToolTipRole).toString(), QString());
    }

    void entriesSendTheirStanzas_data()
    {
        columns<QString, QString, QString>("entry", "key", "sent");
        row("login", "GateLogin", "icq.x", R"(<presence to="icq.x"/>)");
        row("log off", "LogoffGate", "icq.x", R"(<presence to="icq.x" type="unavailable"/>)");
        row("remove", "RemoveFriend", "a@x",
            R"(<iq id="VRX_Del" type="set"><query xmlns="jabber:iq:roster"><item jid="a@x" )"
            R"(name="Ann" subscription="remove"><group>Pals</group></item></query></iq>)");
        row("vCard", "ShowVCard", "a@x",
            R"(<iq type="get" id="vcard_wj_3" to="a@x"><VCARD xmlns="vcard-temp"/></iq>)");
        row("notify", "NotPres", "a@x", R"(<presence to="a@x" type="subscribe"/>)");
        row("search", "AddFriend", "a@x", "");
    }
    void entriesSendTheirStanzas()
    {
        const auto [entry, key] = fetched<QString, QString>();
        window->select(key);
        window->choose("mnuContext" + entry);
        QTEST(window->engine.takeSent().join('\n'), "sent");
        QVERIFY(window->client.MyRoster.DoesJIDExist(key)); // until the server says so
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
        window->client.settings.UserMode = admin;
        QStringList opened;
        window->listen(opened);
        window->click(key);
        QTest::mouseDClick(window->view->viewport(), Qt::LeftButton, {}, window->place(key));
        QTEST(opened.join(','), "opened");
        opened.clear();
        window->select(key);
        QTest::keyClick(window->view, Qt::Key_Return);
        QTEST(opened.join(','), "opened");
    }

    void aBlockedContactIsNotOpened()
    {
        window->client.MyBanList.Add("a@x");
        QSignalSpy opened(window->roster, &Roster::openConversation);
        window->select("a@x");
        window->choose("mnuContextSendMessage");
        QCOMPARE(opened.count(), 0);
        QCOMPARE(window->outside.boxes.shown,
                 QList<RecordingBoxes::Box>({{"Notification", "The Contact is Blocked !",
                                              MessageBoxes::Icon::Exclamation, MessageBoxes::Buttons::Ok}}));
    }

    void aLabelIsEditedInPlace()
    {
        window->select("a@x");
        QTest::keyClick(window->view, Qt::Key_F2);
        QVERIFY(window->editor());
        window->editor()->setText("Annie <3 %6");
        QTest::keyClick(window->editor(), Qt::Key_Return);
        QTRY_VERIFY(!window->view->isBusy());
        QCOMPARE(window->engine.takeSent(),
                 QStringList(R"(<iq id="UP_NICK" type="set"><query xmlns="jabber:iq:roster"><item jid="a@x" )"
                             R"(name="Annie &lt;3 %6"><group>Pals</group></item></query></iq>)"));
        QCOMPARE(window->client.MyRoster.record("a@x")->nick, "Annie <3 %6");
        QTRY_VERIFY(!window->editor());
        window->choose("mnuContextRenameFriend");
        QVERIFY(window->editor());
        window->editor()->setText("Nobody");
        QTest::keyClick(window->editor(), Qt::Key_Escape);
        QVERIFY(window->engine.takeSent().isEmpty());
        for (const auto& key : {"Contacts", "MONTAGUE.EXAMPLE"}) { // what is no contact keeps its name
            window->select(key);
            QTest::keyClick(window->view, Qt::Key_F2);
            QVERIFY(!window->view->isBusy());
        }
    }

    void anEditOutlivesAPush()
    {
        window->select("a@x");
        QTest::keyClick(window->view, Qt::Key_F2);
        auto* editor = window->editor();
        QVERIFY(editor);
        editor->setText("Half a na");
        window->push("<item jid='b@x' name='Robert' subscription='both'><group>Club</group></item>");
        window->form->myITriggerReceiver().Trigger();
        QCoreApplication::processEvents();
        QVERIFY(window->view->isBusy());
        window->engine.takeSent();
        QTest::keyClicks(editor, "me");
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_VERIFY(!window->view->isBusy());
        QCOMPARE(window->client.MyRoster.record("a@x")->nick, "Half a name");
        QCOMPARE(window->engine.takeSent().size(), 1);
        window->form->myITriggerReceiver().Trigger();
        QCOMPARE(window->node("b@x")->parent->key, "Club");
    }

    void deleteRemovesTheSelectedContact()
    {
        window->select("Pals");
        QTest::keyClick(window->view, Qt::Key_Delete);
        window->engine.gateway().connected = false;
        window->select("a@x");
        QTest::keyClick(window->view, Qt::Key_Delete);
        QVERIFY(window->engine.takeSent().isEmpty());
        window->engine.gateway().connected = true;
        QTest::keyClick(window->view, Qt::Key_Delete);
        QVERIFY(window->engine.takeSent().value(0).startsWith("<iq id=\"VRX_Del\""));
    }

    void aDropIsTakenFromTheMouse()
    {
        window->click("a@x");
        QMimeData data;
        data.setData("application/x-breloim-contact", "a@x");
        const QPoint target = window->place("Club");
        QDragEnterEvent enter(target, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QDragMoveEvent over(target, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        for (QDropEvent* event : {static_cast<QDropEvent*>(&enter), static_cast<QDropEvent*>(&over)}) {
            QCoreApplication::sendEvent(window->view->viewport(), event);
            QVERIFY(event->isAccepted());
        }
        QDropEvent drop(target, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window->view->viewport(), &drop);
        QVERIFY(window->engine.takeSent().value(0).contains("<group>Club</group>"));
        QVERIFY(!window->view->isBusy());
        QCOMPARE(window->node("a@x")->parent->key, "Club");
    }

    // The drag runs an event loop of its own on the view, in which the session can end.
    void aWindowUnloadedUnderADragOutlivesIt()
    {
        if (QGuiApplication::platformName() != "minimal")
            return onPlatformWithDrags();
        const QPointer<RosterForm> form = window->form;
        bool dragged = false;
        bool livedOn = false;
        const auto end = [&] {
            livedOn = form;
            QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, {});
            QCoreApplication::sendEvent(this, &escape);
        };
        const auto unload = [&] {
            dragged = window->view->isBusy();
            window->client.SessionClosing = true;
            window->form->requestUnload(CloseMode::Code);
            QTimer::singleShot(0, this, end);
        };
        QEventLoop program;
        QTimer::singleShot(0, this, [&] {
            QTimer::singleShot(0, this, unload);
            window->drag("a@x", "Club");
            program.quit();
        });
        program.exec();
        QVERIFY(dragged);
        QVERIFY(livedOn);
        QVERIFY(!window->registry.find("RosterForm"));
        QTRY_VERIFY(!form);
        QVERIFY(window->engine.takeSent().isEmpty());
    }

    void selectionAndFoldersOutliveARebuild()
    {
        QString items;
        for (int contact = 0; contact < 100; ++contact)
            items += QString("<item jid='m%1@x' subscription='both'><group>Many</group></item>").arg(contact);
        window->push(items);
        window->select("m90@x");
        const int place = window->view->verticalScrollBar()->value();
        QVERIFY(place > 0);
        window->push("<item jid='a@x' name='Anna' subscription='both'/>");
        window->roster->settle();
        QCOMPARE(window->roster->SelectedItem(), "m90@x");
        QCOMPARE(window->view->verticalScrollBar()->value(), place);
        QVERIFY(window->view->isExpanded(window->index("Many")));
        window->view->collapse(window->index("Many"));
        window->push("<item jid='m90@x' subscription='remove'/>");
        QCOMPARE(window->roster->SelectedItem(), QString());
        QVERIFY(!window->view->isExpanded(window->index("Many")));
        QVERIFY(window->view->isExpanded(window->index("Pals")));
    }

    void aChangeOutsideOfATickReachesTheScreen()
    {
        QSignalSpy reset(window->view->model(), &QAbstractItemModel::modelReset);
        QVERIFY(window->roster->AddGroupItem("Mine"));
        QVERIFY(!window->roster->AddGroupItem("Mine"));
        QTRY_COMPARE(reset.count(), 1);
    }
};

BRELO_TEST(RosterTest)
#include "RosterTest.moc"
