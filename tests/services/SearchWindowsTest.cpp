#include "desktop/forms/WaitAnimation.h"
#include "messaging/forms/TranscriptView.h"
#include "sandbox/SandboxServer.h"
#include "services/forms/ResultGrid.h"
#include "session/SessionFixture.h"
#include "settings/Paths.h"
#include "support/LiveClient.h"

namespace
{

const QString own = "montague.example";
const QString directory = "users.montague.example";
const QString impossible = "Sorry, don't have the necessary data. (Read the INFO on the side !)";

QString browse(const QString& id, const QString& to)
{
    return "<iq type=\"get\" id=\"" + id + "\" to=\"" + to +
           "\"><query xmlns=\"jabber:iq:browse\"></query></iq>";
}

QString init(const QString& to)
{
    return "<iq to=\"" + to +
           "\" type=\"get\" id=\"VRX_SEARCH_INIT\"><query xmlns=\"jabber:iq:search\"/></iq>";
}

QStringList adding(const QString& jid)
{
    return {QString("<iq id=\"VRX_Add\" type=\"set\"><query xmlns=\"jabber:iq:roster\">"
                    "<item jid=\"%1\" name=\"%1\"/></query></iq>")
                .arg(jid),
            "<presence type=\"subscribe\" to=\"" + jid + "\"/>"};
}

} // namespace

// The windows that find and add people.
class SearchWindowsTest : public QObject
{
    Q_OBJECT

    struct Searching : SignedInClient {
        Searching()
        {
            client.MyAgents.AddItem("msn." + own, "MSN", false, true);
            client.MyAgents.AddItem("poses." + own, own, false, false);
            takeSent();
        }
        Form* add() const { return form("SearchAddForm"); }
        Form* search() const { return form("SearchForm"); }
        QListWidget& directories() const { return *ui::find<QListWidget>(add(), "BrowseResult"); }
        QComboBox& network() const { return *ui::find<QComboBox>(add(), "Combo1"); }
        ResultGrid& grid() const { return *ui::find<ResultGrid>(search(), "SResultGrid"); }

        void find() { ui::choose(rosterForm(), "mRosterFFind"); }
        void answer(const QString& ns, const QString& id, const QString& from, const QString& inner,
                    const QString& type = "result")
        {
            inject(QString("<iq type='%1' id='%2' from='%3'><query xmlns='jabber:iq:%4'>%5</query>%6</iq>")
                       .arg(type, id, from, ns, type == "error" ? "" : inner, type == "error" ? inner : ""));
        }
        void services(const QString& inner) { answer("browse", "VRX_GET_SERVICE", own, inner); }
        void found(const QString& inner) { answer("search", "VRX_SEARCH_RESULT", directory, inner); }
        // The directory's form is shown.
        void openSearch(const QString& fields = "<first/><last/>")
        {
            find();
            services("<service type='jud' jid='" + directory + "' name='People'/>");
            directories().setCurrentRow(0);
            QTest::keyClick(&directories(), Qt::Key_Return);
            answer("search", "VRX_SEARCH_INIT", directory, fields);
            takeSent();
        }
        static QString shown(Form* form, const char* name)
        {
            const auto* label = ui::find<QLabel>(form, name);
            return label->isVisible() ? label->text() : QString();
        }
        static bool isEnabled(Form* form, const char* name)
        {
            return ui::find<QWidget>(form, name)->isEnabled();
        }
        static bool isWaiting(Form* form)
        {
            return ui::find<WaitAnimation>(form, "Image1")->frameOnShow() >= 0;
        }
        QString boxes()
        {
            QStringList texts;
            for (const auto& box : std::exchange(world.boxes.shown, {}))
                texts += box.title + ": " + box.text;
            return texts.join('|');
        }
        // Lets time pass until the window is tired of waiting.
        void tire(Form* form)
        {
            for (auto* clock : form->findChildren<QTimer*>("AnswerClock"))
                clock->setInterval(0);
        }
    };
    std::optional<Searching> f;

private slots:
    void init() { f.emplace(); }
    void cleanup() { f.reset(); }

    void directoriesAreFound()
    {
        f->find();
        QCOMPARE(f->takeSent(), QStringList(browse("VRX_GET_SERVICE", own)));
        QVERIFY(f->add()->isVisible() && !f->isEnabled(f->add(), "cmdAsk"));
        const auto hint = [&] { return f->directories().accessibleDescription(); };
        QVERIFY(hint().contains("Looking"));
        f->services("<ns/>");
        QVERIFY(hint().contains("no directory") && !f->isEnabled(f->add(), "cmdAsk"));
        f->services("<item type='jud' jid='d.x'/>");
        QCOMPARE(f->takeSent(), QStringList(browse("VRX_browser", "d.x")));
        // Asked for again, a row stands there once.
        for (int round = 0; round < 2; ++round)
            f->answer("browse", "VRX_browser", "d.x", "<service jid='a.x' name='A'/><service name='D'/>");
        QCOMPARE(f->directories().count(), 2);
        QVERIFY(f->takeSent().isEmpty());
        ui::click(f->add(), "cmdAsk");
        QCOMPARE(f->boxes(), "Error: Attention: Nothing selected, select first!");
        f->directories().setCurrentRow(1);
        f->gateway->connected = false;
        ui::click(f->add(), "cmdAsk");
        QVERIFY(f->takeSent().isEmpty() && !f->isEnabled(f->search(), "CmdSearch"));
        f->gateway->connected = true;
        ui::click(f->add(), "cmdAsk");
        QCOMPARE(f->takeSent(), QStringList(::init("d.x")));
        QCOMPARE(f->search()->height(), 356);
    }

    // Nobody wants a window back who closed it.
    void answersForAClosedWindowAreDropped()
    {
        f->openSearch();
        ui::click(f->search(), "CmdSearch");
        for (const char* name : {"SearchForm", "SearchAddForm"})
            ui::click(f->form(name), "cmdClose");
        f->services("<service type='jud' jid='d.x'/>");
        f->answer("browse", "VRX_browser", "d.x", "<service name='D'/>");
        f->answer("browse", "Check_Server", "d.x", "");
        f->found("<item jid='a@x'/>");
        QVERIFY(!f->add() && !f->search());
        f->takeSent();
        f->gateway->connected = false;
        f->find();
        QVERIFY(!f->add() && f->takeSent().isEmpty());
        QVERIFY(f->shown(f->rosterForm(), "StatusBar1Panel1").contains("not connected"));
    }

    void peopleAreFoundAndAdded()
    {
        f->openSearch("<instructions>Fill &lt;b&gt;in</instructions><first/><a:b xmlns:a='jabber:iq:search'>7"
                      "</a:b><last>Lee</last>");
        QCOMPARE(f->shown(f->search(), "LblInstructions"), "Fill <b>in");
        QCOMPARE(f->shown(f->search(), "LblInstruction_1"), "first");
        QCOMPARE(ui::find<QLineEdit>(f->search(), "Text1_3")->text(), "Lee");
        QVERIFY(!f->isEnabled(f->search(), "Text1_2") &&
                f->shown(f->search(), "LblInstruction_2").contains("sent"));
        QCOMPARE(f->search()->focusWidget()->objectName(), "Text1_1");
        ui::type(f->search(), "Text1_1", "A<");
        QTest::keyClick(f->search()->focusWidget(), Qt::Key_Return);
        QCOMPARE(f->takeSent(),
                 QStringList("<iq to=\"" + directory +
                             "\" type=\"set\" id=\"VRX_SEARCH_RESULT\"><query xmlns=\"jabber:iq:search\">"
                             "<first>A&lt;</first><last>Lee</last></query></iq>"));
        QVERIFY(f->isWaiting(f->search()) && f->shown(f->search(), "lblConnecting") == "Requesting....");
        f->found("<item jid='B@x'><first>b</first></item><item "
                 "jid='a@x'><first>z</first><last>A\tB</last></item>");
        QVERIFY(!f->isWaiting(f->search()) && !f->isEnabled(f->search(), "cmdAdd"));
        auto& grid = f->grid();
        QVERIFY(grid.columnWidth(0) >= 133);
        // By the header; then by the keys alone.
        grid.sortByColumn(0, Qt::AscendingOrder);
        QCOMPARE(grid.model()->index(0, 0).data(), "a@x");
        f->search()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f->search()));
        QTest::keyClick(f->search()->focusWidget(), Qt::Key_Tab);
        QTest::keyClick(f->search()->focusWidget(), Qt::Key_Tab);
        QCOMPARE(f->search()->focusWidget(), &grid);
        QCOMPARE(grid.selectedJid(), "a@x");
        QTest::keySequence(&grid, QKeySequence::Copy);
        QCOMPARE(QGuiApplication::clipboard()->text(), "a@x\tz\tA B");
        QTest::keyClick(&grid, Qt::Key_Return);
        QCOMPARE(f->takeSent(), adding("a@x"));
        const auto* notices = ui::find<TranscriptView>(f->form("HeadLineForm"), "txtMsg");
        QVERIFY(notices->isVisible());
        const QString line = notices->transcriptText();
        for (const char* part : {" BreloIM: ", "Notification!",
                                 "Your request has been submitted; waiting for a reply from your friend, "
                                 "the contact will be placed in a group called \"Waiting authorization\"\n"})
            QVERIFY2(line.contains(part), part);
        ui::click(f->search(), "cmdAdd"); // the second click of a double click
        QVERIFY(f->takeSent().isEmpty() && f->boxes().isEmpty());
        grid.selectAll();
        QTest::keySequence(&grid, QKeySequence::Copy);
        QCOMPARE(QGuiApplication::clipboard()->text(), "a@x\tz\tA B\nB@x\tb\t");
        QVERIFY(!f->isEnabled(f->search(), "cmdAdd"));
        f->found("<item jid='c@x'/>"); // nobody searched again
        QCOMPARE(grid.model()->rowCount(), 2);
    }

    void menuOfAResult_data()
    {
        columns<QString, QString, QString>("entry", "copied", "does");
        row("add", "&Add", "", "VRX_Add");
        row("write", "Send &Message", "", "MessageForm");
        row("copy", "&Copy", "a@x\tA", "");
        row("copy the address", "Copy A&ddress", "a@x", "");
    }
    void menuOfAResult()
    {
        const auto [entry, copied, does] = fetched<QString, QString, QString>();
        f->openSearch();
        ui::click(f->search(), "CmdSearch");
        f->found("<item jid='a@x'><first>A</first></item>");
        f->takeSent();
        f->grid().selectRow(0);
        QGuiApplication::clipboard()->clear();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QCoreApplication::sendEvent(&f->grid(), &event);
        for (auto* action : ui::find<QMenu>(&f->grid(), "mnuResults")->actions()) {
            if (action->text() == entry)
                action->trigger();
        }
        f->client.Core->tick();
        QCOMPARE(QGuiApplication::clipboard()->text(), copied);
        QCOMPARE(f->takeSent().join(' ').contains("VRX_Add"), does == "VRX_Add");
        QCOMPARE(f->form("MessageForm") != nullptr, does == "MessageForm");
    }

    void failuresAreTold_data()
    {
        columns<QString, Act, QString>("id", "happens", "word");
        const auto answer = [](const char* id, const QString& from, const QString& inner, const char* type) {
            return Act(
                [=](FakeClient& c) { static_cast<Searching&>(c).answer("search", id, from, inner, type); });
        };
        const QString no = "<error code='406'>No &lt;way&gt;</error>";
        row("the form", "VRX_SEARCH_INIT", answer("VRX_SEARCH_INIT", directory, no, "error"), "No <way>");
        row("the search", "VRX_SEARCH_RESULT", answer("VRX_SEARCH_RESULT", directory, no, "error"),
            "No <way>");
        row("no fields", "VRX_SEARCH_INIT", answer("VRX_SEARCH_INIT", directory, "", "result"), "nothing to");
        row("too many fields", "VRX_SEARCH_INIT",
            answer("VRX_SEARCH_INIT", directory, QString("<f/>").repeated(5000), "result"), "more fields");
        row("many were found", "VRX_SEARCH_RESULT",
            answer("VRX_SEARCH_RESULT", directory, QString("<item/>").repeated(12), "result"),
            "12 were found");
        row("connection lost", "VRX_SEARCH_INIT", Act([](FakeClient& c) { c.gateway->connected = false; }),
            "not connected any more");
        row("silence", "", Act([](FakeClient&) {}), "has not answered yet");
        row("another directory, late", "", answer("VRX_SEARCH_INIT", "other.x", no, "error"), "");
    }
    void failuresAreTold()
    {
        const auto [id, happens, word] = fetched<QString, Act, QString>();
        f->openSearch();
        const bool searches = id == "VRX_SEARCH_RESULT";
        searches ? ui::click(f->search(), "CmdSearch") : ui::click(f->add(), "cmdAsk");
        QVERIFY(f->isWaiting(f->search()));
        happens(*f);
        if (!word.isEmpty())
            f->tire(f->search());
        QTRY_VERIFY(f->shown(f->search(), "lblState").contains(word));
        QCOMPARE(f->isWaiting(f->search()), id.isEmpty());
        // The person can go on.
        QVERIFY(f->isEnabled(f->search(), "cmdClose") && f->isEnabled(f->add(), "cmdAsk"));
    }

    // What would blow up the window, or hold it for long.
    void hostileFormsStaySmall()
    {
        const QString marks(300'000, QChar(0x316));
        f->openSearch("<instructions>" + QString("word ").repeated(200'000) + "</instructions><" +
                      QString(1000, 'n') + ">" + marks + "</" + QString(1000, 'n') + ">");
        QVERIFY(f->shown(f->search(), "LblInstructions").size() < 10'000);
        QVERIFY(ui::find<QLineEdit>(f->search(), "Text1_1")->text().size() < 10'000);
        QVERIFY(f->search()->width() < 1000 && f->search()->height() < 700);
        ui::click(f->search(), "CmdSearch");
        QVERIFY(f->takeSent().value(0).contains("<" + QString(1000, 'n') + ">"));
        f->answer("search", "VRX_SEARCH_RESULT", directory, "<error>" + marks + "</error>", "error");
        QVERIFY(f->shown(f->search(), "lblState").size() < 300);
    }

    void addressIsAdded_data()
    {
        columns<QString, QString, QString, QString>("network", "name", "jid", "box");
        row("own server", own, "paris", "paris@" + own, "");
        row("gateway", "MSN", "ann@mail.example", "ann%mail.example@msn." + own, "");
        row("typed server", "x.example", " ann ", "ann@x.example", "");
        row("no name", own, "", "", "IMPOSSIBLE!: " + impossible);
        row("no network", "", "ann", "", "IMPOSSIBLE!: " + impossible);
        row("two signs", own, "ann@x", "", "Error: This is no address of a contact: ann@x@" + own);
        row("a resource", own, "ann/x", "", "Error: This is no address of a contact: ann/x@" + own);
        row("oneself", own, "Romeo", "", "Error: This is your own address: Romeo@" + own);
        row("a friend", own, "Juliet", "", "Error: This Contact is already in your Contact List");
    }
    void addressIsAdded()
    {
        const auto [network, name, jid, box] = fetched<QString, QString, QString, QString>();
        f->find();
        f->takeSent();
        QCOMPARE(f->network().currentText(), own);
        QCOMPARE(f->network().itemText(1), "MSN");
        QCOMPARE(ui::find<QLineEdit>(f->add(), "txtServerName")->text(), own);
        f->network().setCurrentText(network);
        QTest::keyClicks(f->add()->focusWidget(), name);
        QTest::keyClick(f->add()->focusWidget(), Qt::Key_Return);
        QCOMPARE(f->takeSent(), jid.isEmpty() ? QStringList() : adding(jid));
        QCOMPARE(f->boxes(), box);
        QCOMPARE(f->form("HeadLineForm") != nullptr, !jid.isEmpty());
        QCOMPARE(f->add()->focusWidget()->objectName(), "Text1");
    }

    void otherServerIsChecked_data()
    {
        columns<QString, Act, QString, QString>("typed", "then", "boxes", "server");
        const QString first = "Submitting Instant Messenger Data: Please, submit the Jabber Server to which "
                              "your friend connects ...";
        const auto again = [](const QString& error) {
            return "|Error - " + error +
                   ": Please, submit again the Jabber Server to which your friend connects ...";
        };
        const Act nothing = [](FakeClient&) {};
        const auto answers = [](const QString& from, const char* type) {
            return Act([=](FakeClient& c) {
                static_cast<Searching&>(c).answer("browse", "Check_Server", from,
                                                  "<error code='502'>No such &lt;host&gt;</error>", type);
            });
        };
        row("it answers", "x.example", answers("x.example", "result"), first, "x.example");
        row("it is refused", "x.example", answers("x.example", "error"), first + again("No such <host>"),
            own);
        row("another answers", "x.example", answers("y.example", "result"), first, "");
        row("cancelled", "", nothing, first, own);
        row("no server", "a b", nothing, first + again("This is no name of a server"), own);
        row("an address", "a@b", nothing, first + again("This is no name of a server"), own);
        row("given up", "x.example",
            Act([](FakeClient& c) { QTest::keyClick(c.form("SearchAddForm"), Qt::Key_Escape); }), first, own);
        row("connection lost", "x.example", Act([](FakeClient& c) {
                c.gateway->connected = false;
                static_cast<Searching&>(c).tire(c.form("SearchAddForm"));
            }),
            first, own);
        row("silence", "x.example",
            Act([](FakeClient& c) { static_cast<Searching&>(c).tire(c.form("SearchAddForm")); }), first, "");
    }
    void otherServerIsChecked()
    {
        const auto [typed, then, boxes, server] = fetched<QString, Act, QString, QString>();
        f->find();
        f->takeSent();
        f->world.boxes.inputs = {typed};
        f->network().setCurrentText("Other Server ...");
        const bool asks = typed == "x.example";
        QCOMPARE(f->takeSent(), asks ? QStringList(browse("Check_Server", typed)) : QStringList());
        const auto isChecking = [&] {
            for (const char* name : {"Text1", "Combo1", "cmdAdd", "cmdClose"}) {
                if (f->isEnabled(f->add(), name) == f->isWaiting(f->add()))
                    return false;
            }
            return f->shown(f->add(), "Label4").isEmpty() != f->isWaiting(f->add()) &&
                   f->shown(f->add(), "lblwaitingcmd").isEmpty() == f->isWaiting(f->add()) &&
                   f->isWaiting(f->add());
        };
        QCOMPARE(isChecking(), asks);
        if (asks)
            QCOMPARE(f->add()->focusWidget()->objectName(), "cmdCancel");
        then(*f);
        if (QByteArray(QTest::currentDataTag()) == "silence")
            QTRY_VERIFY(f->shown(f->add(), "lblState").contains("has not answered yet"));
        QTRY_COMPARE(isChecking(), server.isEmpty());
        if (isChecking())
            f->answer("browse", "Check_Server", "x.example", "");
        QVERIFY(!f->shown(f->add(), "lblState").contains("not answered"));
        const auto* focus = f->add()->focusWidget();
        QVERIFY(focus->objectName() == "Text1" || focus == &f->network());
        QCOMPARE(f->boxes(), boxes);
        const QString now = server.isEmpty() ? "x.example" : server;
        QCOMPARE(f->network().currentText(), now);
        QCOMPARE(ui::find<QLineEdit>(f->add(), "txtServerName")->text(), now);
        f->answer("browse", "Check_Server", "x.example", ""); // nobody waits for it any more
        QCOMPARE(f->network().currentText(), now);
    }

    void closedUnderTheQuestion()
    {
        f->find();
        f->takeSent();
        f->world.boxes.inputs = {"x.example"};
        f->world.boxes.meanwhile = [this] { f->add()->close(); };
        f->network().setCurrentText("Other Server ...");
        QVERIFY(f->takeSent().isEmpty() && !f->add());
    }

    // On a server: found by a name, added, and in the list.
    void walk()
    {
        f.reset();
        sandbox::SandboxServer server;
        server.world().addAccount("romeo", "secret");
        server.world().addPersona("rosaline", "Rosaline Capulet");
        server.world().addPersona("tybalt", "Tybalt Capulet").online = true;
        QVERIFY(server.listen());
        LiveClient live;
        live.signIn(QString("localhost:%1").arg(server.port()));
        QTRY_VERIFY(live.isOnline());
        ui::choose(live.rosterForm(), "mRosterFFind");
        auto* directories = ui::find<QListWidget>(live.form("SearchAddForm"), "BrowseResult");
        QTRY_COMPARE(directories->count(), 1);
        directories->setCurrentRow(0);
        ui::click(live.form("SearchAddForm"), "cmdAsk");
        auto* search = live.form("SearchForm");
        QTRY_VERIFY(search->findChild<QLineEdit*>("Text1_2"));
        ui::type(search, "Text1_2", "capu");
        ui::click(search, "CmdSearch");
        auto* grid = ui::find<ResultGrid>(search, "SResultGrid");
        QTRY_COMPARE(grid->model()->rowCount(), 2);
        grid->sortByColumn(0, Qt::DescendingOrder);
        grid->selectRow(0);
        ui::click(search, "cmdAdd");
        QTRY_VERIFY(live.client.MyRoster.DoesJIDExist("tybalt@localhost"));
        QVERIFY(live.world.boxes.shown.isEmpty());
    }
};
BRELO_TEST(SearchWindowsTest)

#include "SearchWindowsTest.moc"
