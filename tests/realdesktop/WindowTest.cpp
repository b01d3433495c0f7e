#include "contacts/forms/Roster.h"
#include "contacts/forms/RosterForm.h"
#include "desktop/forms/QtDesktop.h"
#include "desktop/forms/QtTrayIcon.h"
#include "realdesktop/ClientTest.h"
#include "support/MailServer.h"
#include "support/Table.h"
#include "support/TestRunner.h"
#include "support/UiDriver.h"

#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScreen>
#include <QWindow>

// What the window manager and the client make of the windows together.
class WindowTest : public ClientTest
{
    Q_OBJECT

    enum Way { Enter, DoubleClick, Entry, Balloon };
    enum Before { Nothing, Closed, ClosedByMouse, Iconic, CameAsIcon };

    // The toolkit draws it.
    static const QWidget* balloon()
    {
        for (const auto* window : QApplication::topLevelWidgets()) {
            if (window->inherits("QBalloonTip") && window->windowHandle()->isExposed())
                return window;
        }
        return nullptr;
    }

private slots:
    void anOpenedConversationIsReadyToType_data()
    {
        columns<Way, Before>("way", "before");
        row("by Enter", Enter, Nothing);
        row("by double click", DoubleClick, Nothing);
        row("by the contact's menu", Entry, Nothing);
        row("by the balloon of a message", Balloon, Nothing);
        row("closed before", DoubleClick, Closed);
        row("closed by its button", DoubleClick, ClosedByMouse);
        row("came as an icon, restored, closed", DoubleClick, CameAsIcon);
        row("iconic before", DoubleClick, Iconic);
    }

    void anOpenedConversationIsReadyToType()
    {
        const auto [way, before] = fetched<Way, Before>();
        if (before == CameAsIcon) {
            julietSays("Ay me!");
            QVERIFY(SOON(chat() && x.state(chat()) == State::Iconic && x.isUrgent(chat())));
            QCOMPARE(program->tray().unread(), 1);
            x.activate(chat());
        }
        QVERIFY(before == Nothing || (before == CameAsIcon ? SOON(isActive(chat())) : openChatByKeys()));
        const QRect left = before == Nothing ? QRect() : putAside(chat());
        if (before == ClosedByMouse)
            click(form("MessageForm"), "cmdCancel");
        else if (before == Iconic)
            x.minimise(chat());
        else if (before != Nothing)
            x.close(chat());
        QVERIFY(SOON((!chat() || x.state(chat()) == State::Iconic) && isActive(main())));
        if (before == Closed) { // and brought back by a message, without taking the screen
            server->client("romeo")->sendText("<message from='juliet@127.0.0.1/Home' type='chat'>"
                                              "<x xmlns='jabber:x:event'><composing/></x></message>");
            QVERIFY(SOON(chat() && x.state(chat()) == State::Iconic));
            julietSays("Ay me!");
            QVERIFY(SOON(x.isUrgent(chat())));
            x.settle();
            QCOMPARE(x.state(chat()), State::Iconic);
        }
        if (way == DoubleClick) {
            clickContact("juliet", XDisplay::Left, 2);
        } else if (way == Entry) {
            clickContact("juliet", XDisplay::Right);
            QVERIFY(SOON(x.menu()));
            clickEntry("mnuContextSendMessage");
        } else if (way == Balloon) {
            julietSays("Ay me!");
            QVERIFY(SOON(balloon()));
            x.click(balloon()->geometry().center());
        }
        QVERIFY(way == Enter ? openChatByKeys() : SOON(isActive(chat())));
        QVERIFY(before == Nothing || SOON(framed(chat()) == left));
        QVERIFY(SOON(!x.isUrgent(chat()) && program->tray().unread() == 0));
        QVERIFY(SOON(focus() == "txtMsg"));
        x.type("Hark!");
        x.press(XDisplay::Return);
        QVERIFY(SOON(server->hasReceived("<body>Hark!</body>")));
    }

    // Nothing of its going has been heard of yet when it comes again.
    void aWindowThatComesBackAtOnceAsAnIconStaysOne()
    {
        QVERIFY(openChatByKeys());
        auto& window = *form("MessageForm");
        for (int i = 0; i < 10; ++i) {
            window.close();
            window.setWindowState(Qt::WindowMinimized);
            window.show();
            QVERIFY(SOON(chat() && x.state(chat()) != State::Withdrawn));
            x.settle();
            QCOMPARE(x.state(chat()), State::Iconic);
            x.activate(chat());
            QVERIFY(SOON(isActive(chat()) && window.isActiveWindow()));
        }
    }

    void aPlaceOutlastsQuickHiding_data()
    {
        columns<Qt::WindowState, bool>("state", "awaited");
        row("while it comes", Qt::WindowNoState, false);
        row("while it comes as an icon", Qt::WindowMinimized, false);
        row("when it has the keys", Qt::WindowNoState, true);
    }

    // The window seems to stand here and there until the window manager has put its frame around it.
    void aPlaceOutlastsQuickHiding()
    {
        const auto [state, awaited] = fetched<Qt::WindowState, bool>();
        QVERIFY(openChatByKeys());
        const QRect left = putAside(chat());
        auto& window = *form("MessageForm");
        QVERIFY(SOON(window.windowHandle()->framePosition() == left.topLeft()));
        for (int turns = 0; turns < 40; ++turns) {
            window.hide();
            window.setWindowState(state);
            window.show();
            QVERIFY(!awaited || SOON(window.isActiveWindow()));
            for (int turn = 0; turn < turns; ++turn)
                QCoreApplication::processEvents();
        }
        window.hide();
        window.bringUp();
        QVERIFY(SOON(window.isActiveWindow()));
        QCOMPARE(framed(chat()), left);
    }

    void whatComesByItselfDoesNotTakeTheKeys_data()
    {
        columns<QString, QString>("xml", "title");
        row("a notice", "<message from='127.0.0.1' type='headline'><body>news</body></message>", "Headlines");
        row("a message", "<message from='tybalt@127.0.0.1/x' type='chat'><body>Ho!</body></message>",
            "Tybalt");
        row("a request", "<presence from='paris@127.0.0.1' type='subscribe'/>", "Authorization");
    }

    void whatComesByItselfDoesNotTakeTheKeys()
    {
        const auto [xml, title] = fetched<QString, QString>();
        QVERIFY(openChatByKeys());
        server->client("romeo")->sendText(xml);
        QVERIFY(SOON(x.window(title)));
        x.settle();
        x.type("Hark!");
        const auto* entry = ui::find<QPlainTextEdit>(form("MessageForm"), "txtMsg");
        QVERIFY(SOON(entry->toPlainText() == "Hark!"));
        QVERIFY(isActive(chat()));
    }

    // An answer can come before the window manager has seen to the window that waits for it, or to the one
    // that had a question above it.
    void aQuestionStandsAboveTheWindowThatWillBeActive()
    {
        mainForm().hide();
        QVERIFY(SOON(!QApplication::activeWindow()));
        Form form(program->session().windows.registry, "Form");
        form.show();
        QtMessageBoxes boxes;
        QList<QWidget*> owners;
        for (int question = 0; question < 2; ++question) {
            ui::onNextDialog([&owners](QWidget* box) {
                owners += box->parentWidget();
                box->close();
            });
            boxes.information("Title", "Text");
        }
        QCOMPARE(owners, QList<QWidget*>({&form, &form}));
    }

    void theMainWindowGoesAndComesBack_data()
    {
        columns<bool, bool, int>("tray", "maximised", "trips");
        row("as an icon", false, false, 1);
        row("in the tray", true, false, 3);
        row("maximised in the tray", true, true, 2);
    }

    void theMainWindowGoesAndComesBack()
    {
        const auto [tray, maximised, trips] = fetched<bool, bool, int>();
        const QRect aside = putAside(main());
        if (maximised)
            x.maximise(main());
        QVERIFY(!maximised || SOON(mainForm().isMaximized() &&
                                   framed(main()).width() == QApplication::primaryScreen()->size().width()));
        const QRect before = framed(main());
        for (int trip = 0; trip < trips; ++trip) {
            tray ? x.close(main()) : x.minimise(main());
            QVERIFY(SOON(tray ? !main() : x.state(main()) == State::Iconic && mainForm().isMinimized()));
            if (tray)
                emit program->tray().doubleClicked();
            else
                x.activate(main());
            QVERIFY(SOON(isActive(main()) && !mainForm().isMinimized()));
            QVERIFY(SOON(framed(main()) == before));
        }
        if (maximised)
            x.maximise(main(), false);
        // Where a window stands that was shown maximised is the window manager's choice.
        QVERIFY(SOON(!mainForm().isMaximized() && framed(main()).size() == aside.size() &&
                     (maximised || framed(main()) == aside)));
    }

    // The program waits for the mail server a while, and nothing that still happens finds anybody.
    void theProgramEndsWhileTheMailServerIsSilent()
    {
        MailServer mail;
        mail.answerNext("UNSUBSCRIBE", {});
        ui::choose(&mainForm(), "Toolbar1Button7");
        QVERIFY(SOON(form("Logon") && isActive(x.window("Sottoscrizione"))));
        ui::onNextDialog([](QWidget* box) { QTest::keyClick(box, Qt::Key_Return); });
        for (const QString& text : {mail.inbox(), QString("ann"), QString("secret")}) {
            x.type(text);
            x.press(text == "secret" ? XDisplay::Return : XDisplay::Tab);
        }
        QVERIFY(SOON(!form("Logon")->isVisible() && !mail.subscriptions.isEmpty()));
        QTimer::singleShot(0, &mail, [this] { program->session().end.exitProgram(); });
        QCOMPARE(QApplication::exec(), 0);
        program.reset();
        QCOMPARE(mail.count("UNSUBSCRIBE"), 1);
    }

    void aClickThatBringsTheListUpRenamesNothing()
    {
        QVERIFY(openChatByKeys()); // juliet is selected
        const auto edited = [this] { return mainForm().Roster1->findChild<QLineEdit*>() != nullptr; };
        putAside(chat()); // it covered the row
        clickContact("juliet");
        QVERIFY(SOON(isActive(main())));
        QVERIFY(!QTest::qWaitFor(edited, 3 * QApplication::doubleClickInterval()));
        clickContact("juliet");
        QVERIFY(SOON(edited()));
    }

    void anInvitationAsksToBeLookedAt()
    {
        server->client("romeo")->sendText("<message from='juliet@127.0.0.1/Home'><body>Come</body>"
                                          "<x xmlns='jabber:x:conference' jid='verse@rooms.x'/></message>");
        QVERIFY(SOON(x.window("Group Chat") && x.isUrgent(x.window("Group Chat")) && isActive(main())));
    }

    void menusAnswerToKeys()
    {
        x.press(u's', {XDisplay::Alt}); // Status
        QVERIFY(SOON(x.menu()));
        x.press(XDisplay::Down); // from the first entry to the next
        x.press(XDisplay::Return);
        QVERIFY(SOON(server->hasReceived("<show>away</show>")));
    }
};

BRELO_TEST(WindowTest)
#include "WindowTest.moc"
