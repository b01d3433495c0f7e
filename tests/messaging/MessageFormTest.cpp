#include "messaging/MessagingFixture.h"
#include "messaging/forms/TranscriptView.h"
#include "support/Table.h"
#include "support/TestRunner.h"

namespace
{

const QString composing =
    QStringLiteral("<message to=\"%1\" type=\"chat\"><x xmlns=\"jabber:x:event\"><composing>"
                   "</composing></x></message>");

void type(MessageForm& window, const QString& text)
{
    QTest::keyClicks(&MessagingFixture::control<QWidget>(window, "txtMsg"), text);
}

} // namespace

// What a person does in a message window.
class MessageFormTest : public QObject
{
    Q_OBJECT

private slots:
    void ownLineIsSentShownAndLogged()
    {
        MessagingFixture f;
        auto* window = f.open(juliet);
        type(*window, "1 < 2");
        f.engine.takeSent();
        QTest::mouseClick(&f.control<QWidget>(*window, "cmdSend"), Qt::LeftButton);
        QCOMPARE(
            f.engine.takeSent(),
            QStringList(QStringLiteral("<message to=\"%1\" type=\"chat\"><body>1 &lt; 2</body></message>")
                            .arg(juliet)));
        QCOMPARE(f.transcript(*window), QStringLiteral(" <07:08>  %1/BreloIM: 1 < 2\n").arg(own));
        QCOMPARE(f.formatOf(*window, own).foreground().color(), QColor(99, 161, 64));
        QCOMPARE(f.logOf(juliet).count(QStringLiteral("%1 (07:08:09): 1 < 2\r\n").arg(own)), 1);
        QCOMPARE(f.transcript(*window, "txtMsg"), QString());
        // Nothing to send, nothing sent.
        QTest::mouseClick(&f.control<QWidget>(*window, "cmdSend"), Qt::LeftButton);
        QCOMPARE(f.engine.takeSent(), QStringList());
        // The peer's next line has the peer's colour again.
        f.message(juliet + QStringLiteral("/b"), "chat", "<body>no</body>");
        QCOMPARE(f.formatOf(*window, juliet).foreground().color(), QColor(255, 50, 50));
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
        MessagingFixture f;
        f.client.MyRoster.record(juliet)->Resources = resources;
        auto* window = f.open(juliet);
        auto& combo = f.control<QComboBox>(*window, "ComboResource");
        QCOMPARE(combo.isVisible(), resources.size() > 1);
        combo.setEditText(chosen);
        f.control<QPlainTextEdit>(*window, "txtMsg").setPlainText("x");
        f.engine.takeSent();
        window->cmdSend_Click();
        const auto sent = f.engine.takeSent();
        QCOMPARE(sent.size(), 1);
        QVERIFY2(sent[0].startsWith(QStringLiteral("<message to=\"%1\" ").arg(address)), qPrintable(sent[0]));
    }

    void typingIsToldOncePerText()
    {
        MessagingFixture f;
        auto* window = f.open(juliet);
        type(*window, "abc");
        QCOMPARE(f.engine.takeSent(), QStringList(composing.arg(juliet)));
        f.control<QPlainTextEdit>(*window, "txtMsg").clear();
        type(*window, "d");
        QCOMPARE(f.engine.takeSent(), QStringList());
        window->cmdSend_Click();
        QCOMPARE(f.engine.takeSent().size(), 1);
        type(*window, "e");
        QCOMPARE(f.engine.takeSent(), QStringList(composing.arg(juliet)));

        const QString odd = QStringLiteral("o\"<&@x.example");
        type(*f.open(odd), "f");
        QCOMPARE(f.engine.takeSent(), QStringList(composing.arg("o&quot;&lt;&amp;@x.example")));
    }

    void enterSendsByTheToggle()
    {
        MessagingFixture f;
        auto* window = f.open(juliet);
        auto* entry = &f.control<QPlainTextEdit>(*window, "txtMsg");
        type(*window, "a");
        QTest::keyClick(entry, Qt::Key_Return, Qt::ShiftModifier);
        type(*window, "b");
        f.engine.takeSent();
        QTest::keyClick(entry, Qt::Key_Return);
        QVERIFY(f.engine.takeSent().value(0).contains("<body>a\nb</body>"));

        f.control<QAction>(*window, "Toolbar1Return").trigger();
        QVERIFY(f.control<QAction>(*window, "mnuToolsNoChar13").isChecked());
        QVERIFY(f.control<QAction>(*window, "Toolbar1Return").isChecked());
        QVERIFY(!window->defaultButton());
        type(*window, "c");
        f.engine.takeSent();
        QTest::keyClick(entry, Qt::Key_Return);
        QCOMPARE(f.engine.takeSent(), QStringList());
        QTest::keyClick(entry, Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(f.engine.takeSent().value(0).contains("<body>c\n</body>"));

        f.control<QAction>(*window, "mnuToolsNoChar13").trigger();
        QCOMPARE(window->defaultButton(), &f.control<QPushButton>(*window, "cmdSend"));
    }

    void sentTextIsAsTyped()
    {
        MessagingFixture f;
        auto* window = f.open(juliet);
        const QString text = QStringLiteral("no") + QChar(0x00A0) + QStringLiteral("break\tand ") +
                             QString::fromUtf8("\xF0\x9F\x98\x80");
        f.control<QPlainTextEdit>(*window, "txtMsg").setPlainText(text + QChar(0x0B));
        f.engine.takeSent();
        window->cmdSend_Click();
        // A character that XML can't carry doesn't cost the stream.
        QVERIFY(f.engine.takeSent().value(0).contains(text + QChar(QChar::ReplacementCharacter) +
                                                      QStringLiteral("</body>")));
    }

    void closingHidesAndReopensInPlace()
    {
        MessagingFixture f;
        f.client.settings.CurrentWindowOnTop = false;
        auto* window = f.open(juliet);
        window->move(40, 60);
        QTest::mouseClick(&f.control<QWidget>(*window, "cmdCancel"), Qt::LeftButton);
        QVERIFY(!window->isVisible());
        QCOMPARE(window->Tag, "600|900");
        window->move(0, 0);
        f.message(juliet, "chat", "<body>again</body>");
        QCOMPARE(f.window(juliet), window);
        QVERIFY(window->isVisible());
        QCOMPARE(window->pos(), QPoint(40, 60));
    }

    void closingForGoodLeavesTheBag()
    {
        MessagingFixture f;
        const QPointer<MessageForm> window = f.open(juliet);
        f.client.UserClosing = true;
        window->close();
        QTRY_VERIFY(!window);
        QVERIFY(!f.window(juliet));
        f.client.UserClosing = false;
        QVERIFY(f.open(juliet));
    }

    void sessionThatGoesTakesItsWindow()
    {
        MessagingFixture f;
        const QPointer<MessageForm> window = f.open(juliet);
        f.client.Core->PluginManager->beginAccount("tybalt@capulet.example");
        QVERIFY(!f.registry.isLoaded(window));
        QTRY_VERIFY(!window);
    }

    void transcriptPassesTypingOn()
    {
        MessagingFixture f;
        auto* window = f.open(juliet);
        QVERIFY(QTest::qWaitForWindowActive(window));
        auto& log = f.control<QWidget>(*window, "txtLog");
        log.setFocus();
        QTest::keyClick(&log, Qt::Key_Q);
        QCOMPARE(f.transcript(*window, "txtMsg"), "q");
        QCOMPARE(window->focusWidget(), &f.control<QWidget>(*window, "txtMsg"));
    }

    void linkIsOpenedByAPress()
    {
        MessagingFixture f;
        auto* window = f.open(juliet);
        f.message(juliet, "chat", "<body>www.verona.example/a.\njavascript:alert(1)</body>");
        auto& log = f.control<TranscriptView>(*window, "txtLog");
        window->resize(900, 600);
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QCoreApplication::processEvents();
        const auto press = [&](const QString& text) {
            const auto found = log.document()->find(text);
            QVERIFY(!found.isNull());
            QTest::mouseClick(log.viewport(), Qt::LeftButton, {},
                              log.cursorRect(found).center() - QPoint(4, 0));
        };
        press("verona.example/a");
        press("script");
        QCOMPARE(f.world.links.opened, QStringList("http://www.verona.example/a"));
    }

    void editMenuFollowsTheSelection()
    {
        MessagingFixture f;
        auto* window = f.open(juliet);
        auto& entry = f.control<QPlainTextEdit>(*window, "txtMsg");
        auto& menu = f.control<QMenu>(*window, "mnuEdit");
        const auto enabled = [&](const char* name) { return f.control<QAction>(*window, name).isEnabled(); };
        const auto states = [&] {
            emit menu.aboutToShow();
            return QList<bool>{enabled("mnuEditCut"), enabled("mnuEditDel"), enabled("mnuEditPaste"),
                               enabled("mnuEditSelAll")};
        };
        entry.setFocus();
        QCOMPARE(states(), QList<bool>({false, false, true, false}));
        entry.setPlainText("rose");
        QCOMPARE(states(), QList<bool>({false, false, true, true}));
        f.control<QAction>(*window, "mnuEditSelAll").trigger();
        QCOMPARE(states(), QList<bool>({true, true, true, true}));
        f.control<QAction>(*window, "mnuEditCut").trigger();
        QCOMPARE(entry.toPlainText(), QString());
        QCOMPARE(QGuiApplication::clipboard()->text(), "rose");
        f.control<QLineEdit>(*window, "txtTO").setFocus();
        f.control<QAction>(*window, "mnuEditSelAll").trigger();
        f.control<QAction>(*window, "mnuEditDel").trigger();
        QCOMPARE(f.control<QLineEdit>(*window, "txtTO").text(), juliet);
    }

    void smallestSizeIsKept()
    {
        MessagingFixture f;
        auto* window = f.open(juliet);
        window->resize(10, 10);
        QVERIFY(window->width() * 15 >= 7000 && window->height() * 15 >= 6200);
        window->resize(900, 900);
        QCoreApplication::processEvents();
        const double log = f.control<QWidget>(*window, "txtLog").height();
        const double both = log + f.control<QWidget>(*window, "txtMsg").height();
        QVERIFY2(qAbs(log / both - 0.55) < 0.02, qPrintable(QString::number(log / both)));
    }

    void commandsReachOtherRooms()
    {
        MessagingFixture f;
        auto* window = f.open(juliet);
        QSignalSpy cards(f.hub.get(), &ChatWindow::vCardRequested);
        QSignalSpy invites(f.hub.get(), &ChatWindow::inviteRequested);
        QSignalSpy calls(f.hub.get(), &ChatWindow::callRequested);
        for (const char* name : {"mnustrvcard", "mnustrincchgr", "mnustrsendfile", "Toolbar1VCard",
                                 "Toolbar1Invite", "Toolbar1Call"})
            f.control<QAction>(*window, name).trigger();
        QCOMPARE(cards.size(), 2);
        QCOMPARE(invites.size(), 2);
        QCOMPARE(calls.size(), 2);
        QCOMPARE(cards[0][0].toString() + invites[0][0].toString(), juliet + juliet);
        const QString request =
            QStringLiteral("<iq type=\"get\" id=\"vcard_wj_3\" to=\"%1\"><VCARD xmlns=\"vcard-temp\"/></iq>");
        QCOMPARE(f.engine.takeSent(), QStringList({request.arg(juliet), request.arg(juliet)}));
    }

    // A window that hides when it is closed doesn't live on without its bag, nor the bag with a dead window.
    void livesWithItsBag_data()
    {
        columns<std::function<void(MessageForm&, SessionTable&)>>("end");
        const auto row = [](const char* name, std::function<void(MessageForm&, SessionTable&)> end) {
            QTest::newRow(name) << end;
        };
        row("session closed", [](auto&, auto& sessions) { sessions.session(juliet)->Close(); });
        row("account left", [](auto&, auto& sessions) { sessions.clear(); });
        row("key taken by another", [](auto&, auto& sessions) {
            sessions.session(juliet)->Properties().Add(std::make_shared<QObject>(), "ChatWnd");
        });
        row("window deleted", [](auto& window, auto&) { delete &window; });
    }

    void livesWithItsBag()
    {
        QFETCH(std::function<void(MessageForm&, SessionTable&)>, end);
        MessagingFixture f;
        auto& sessions = f.client.Core->PluginManager->sessions();
        const QPointer<MessageForm> window = f.open(juliet);
        window->close();
        QVERIFY(f.window(juliet) == window); // hidden only
        end(*window, sessions);
        QVERIFY(!f.window(juliet));
        QVERIFY(f.registry.loaded().isEmpty());
        QTRY_VERIFY(!window);
        sessions.session(juliet)->Properties().RemoveAll();
        QVERIFY(f.open(juliet)->isVisible());
    }

    void mailIsAddressedByThePerson()
    {
        MessagingFixture f;
        auto* window = f.open(juliet);
        window->sendByEmail();
        f.world.boxes.inputs = {"laurence@cell.example"};
        window->sendByEmail();
        QCOMPARE(f.world.links.opened,
                 QStringList(
                     QStringLiteral("mailto:laurence@cell.example?body=&subject=Jabber conversation with ") +
                     juliet));
    }
};

BRELO_TEST(MessageFormTest)
#include "MessageFormTest.moc"
