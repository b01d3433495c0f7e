#include "desktop/SafeLink.h"
#include "messaging/MessagingFixture.h"
#include "messaging/forms/MessageEdit.h"

#include <ctime>

// What a person does in a message window.
class MessageFormTest : public QObject
{
    Q_OBJECT
    std::optional<MessagingFixture> f;
    static inline const QString composing = R"(<message to="%1" type="chat"><x xmlns="jabber:x:event">)"
                                            "<composing></composing></x></message>";

    static void type(MessageForm& window, const QString& text)
    {
        QTest::keyClicks(&MessagingFixture::control<QWidget>(window, "txtMsg"), text);
    }

    static SessionTable& sessions(MessagingFixture& f) { return f.client.Core->PluginManager->sessions(); }
    using End = std::function<void(MessagingFixture&, MessageForm&)>;

private slots:
    void init() { f.emplace(); }

    void ownLineIsSentShownAndLogged()
    {
        auto* window = f->open(juliet);
        type(*window, "1 < 2");
        f->engine.takeSent();
        ui::click(window, "cmdSend");
        const QString sent = R"(<message to="%1" type="chat"><body>1 &lt; 2</body></message>)";
        QCOMPARE(f->engine.takeSent(), QStringList(sent.arg(juliet)));
        QCOMPARE(f->transcript(*window), QString(" <07:08>  %1/BreloIM: 1 < 2\n").arg(own));
        QCOMPARE(f->formatOf(*window, own).foreground().color(), QColor(99, 161, 64));
        QCOMPARE(f->logOf(juliet).count(own + " (07:08:09): 1 < 2\r\n"), 1);
        QCOMPARE(f->transcript(*window, "txtMsg"), QString());
        ui::click(window, "cmdSend"); // nothing to send, nothing sent
        QCOMPARE(f->engine.takeSent(), QStringList());
        // The peer's next line has the peer's colour again.
        f->message(juliet + "/b", "chat", "<body>no</body>");
        QCOMPARE(f->formatOf(*window, juliet).foreground().color(), QColor(255, 50, 50));
    }

    void whatCameBackIsSentAgain()
    {
        auto* window = f->open(juliet);
        const auto again = [&]() -> QPushButton& { return f->control<QPushButton>(*window, "cmdSendAgain"); };
        const QString text = R"(<message to="%1/b" type="chat"><body>%2</body></message>)";
        const auto returned = [&](const char* body, Stanza::Kind kind) {
            f->client.Core->PluginManager->Queue()->deliver(
                Stanza::returned(text.arg(juliet, body).toUtf8(), kind));
            f->engine.trigger();
        };
        QVERIFY(!again().isVisible() && f->hub->unread.peers().isEmpty());
        returned("one\n*** two", Stanza::Kind::Unsent);
        QCOMPARE(f->hub->unread.peers(), QStringList(juliet)); // the window goes with the connection
        returned("three", Stanza::Kind::Uncertain);
        QCOMPARE(f->hub->unread.peers(), QStringList(juliet));
        QVERIFY(f->transcript(*window).endsWith(
            "Not sent: one\n*** two\nThis message may not have arrived: three\n"));
        const auto log = f->logOf(juliet);
        QVERIFY(log.contains("\r\n*** Not sent (07:08:09): one\r\n    *** two\r\n"));
        QVERIFY(log.contains("\r\n*** May not have arrived (07:08:09): three\r\n"));
        f->engine.takeSent();
        f->engine.gateway().connected = false;
        again().click();
        QVERIFY(again().isVisible() && f->panel(*window).contains("not connected"));
        f->engine.gateway().connected = true;
        again().click();
        const QString sent = R"(<message to="%1" type="chat"><body>%2</body></message>)";
        QCOMPARE(f->engine.takeSent(),
                 QStringList({sent.arg(juliet, "one\n*** two"), sent.arg(juliet, "three")}));
        QVERIFY(!again().isVisible());
        returned("four", Stanza::Kind::Unsent);
        ui::click(window, "cmdDiscard");
        QVERIFY(!again().isVisible());
        QCOMPARE(f->engine.takeSent(), QStringList());
    }

    void messageGoesToTheChosenResource_data()
    {
        columns<QStringList, QString, QString>("resources", "chosen", "address");
        row("none", QStringList(), "", juliet);
        row("one, in the text box", QStringList("balcony"), "", juliet);
        row("several", QStringList({"balcony", "tomb"}), "tomb", juliet + "/tomb");
        row("several, none chosen", QStringList({"balcony", "tomb"}), "", juliet);
        row("stale in the hidden box", QStringList(), "old", juliet + "/old");
    }
    void messageGoesToTheChosenResource()
    {
        const auto [resources, chosen, address] = fetched<QStringList, QString, QString>();
        f->client.MyRoster.record(juliet)->Resources = resources;
        auto* window = f->open(juliet);
        auto& combo = f->control<QComboBox>(*window, "ComboResource");
        QCOMPARE(combo.isVisible(), resources.size() > 1);
        combo.setEditText(chosen);
        f->control<QPlainTextEdit>(*window, "txtMsg").setPlainText("x");
        f->engine.takeSent();
        window->cmdSend_Click();
        const auto sent = f->engine.takeSent();
        QCOMPARE(sent.size(), 1);
        QVERIFY2(sent[0].startsWith(QString("<message to=\"%1\" ").arg(address)), qPrintable(sent[0]));
    }

    void typingIsToldOncePerText()
    {
        auto* window = f->open(juliet);
        type(*window, "abc");
        QCOMPARE(f->engine.takeSent(), QStringList(composing.arg(juliet)));
        f->control<QPlainTextEdit>(*window, "txtMsg").clear();
        type(*window, "d");
        QCOMPARE(f->engine.takeSent(), QStringList());
        window->cmdSend_Click();
        QCOMPARE(f->engine.takeSent().size(), 1);
        type(*window, "e");
        QCOMPARE(f->engine.takeSent(), QStringList(composing.arg(juliet)));
        f->message("o&quot;&lt;&amp;@x.example", "chat", "<body>hi</body>");
        type(*f->window("o\"<&@x.example"), "f");
        QCOMPARE(f->engine.takeSent(), QStringList(composing.arg("o&quot;&lt;&amp;@x.example")));
    }

    void enterSendsByTheToggle()
    {
        auto* window = f->open(juliet);
        auto* entry = &f->control<QPlainTextEdit>(*window, "txtMsg");
        const auto action = [&](const char* name) { return &f->control<QAction>(*window, name); };
        type(*window, "a");
        QTest::keyClick(entry, Qt::Key_Return, Qt::ShiftModifier);
        type(*window, "b");
        f->engine.takeSent();
        QTest::keyClick(entry, Qt::Key_Return);
        QVERIFY(f->engine.takeSent().value(0).contains("<body>a\nb</body>"));
        action("Toolbar1Return")->trigger();
        QVERIFY(action("mnuToolsNoChar13")->isChecked() && action("Toolbar1Return")->isChecked());
        QVERIFY(!window->defaultButton());
        type(*window, "c");
        f->engine.takeSent();
        QTest::keyClick(entry, Qt::Key_Return);
        QCOMPARE(f->engine.takeSent(), QStringList());
        QTest::keyClick(entry, Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(f->engine.takeSent().value(0).contains("<body>c\n</body>"));
        action("mnuToolsNoChar13")->trigger();
        QCOMPARE(window->defaultButton(), &f->control<QPushButton>(*window, "cmdSend"));
    }

    void sentTextIsAsTyped()
    {
        auto* window = f->open(juliet);
        const QString text = u"no\u00A0break\tand \U0001F600"_qs;
        f->control<QPlainTextEdit>(*window, "txtMsg").setPlainText(text + QChar(0x0B));
        f->engine.takeSent();
        window->cmdSend_Click();
        // A character that XML can't carry doesn't cost the stream.
        const QString sent = text + QChar(QChar::ReplacementCharacter) + "</body>";
        QVERIFY(f->engine.takeSent().value(0).contains(sent));
    }

    void entryTakesAnyTextQuickly_data()
    {
        columns<QString>("text");
        row("unbroken", QString(200000, u'w'));
        row("words", QString("rose ").repeated(40000));
        row("joined emoji", QString::fromUtf8("\xF0\x9F\x91\xA9\xE2\x80\x8D").repeated(60000));
        row("lines", QString("a rose\n\nb").repeated(20000));
    }
    void entryTakesAnyTextQuickly()
    {
        QFETCH(QString, text);
        auto* window = f->open(juliet);
        auto& entry = f->control<MessageEdit>(*window, "txtMsg");
        QGuiApplication::clipboard()->setText(text);
        const clock_t began = clock();
        entry.paste();
        for (const auto edge : {QTextCursor::End, QTextCursor::Start}) {
            entry.moveCursor(edge);
            for (int i = 0; i < 10; ++i) {
                type(*window, "k");
                entry.grab();
            }
        }
        QVERIFY2(clock() - began < CLOCKS_PER_SEC, qPrintable(QString::number(clock() - began)));
        const QString whole = QString(10, u'k') + text + QString(10, u'k');
        QVERIFY(entry.messageText() == whole);
        while (entry.document()->isUndoAvailable())
            entry.undo();
        while (entry.document()->isRedoAvailable())
            entry.redo();
        QVERIFY(entry.messageText() == whole);
        // A new line inside of a piece is one.
        entry.moveCursor(QTextCursor::End);
        QTest::keyClick(&entry, Qt::Key_Return, Qt::ShiftModifier);
        type(*window, "z");
        QVERIFY(entry.messageText() == whole + "\nz");
        entry.selectAll();
        entry.cut();
        QVERIFY(QGuiApplication::clipboard()->text() == whole + "\nz");
        QCOMPARE(entry.messageText(), QString());
    }

    void closingHidesAndReopensInPlace()
    {
        f->client.settings.CurrentWindowOnTop = false;
        auto* window = f->open(juliet);
        QVERIFY(QTest::qWaitForWindowExposed(window));
        window->move(40, 60);
        ui::click(window, "cmdCancel");
        QVERIFY(!window->isVisible());
        QCOMPARE(window->Tag, "600|900");
        window->move(0, 0);
        f->message(juliet, "chat", "<body>again</body>");
        QCOMPARE(f->window(juliet), window);
        QVERIFY(window->isVisible());
        QCOMPARE(window->pos(), QPoint(40, 60));
    }

    void transcriptPassesTypingOn()
    {
        auto* window = f->open(juliet);
        QVERIFY(QTest::qWaitForWindowActive(window));
        auto& log = f->control<QWidget>(*window, "txtLog");
        log.setFocus();
        QTest::keyClick(&log, Qt::Key_Q);
        QCOMPARE(f->transcript(*window, "txtMsg"), "q");
        QCOMPARE(window->focusWidget(), &f->control<QWidget>(*window, "txtMsg"));
    }

    void linkIsOpenedByAPress()
    {
        auto* window = f->open(juliet);
        f->message(juliet, "chat", "<body>www.verona.example/a.\njavascript:alert(1)</body>");
        auto& log = f->control<TranscriptView>(*window, "txtLog");
        window->resize(900, 600);
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QCoreApplication::processEvents();
        for (const QString text : {"verona.example/a", "script"}) {
            const auto found = log.document()->find(text);
            QVERIFY(!found.isNull());
            const QPoint place = log.cursorRect(found).center() - QPoint(4, 0);
            QTest::mouseClick(log.viewport(), Qt::LeftButton, {}, place);
        }
        QCOMPARE(f->world.links.opened, QStringList("http://www.verona.example/a"));
    }

    void editMenuFollowsTheSelection()
    {
        auto* window = f->open(juliet);
        auto& entry = f->control<QPlainTextEdit>(*window, "txtMsg");
        const auto states = [&] {
            emit f->control<QMenu>(*window, "mnuEdit").aboutToShow();
            QString enabled;
            for (const char* name : {"Cut", "Del", "Paste", "SelAll"})
                enabled += f->control<QAction>(*window, QByteArray("mnuEdit") + name).isEnabled() ? '1' : '0';
            return enabled;
        };
        entry.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(window));
        window->menuBar()->setFocus(); // as its mnemonic does
        QCOMPARE(states(), "0010");
        entry.setPlainText("rose");
        QCOMPARE(states(), "0011");
        ui::choose(window, "mnuEditSelAll");
        QCOMPARE(states(), "1111");
        ui::choose(window, "mnuEditCut");
        QCOMPARE(entry.toPlainText(), QString());
        QCOMPARE(QGuiApplication::clipboard()->text(), "rose");
        f->control<QLineEdit>(*window, "txtTO").setFocus();
        ui::choose(window, "mnuEditSelAll");
        ui::choose(window, "mnuEditDel");
        QCOMPARE(f->control<QLineEdit>(*window, "txtTO").text(), juliet);
    }

    void smallestSizeIsKept()
    {
        auto* window = f->open(juliet);
        window->resize(10, 10);
        QVERIFY(window->width() * 15 >= 7000 && window->height() * 15 >= 6200);
        for (const int height : {500, 900}) {
            window->resize(900, height);
            QCoreApplication::processEvents();
            const auto heightOf = [&](const char* name) { return ui::find<QWidget>(window, name)->height(); };
            const double left = height - heightOf("Toolbar1") - heightOf("txtTO") - heightOf("txtTOS") -
                                heightOf("StatusBar1") - 400 / 15.0;
            const double told = 0.55 * left / (left - 50);
            const double is = heightOf("txtLog") / double(heightOf("txtLog") + heightOf("txtMsg"));
            QVERIFY2(qAbs(is - told) < 0.02, qPrintable(QString::number(is)));
        }
    }

    void transcriptHasTheMenuUnlessShiftIsHeld_data()
    {
        columns<int, int, bool>("reason", "modifiers", "opens");
        row("click", int(QContextMenuEvent::Mouse), int(Qt::NoModifier), true);
        row("click with Shift", int(QContextMenuEvent::Mouse), int(Qt::ShiftModifier), false);
        row("Shift+F10", int(QContextMenuEvent::Keyboard), int(Qt::ShiftModifier), true);
    }
    void transcriptHasTheMenuUnlessShiftIsHeld()
    {
        const auto [reason, modifiers, opens] = fetched<int, int, bool>();
        auto* window = f->open(juliet);
        auto* menu = &f->control<QMenu>(*window, "mnuEdit");
        QContextMenuEvent event(QContextMenuEvent::Reason(reason), {5, 5}, {5, 5},
                                Qt::KeyboardModifiers(modifiers));
        QCoreApplication::sendEvent(f->control<TranscriptView>(*window, "txtLog").viewport(), &event);
        QCOMPARE(menu->isVisible(), opens);
        menu->hide();
        f->notices().showAtPlace();
        QCoreApplication::sendEvent(f->control<TranscriptView>(f->notices(), "txtMsg").viewport(), &event);
        QVERIFY(QApplication::activePopupWidget());
        QApplication::activePopupWidget()->close();
    }

    void commandsReachOtherRooms()
    {
        auto* window = f->open(juliet);
        QSignalSpy cards(f->hub.get(), &ChatWindow::vCardRequested);
        QSignalSpy invites(f->hub.get(), &ChatWindow::inviteRequested);
        QSignalSpy calls(f->hub.get(), &ChatWindow::callRequested);
        for (const char* name : {"mnustrvcard", "mnustrincchgr", "mnustrsendfile", "Toolbar1VCard",
                                 "Toolbar1Invite", "Toolbar1Call"})
            f->control<QAction>(*window, name).trigger();
        for (const auto* spy : {&cards, &invites, &calls})
            QCOMPARE(spy->size(), 2);
        QCOMPARE(cards[0][0].toString() + invites[0][0].toString(), juliet + juliet);
        const QString request = R"(<iq type="get" id="vcard_wj_3" to="%1"><VCARD xmlns="vcard-temp"/></iq>)";
        QCOMPARE(f->engine.takeSent(), QStringList({request.arg(juliet), request.arg(juliet)}));
    }

    void livesWithItsBag_data()
    {
        columns<End>("end");
        row("session closed", End([](auto& f, auto&) { sessions(f).session(juliet)->Close(); }));
        row("account left", End([](auto& f, auto&) { sessions(f).clear(); }));
        row("account changed",
            End([](auto& f, auto&) { f.client.Core->PluginManager->beginAccount("t@x"); }));
        row("key taken by another", End([](auto& f, auto&) {
                sessions(f).session(juliet)->Properties().Add(std::make_shared<QObject>(), "ChatWnd");
            }));
        row("window deleted", End([](auto&, auto& window) { delete &window; }));
        row("closed for good", End([](auto& f, auto& window) {
                f.client.UserClosing = true;
                window.show();
                window.close();
                f.client.UserClosing = false;
            }));
    }
    void livesWithItsBag()
    {
        QFETCH(End, end);
        const QPointer<MessageForm> window = f->open(juliet);
        window->close();
        QVERIFY(f->window(juliet) == window); // hidden only
        end(*f, *window);
        QVERIFY(!f->window(juliet));
        QVERIFY(f->registry.loaded().isEmpty());
        QTRY_VERIFY(!window);
        sessions(*f).session(juliet)->Properties().RemoveAll();
        QVERIFY(f->open(juliet)->isVisible());
    }

    void mailIsAddressedByThePerson()
    {
        auto* window = f->open(juliet);
        window->sendByEmail();
        f->world.boxes.inputs = {"laurence@cell.example"};
        window->sendByEmail();
        const QString mail = "mailto:laurence@cell.example?body=&subject=Jabber%20conversation%20with%20";
        QCOMPARE(f->world.links.opened, QStringList(mail + juliet));
        f->message(juliet, "chat", "<body>a &lt;&amp;#?% b\n" + QString("no ").repeated(5000) + "end</body>");
        f->world.boxes.inputs = {"laurence@cell.example"};
        window->sendByEmail();
        QVERIFY(isSafeLink(f->world.links.opened.last()));
        QVERIFY(f->world.links.opened.last().contains("no%20end%0A&subject="));
    }
};

BRELO_TEST(MessageFormTest)
#include "MessageFormTest.moc"
