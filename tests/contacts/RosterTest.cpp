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
        row("folder", "Pals", false, "");
        row("fixed folder", "Contacts", false, "");
        row("contact", "a@x", false,
            "AddGroup RemoveFriend RenameFriend MoveFriend SendMessage History ShowVCard NotPres");
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

    void aMenuWithoutAConnectionOrWithShift()
    {
        QCOMPARE(window->enabledEntries(), QString()); // before any click
        QTest::mouseClick(window->view->viewport(), Qt::RightButton, Qt::ShiftModifier, window->place("b@x"));
        QVERIFY(!window->contactMenu()->isVisible());
        // Without a connection nodes have no menu.
        window->engine.gateway().connected = false;
        window->click("a@x", Qt::RightButton);
        QVERIFY(!window->contactMenu()->isVisible());
        window->click("", Qt::RightButton);
        QVERIFY(window->contactMenu()->isVisible());
        QCOMPARE(window->enabledEntries(), QString());
        // The menu's key shows that of the selection.
        window->contactMenu()->close();
        window->engine.gateway().connected = true;
        window->select("icq.x");
        QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, {});
        QCoreApplication::sendEvent(window->view->viewport(), &key);
        QVERIFY(window->contactMenu()->isVisible());
        QCOMPARE(window->enabledEntries(), "GateLogin");
    }

    void aToolTipTellsWhatTheRowHasNoRoomFor()
    {
        window->client.MyRoster.record("a@x")->StatusMsg = "at <home>";
        const QModelIndex ann = window->index("a@x");
        QCOMPARE(ann.data(Qt::ToolTipRole), "Ann<br>a@x<br>Off line<br>at &lt;home&gt;");
        window->client.MyRoster.record("a@x")->StatusMsg = QString(1'000'000, 'x');
        QVERIFY(ann.data(Qt::ToolTipRole).toString().size() < 1000);
        // Nor is a name of any length laid out whole.
        window->node("a@x")->text = QString(1'000'000, 'x');
        QVERIFY(window->view->sizeHintForIndex(ann).width() < 10'000);
    }

    void aReaderIsToldTheStateInPlainWords_data()
    {
        // change: of Ann's record
        using Change = std::function<void(Client&)>;
        columns<QString, Change, QString>("key", "change", "told");
        const auto ann = [](bool online, const QString& status, const QString& message) {
            return Change([=](Client& client) {
                auto& record = *client.MyRoster.record("a@x");
                record.Online = online;
                record.Status = record.Ask = status; // the one or the other counts
                record.StatusMsg = message;
            });
        };
        const Change nothing = [](Client&) {};
        row("off line", "a@x", nothing, "Ann|a@x|Off line");
        row("on line", "a@x", ann(true, "", "<b>&here"), "Ann|a@x|Available|<b>&here");
        row("busy", "a@x", ann(true, "dnd", "<b>&here"), "Ann|a@x|Do not disturb|<b>&here");
        row("asked", "a@x", ann(false, "subscribe", {}), "Ann|a@x|Waiting for an authorization");
        row("a lurker", "a@x",
            Change([](Client& client) { client.MyRoster.record("a@x")->Subscription = "none"; }),
            "Ann|a@x|Not authorized");
        row("blocked", "a@x", Change([](Client& client) { client.MyBanList.Add("a@x"); }), "Ann|a@x|Blocked");
        row("a gateway", "icq.x", nothing, "ICQ|icq.x|Off line");
        row("the server", "MONTAGUE.EXAMPLE", nothing, "MONTAGUE.EXAMPLE|On line");
        row("a group", "Pals", nothing, "Pals|Group, 2 contact(s)");
    }
    void aReaderIsToldTheStateInPlainWords()
    {
        const auto [key, change] = fetched<QString, std::function<void(Client&)>>();
        change(window->client);
        window->roster->settle();
        window->select(key);
        const auto* list = QAccessible::queryAccessibleInterface(window->view);
        const auto* row = list->focusChild();
        QVERIFY(row);
        QCOMPARE(row->text(QAccessible::Name), window->node(key)->text);
        QTEST(row->text(QAccessible::Description).replace('\n', '|'), "told");
    }

    void anUnreadMessageHasADotOnItsRow()
    {
        const auto isDotted = [this](const QString& key) {
            auto* page = window->view->viewport();
            const QImage seen = page->grab().toImage();
            const int y = window->place(key).y();
            for (int x = page->width() / 2; x < page->width(); ++x) {
                if (seen.pixelColor(x, y) == QColor(0xD4, 0x1C, 0x1C))
                    return true;
            }
            return false;
        };
        QVERIFY(!isDotted("a@x"));
        window->roster->setUnread({"A@x"});
        QVERIFY(isDotted("a@x") && !isDotted("b@x") && !isDotted("Pals"));
        window->view->collapse(window->index("Pals"));
        QVERIFY(isDotted("Pals") && !isDotted("Club"));
    }

    void entriesSendTheirStanzas_data()
    {
        // told: how the status bar's sentence begins
        columns<QString, QString, QString, QString>("entry", "key", "sent", "told");
        row("login", "GateLogin", "icq.x", R"(<presence to="icq.x"/>)", "Asked icq.x for");
        row("log off", "LogoffGate", "ON.x", R"(<presence to="ON.x" type="unavailable"/>)",
            "Asked ON.x to end");
        row("remove", "RemoveFriend", "a@x",
            R"(<iq id="VRX_Del" type="set"><query xmlns="jabber:iq:roster"><item jid="a@x" )"
            R"(name="Ann" subscription="remove"><group>Pals</group></item></query></iq>)",
            "Asked to remove Ann");
        row("vCard", "ShowVCard", "a@x",
            R"(<iq type="get" id="vcard_wj_3" to="a@x"><VCARD xmlns="vcard-temp"/></iq>)",
            "Asked for the vCard of a@x");
        row("notify", "NotPres", "a@x", R"(<presence to="a@x" type="subscribe"/>)", "Asked a@x for");
        row("search", "AddFriend", "a@x", "", "");
        // The list changed while the menu stood open.
        row("notify a folder", "NotPres", "Pals", "", "");
        row("a card of nobody", "ShowVCard", "", "", "");
        row("remove a gateway", "RemoveFriend", "icq.x", "", "");
        row("remove the server", "RemoveFriend", "MONTAGUE.EXAMPLE", "", "");
        row("log in a contact", "GateLogin", "a@x", "", "");
    }
    void entriesSendTheirStanzas()
    {
        const auto [entry, key, sent, told] = fetched<QString, QString, QString, QString>();
        window->addTransport("ON.x")->Online = true;
        const int before = window->client.MyRoster.Count();
        window->select(key);
        for (QAction* action : window->contactMenu()->actions())
            action->setEnabled(true);
        window->choose("mnuContext" + entry);
        QCOMPARE(window->engine.takeSent().join('\n'), sent);
        QCOMPARE(window->client.MyRoster.Count(), before); // until the server says so
        QCOMPARE(window->told().left(told.isEmpty() ? -1 : told.size()), told);
    }

    void aDoubleClickOpens_data()
    {
        columns<QString, bool, QString>("key", "admin", "opened");
        row("contact", "a@x", false, "conversation a@x trick");
        row("transport", "icq.x", false, "page icq.x");
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
        window->chooseOf("SendMessage");
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
        QVERIFY(window->told().contains("Annie <3 %6"));
        QTRY_VERIFY(!window->editor());
        window->chooseOf("RenameFriend");
        QVERIFY(window->editor());
        window->editor()->setText("Nobody");
        QTest::keyClick(window->editor(), Qt::Key_Escape);
        QVERIFY(window->engine.takeSent().isEmpty());
        for (const auto& key : {"Contacts", "MONTAGUE.EXAMPLE", "icq.x"}) { // what is none keeps its name
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

    void deleteAsksBeforeItRemoves_data()
    {
        columns<QString, bool, bool, int, bool>("key", "connected", "yes", "boxes", "removed");
        row("yes", "a@x", true, true, 1, true);
        row("no", "a@x", true, false, 1, false);
        row("without a connection", "a@x", false, true, 0, false);
        row("a folder", "Pals", true, true, 0, false);
        row("a gateway", "icq.x", true, true, 0, false);
        row("the server", "MONTAGUE.EXAMPLE", true, true, 0, false);
    }
    void deleteAsksBeforeItRemoves()
    {
        const auto [key, connected, yes, boxes, removed] = fetched<QString, bool, bool, int, bool>();
        window->engine.gateway().connected = connected;
        window->outside.boxes.answers = {yes ? MessageBoxes::Answer::Yes : MessageBoxes::Answer::No};
        window->select(key);
        QTest::keyClick(window->view, Qt::Key_Delete);
        QCOMPARE(window->outside.boxes.shown.size(), boxes);
        if (boxes) // the icon whose default is No
            QCOMPARE(window->outside.boxes.shown[0].icon, MessageBoxes::Icon::Exclamation);
        QCOMPARE(window->engine.takeSent().value(0).startsWith("<iq id=\"VRX_Del\""), removed);
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
        QCOMPARE(window->told(), "Asked to move Ann.");
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
