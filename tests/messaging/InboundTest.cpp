#include "messaging/InboundRules.h"
#include "messaging/MessagingFixture.h"
#include "messaging/forms/RoomWindow.h"
#include "messaging/forms/authorizeForm.h"
#include "services/forms/VCardForm.h"

#include <QScrollBar>
#include <ctime>

// What becomes of an inbound message: by its type and its sender, on real windows.
class InboundTest : public QObject
{
    Q_OBJECT
    std::optional<MessagingFixture> f;
    static inline const QString typing = "<x xmlns=\"jabber:x:event\"><composing/></x>";
    static inline const QString stranger = "paris@verona.example";
    static constexpr int Default = 0, NoUnAuth = 1, NoStrangers = 2, Reply = 4, NoBalloon = 8, Silent = 16;
    static void apply(Settings& settings, int flags)
    {
        settings.DoNotReceiveMessFromUnAuth = flags & NoUnAuth;
        settings.AcceptMessageFromAll = !(flags & NoStrangers);
        settings.AutoReplayToUnAuth = flags & Reply;
        settings.BalloonEnable = !(flags & NoBalloon);
        settings.SoundOnNewMessage = !(flags & Silent);
    }

private slots:
    void init() { f.emplace(); }

    void aMessageTakesItsRoad_data()
    {
        columns<QString, QString, QString, bool, int, QString>("from", "type", "inner", "has", "set", "out");
        const QString body = "<body>hello</body>";
        const QString full = juliet + "/balcony";
        const QString everything = "window line log sound balloon";
        const QString silent = "window line log balloon";
        row("chat opens a window", full, "chat", body, false, Default, everything);
        row("chat into a window", full, "chat", body, true, Default, everything);
        row("chat without balloon", full, "chat", body, false, NoBalloon, "window line log sound");
        row("chat without sound", full, "chat", body, false, Silent, silent);
        row("chat, typing, no window", full, "chat", typing, false, Default, "");
        row("chat, typing, window", full, "chat", typing, true, Default, "window typing");
        row("chat, event and body, no window", full, "chat", body + typing, false, Default, everything);
        row("chat, event and body, window", full, "chat", body + typing, true, Default, everything);
        row("normal opens a window", full, "normal", body, false, Default, everything);
        row("normal, event and body, no window", full, "normal", body + typing, false, Default, "");
        row("normal, event and body, window", full, "normal", body + typing, true, Default, "window typing");
        row("plain opens a window", full, "", body, false, Default, silent);
        row("plain, event and body, no window", full, "", body + typing, false, Default, "");
        row("plain, event and body, window", full, "", body + typing, true, Default, "window typing");
        row("unknown type", full, "Normal", body, true, Default, "window nameless");
        row("unknown type, no window", full, "Chat", body, false, Default, "nameless");
        row("contact passes the locks", full, "chat", body, false, NoUnAuth | NoStrangers, everything);
        row("stranger", stranger, "chat", body, false, Default, everything);
        row("stranger locked out", stranger, "chat", body, false, NoUnAuth, "");
        row("stranger locked out gets no reply", stranger, "chat", body, false, NoUnAuth | Reply, "");
        row("stranger in an open window", stranger, "chat", body, true, NoUnAuth, everything);
        row("stranger not kept", stranger, "chat", body, false, NoStrangers, "log sound balloon");
        row("delayed", full, "chat", body + "<x xmlns='jabber:x:delay'/>", false, Default, everything);
        row("subject alone", full, "chat", "<subject>hello</subject>", false, Default, everything);
        row("subject and event", full, "chat", "<subject>hello</subject>" + typing, true, Default,
            everything);
        const QString stop = "<x xmlns='jabber:x:event'><id>a</id></x>";
        row("stopped, no window", full, "chat", stop, false, Default, "");
        row("typing, behind another", full, "chat", "<y xmlns='jabber:x:conference'/>" + typing, false,
            Default, "");
        row("stopped, behind another", full, "chat", "<y xmlns='jabber:x:conference'/>" + stop, false,
            Default, "");
        row("stopped, window", full, "chat", stop, true, Default, "window");
    }
    void aMessageTakesItsRoad()
    {
        const auto [from, type, inner, hasWindow, settings, expected] =
            fetched<QString, QString, QString, bool, int, QString>();
        const QString bare = from.section(u'/', 0, 0);
        if (hasWindow)
            QVERIFY(f->open(bare));
        apply(f->client.settings, settings);
        f->message(from, type, inner);
        const auto* window = f->window(bare);
        const std::pair<bool, const char*> outcomes[] = {
            {window, "window"},
            {window && f->transcript(*window) == QString(" <07:08>  %1: hello\n").arg(from), "line"},
            {f->logOf(bare).endsWith(bare + " (07:08:09): hello\r\n"), "log"},
            {f->logOf({}).contains(" (07:08:09): hello\r\n"), "nameless"},
            {f->world.sounds.played == QStringList(f->client.settings.SoundOnNewMessageFile), "sound"},
            {f->world.tray.balloons == QStringList(inbound::balloonTitle(from) + "|hello") &&
                 f->world.tray.balloonIcon == 1,
             "balloon"},
            {window && f->panel(*window) == from + " is typing a message ...", "typing"}};
        QStringList happened;
        QStatusTipEvent menuOpens({});
        QVERIFY(!window || QCoreApplication::sendEvent(f->window(bare), &menuOpens));
        QVERIFY(!window || f->control<QLabel>(*window, "StatusBar1Panel1").isVisibleTo(window));
        for (const auto& [is, what] : outcomes) {
            if (is)
                happened += what;
        }
        QCOMPARE(happened.join(u' '), expected);
        if (window && happened.contains("line"))
            QCOMPARE(f->panel(*window), "Latest Message Received: Thursday, 6 May 2004 07:08:09");
        QCOMPARE(f->engine.takeSent(), QStringList());
    }

    // Nothing lands in a log without a name.
    void aMessageWithoutAnAddressIsLoggedUnderAName()
    {
        const QString server = f->client.Gateway().Server();
        for (const QString& from : {juliet + "/b", server, QString()}) {
            const QString sender = from.isEmpty() ? QString() : " from='" + from + "'";
            f->engine.inject("<message type='chat'" + sender + "><body>hello</body></message>");
            const QString name = from.isEmpty() ? server : from;
            const QString bare = name.section('/', 0, 0);
            QVERIFY2(f->logOf(bare).endsWith(bare + " (07:08:09): hello\r\n"), qPrintable(f->logOf(bare)));
            QVERIFY(f->logOf(own).contains("*** New chat window with " + own) && f->logOf({}).isNull());
            QVERIFY(f->transcript(*f->window(from.section('/', 0, 0))).contains(name + ": hello"));
        }
    }

    void typingEnds_data()
    {
        columns<QString>("end");
        row("nothing was said before", "<presence from='%1/b' type='unavailable'/>");
        row("stopped", "<message from='%1/b' type='chat'><x xmlns='jabber:x:event'><id>a</id></x></message>");
        row("off line", "<presence from='%1/b' type='unavailable'/>");
        row("after a minute", QString());
        row("connection lost", "lost");
    }
    void typingEnds()
    {
        QFETCH(QString, end);
        auto* window = f->open(juliet);
        if (QString(QTest::currentDataTag()) != "nothing was said before")
            f->message(juliet + "/b", "chat", "<body>hello</body>");
        const QString before = f->panel(*window);
        f->message(juliet + "/b", "chat", typing);
        f->message(juliet + "/b", "chat", typing);
        QVERIFY(f->panel(*window).endsWith("is typing a message ..."));
        if (end.isEmpty()) {
            auto* timer = window->findChild<QTimer*>("typingEnd");
            QVERIFY(timer->isActive() && timer->interval() == 60000);
            timer->start(0);
            QTRY_VERIFY(!timer->isActive());
        } else if (end == "lost") {
            f->engine.gateway().connected = false;
            f->registry.unloadAllExcept({"RosterForm"});
        } else {
            f->engine.inject(end.arg(juliet));
        }
        QCOMPARE(f->panel(*window), before);
    }

    void storedMessageShowsWhenItWasWritten_data()
    {
        columns<QDateTime, QString, QString>("written", "shown", "logged");
        const QDate day(2004, 5, 6);
        row("today", QDateTime(day, QTime(6, 5, 4)), "06:05", "06:05:04");
        row("before", QDateTime(day.addDays(-1), QTime(23, 5, 4)), "23:05 05/05/2004",
            "23:05:04 Wednesday, 5 May 2004");
        row("ahead", QDateTime(day, QTime(9, 0)), "07:08", "07:08:09");
        row("no time", QDateTime(), "07:08", "07:08:09");
    }
    void storedMessageShowsWhenItWasWritten()
    {
        const auto [written, shown, logged] = fetched<QDateTime, QString, QString>();
        f->message(juliet, "chat",
                   QString("<body>hi</body><x xmlns='jabber:x:delay' stamp='%1'/>")
                       .arg(written.toUTC().toString("yyyyMMdd'T'HH:mm:ss")));
        QCOMPARE(f->transcript(*f->window(juliet)), QString(" <%1>  %2: hi\n").arg(shown, juliet));
        QVERIFY2(f->logOf(juliet).endsWith(QString("%1 (%2): hi\r\n").arg(juliet, logged)),
                 qPrintable(f->logOf(juliet)));
    }

    void noticesOfTheServerGoToTheirWindow_data()
    {
        columns<QString, QString, QString, bool>("server", "from", "type", "notice");
        row("server", "montague.example", "Montague.example", "", true);
        row("server, chat", "montague.example", "montague.example", "chat", false);
        row("service", "montague.example", "icq.montague.example/x", "", true);
        row("sister from elsewhere", "montague.example", "im.breloim.example", "", false);
        row("sister", "jabber.breloim.example", "IM.breloim.example", "", true);
        row("default from the sister", "im.breloim.example", "jabber.breloim.example", "", true);
        row("person", "montague.example", "nurse@montague.example", "", false);
    }
    void noticesOfTheServerGoToTheirWindow()
    {
        const auto [server, from, type, notice] = fetched<QString, QString, QString, bool>();
        f->engine.gateway().server = server;
        f->client.settings.SoundOnNewMessage = true;
        f->client.MyAgents.AddItem("icq.montague.example", "ICQ", true, true);
        f->message(from, type, "<subject>s</subject><body>b</body>");
        QCOMPARE(f->notices().isVisible(), notice);
        QCOMPARE(f->transcript(f->notices(), "txtMsg"),
                 notice ? QString(" <07:08>  %1: s - b\n").arg(from) : QString());
        QCOMPARE(f->window(from.section(u'/', 0, 0)) == nullptr, notice);
        QCOMPARE(f->world.sounds.played.isEmpty(), type.isEmpty());
    }

    void balloonsAreShortened_data()
    {
        columns<QString, QString, QString>("given", "shown", "where");
        const QString prefix = "Message from ";
        row("title of 43", QString(30, u'a'), prefix + QString(30, u'a'), "title");
        row("title of 44", QString(31, u'a'), prefix + QString(27, u'a') + " ...", "title");
        row("body of 200", QString(200, u'b'), QString(200, u'b'), "body");
        row("body of 201", QString(201, u'b'), QString(200, u'b') + "...", "body");
        const QString cut(199, u'b');
        row("emoji at the cut", cut + QString::fromUtf8("\xF0\x9F\x98\x80") + u'c', cut + "...", "body");
        row("five lines", "1\n2\n3\n4\n5", "1\n2\n3\n4\n5", "body");
        row("many lines", QString("1\n").repeated(100), "1\n1\n1\n1\n1...", "body");
        row("many lines in a room", QString("1\n").repeated(100), "1\n1\n1\n1\n1...", "room");
    }
    void balloonsAreShortened()
    {
        const auto [given, shown, where] = fetched<QString, QString, QString>();
        QCOMPARE(where == "title"  ? inbound::balloonTitle(given)
                 : where == "room" ? inbound::roomBalloonText(given)
                                   : inbound::balloonText(given),
                 shown);
    }

    void windowDescribesItsPeer()
    {
        f->message(juliet + "/garden", "chat", "<body>hi</body>");
        const auto* window = f->window(juliet);
        QVERIFY(window);
        const auto text = [&](const char* name) { return f->control<QLineEdit>(*window, name).text(); };
        QCOMPARE(window->windowTitle(), QString("Jule - ") + juliet);
        QCOMPARE(text("txtTO") + '|' + text("txtNick") + '|' + text("txtTOS") + '|' + text("txtTOR"),
                 juliet + "|Jule|away|garden");
        QCOMPARE(f->control<QLabel>(*window, "imgStatus").accessibleDescription(), "Away");
        QVERIFY(!f->control<QAction>(*window, "mnuToolsAdd").isEnabled());
        // The peer's colour, and the fixed ones of stamp and body.
        QCOMPARE(f->formatOf(*window, juliet).foreground().color(), QColor(255, 50, 50));
        QCOMPARE(f->formatOf(*window, "07:08").background().color(), QColor(62, 128, 194));
        QCOMPARE(f->formatOf(*window, "hi").fontWeight(), int(QFont::Bold));
        // A stranger's can add it.
        f->message(stranger + "/tomb", "chat", "<body>hi</body>");
        window = f->window(stranger);
        QVERIFY(window);
        QCOMPARE(window->windowTitle(), stranger + "/tomb - " + stranger);
        QCOMPARE(f->control<QLabel>(*window, "imgStatus").accessibleDescription(), "Pendingauth");
        for (const char* name : {"mnuToolsAdd", "Toolbar1Add"})
            QVERIFY2(f->control<QAction>(*window, name).isEnabled(), name);
    }

    void unregisteredWindowsOpenAnew()
    {
        f->client.settings.AcceptMessageFromAll = false;
        f->message(stranger, "chat", "<body>one</body>");
        f->message(stranger, "chat", "<body>two</body>");
        const auto forms = f->registry.loaded();
        QCOMPARE(forms.size(), 2);
        QCOMPARE(f->transcript(*forms.at(1)), QString(" <07:08>  %1: two\n").arg(stranger));
        // There is nobody to tell of typing.
        QTest::keyClicks(&f->control<QWidget>(*forms.at(0), "txtMsg"), "hm");
        QCOMPARE(f->engine.takeSent(), QStringList());
        // Its commands are for the sender.
        auto* window = qobject_cast<MessageForm*>(forms.at(0));
        window->cmdSend_Click();
        QVERIFY(f->panel(*window).startsWith("Nothing was sent"));
        f->world.boxes.answers = {MessageBoxes::Answer::Yes};
        for (const char* name : {"mnustrblock", "mnustrvcard", "mnustroldconv"})
            f->control<QAction>(*window, name).trigger();
        QVERIFY(f->client.MyBanList.BannedJID(stranger));
        QVERIFY(f->engine.takeSent().value(0).contains(QString("to=\"%1\"").arg(stranger)));
        auto* log = f->registry.find("LogMessageForm");
        QCOMPARE(log->windowTitle(), stranger + " -- Message Log");
        QVERIFY(f->transcript(*log).contains("one"));
        log->close();
        forms.at(0)->close();
        QCOMPARE(f->registry.loaded().size(), 1);
    }

    void strangersOpenAFewWindows_data()
    {
        columns<int, QString>("settings", "from");
        row("kept", Default, "paris%1@verona.example/x");
        row("unregistered", NoStrangers, "paris@verona.example/%1");
        row("occupants", Default, "verse@rooms.example/%1");
    }
    void strangersOpenAFewWindows()
    {
        const auto [settings, from] = fetched<int, QString>();
        apply(f->client.settings, settings);
        RoomWindow room(f->registry, "GroupchatWindowForm");
        room.Tag = "verse@rooms.example";
        const auto say = [&](int n) {
            f->message(from.arg(n), "chat", QString("<body>text %1</body>").arg(n));
        };
        const auto shown = [&] {
            const auto all = f->hub->conversations();
            return std::count_if(all.begin(), all.end(), [](auto* window) { return window->isVisible(); });
        };
        for (int i = 1; i <= 52; ++i)
            say(i);
        QCOMPARE(shown(), 50);
        // Who finds no room stands among the notices and in the log, with a sound, and nothing is lost.
        const QString notice = " <07:08>  %1:  - text %2\n";
        QCOMPARE(f->transcript(f->notices(), "txtMsg"),
                 notice.arg(from.arg(51)).arg(51) + notice.arg(from.arg(52)).arg(52));
        QVERIFY(f->notices().isVisible());
        QVERIFY(f->logOf(from.arg(52)).endsWith(" (07:08:09): text 52\r\n"));
        QCOMPARE(f->world.sounds.played.size(), 52);
        QCOMPARE(f->world.tray.balloons.size(), 50);
        // A contact has one all the same, and the person opens as many as they like.
        f->message(juliet, "chat", "<body>hi</body>");
        f->client.settings.DoNotReceiveMessFromUnAuth = false;
        f->client.settings.AcceptMessageFromAll = true;
        QVERIFY(f->open("nurse@verona.example")->isVisible());
        QCOMPARE(shown(), 52);
        // One that is closed makes room; who comes back then waits unread.
        apply(f->client.settings, settings);
        auto* first = f->hub->conversations().at(0);
        const QPointer<ConversationForm> kept(first);
        first->close();
        say(53);
        QCOMPARE(shown(), 52);
        f->hub->unread.remove(first->peer);
        say(1);
        QCOMPARE(shown(), 52);
        if (!first->isUnasked || settings == NoStrangers)
            return;
        QCOMPARE(f->transcript(*first).count("text 1"), 2);
        QVERIFY(f->hub->unread.peers().contains(first->peer));
    }

    void messageTakesNoScreenFromTheWindowInUse()
    {
        const QString hi = "<body>hi</body>";
        f->message(juliet, "chat", hi);
        QVERIFY(f->window(juliet)->isMinimized());
        // Opening it by hand brings it to the front.
        f->open(juliet);
        QVERIFY(!f->window(juliet)->isMinimized());
        f->client.settings.CurrentWindowOnTop = false;
        f->message(stranger, "chat", hi);
        QVERIFY(f->window(stranger)->isVisible() && !f->window(stranger)->isMinimized());
    }

    void occupantsHaveAWindowEach()
    {
        f->client.settings.BalloonEnable = false;
        f->client.settings.SoundOnNewMessage = true;
        RoomWindow room(f->registry, "GroupchatWindowForm");
        room.Tag = "verse@rooms.example";
        const QString will = room.Tag + "/will";
        f->message(will, "chat", typing); // says nothing, and opens nothing
        f->message(will, "chat", "<body>pst</body>");
        f->message(will, "chat", typing);
        f->message(room.Tag + "/kit", QString(), QString("<body>hey</body>") + typing);
        const auto* window = f->window(room.Tag, "ChatWndwill");
        QVERIFY(window);
        QCOMPARE(window->windowTitle(), will);
        QCOMPARE(window->peerJid(), will);
        QCOMPARE(f->transcript(*window), QString(" <07:08>  %1: pst\n").arg(will));
        QVERIFY(!f->window(room.Tag));
        // A balloon always, three dots always; no typing notices here; a plain message plays no sound.
        QCOMPARE(f->world.tray.balloons.value(0), QString("Message from %1|pst...").arg(will));
        QVERIFY(f->transcript(*f->window(room.Tag, "ChatWndkit")).contains("hey"));
        QCOMPARE(f->world.sounds.played.size(), 1);
        QVERIFY(f->logOf(room.Tag).contains(will + " (07:08:09): pst\r\n"));
        // Without a window of theirs, occupants are strangers.
        f->client.settings.AcceptMessageFromAll = false;
        f->message(room.Tag + "/ben", "chat", "<body>pst</body>");
        QCOMPARE(f->registry.loaded().size(), 3);
        QCOMPARE(f->world.tray.balloons.size(), 2);
    }

    void onlyAWindowOfARoomTakesItsMessages()
    {
        using Make = Form* (*)(MessagingFixture&);
        const QList<std::pair<Make, QString>> forms{
            {[](auto& f) -> Form* { return new RoomWindow(f.registry, "GroupchatWindowForm"); },
             "ChatWndwill"},
            {[](auto& f) -> Form* { return new VCardForm(f.registry, f.client); }, "ChatWnd"},
            {[](auto& f) -> Form* { return new authorizeForm(f.registry, f.client); }, "ChatWnd"}};
        for (const auto& [make, key] : forms) {
            MessagingFixture f;
            const QString peer = "verse@rooms.example";
            make(f)->Tag = peer;
            f.message(peer + "/will", "chat", "<body>pst</body>");
            QVERIFY(f.window(peer, key) && f.window(peer, key)->isVisible());
            QCOMPARE(f.registry.loaded().size(), 2);
        }
    }

    void invitationNamesRoomAndServers()
    {
        QList<RoomInvitation> got;
        connect(f->hub.get(), &ChatWindow::conferenceInvited, this,
                [&](const RoomInvitation& i) { got += i; });
        f->message(juliet + "/b", "normal",
                   "<body>Come &amp; see</body><x xmlns='jabber:x:delay'/>"
                   "<x xmlns='jabber:x:conference' jid='one@a.example'/>"
                   "<x xmlns='jabber:x:conference' jid='two@b.example'/>");
        QCOMPARE(got.size(), 1);
        QCOMPARE(got[0].room, "two");
        QCOMPARE(got[0].servers, QStringList({"a.example", "b.example"}));
        QCOMPARE(got[0].from + u':' + got[0].text, juliet + "/b:Come & see");
        QVERIFY(!f->window(juliet));
        QCOMPARE(f->logOf(juliet), QString());
    }

    // Of a text of extreme size the beginning: `shown` characters, in blocks that the layout can take in one
    // piece: the dearer the signs, the shorter.
    void hostileTextsAreShownAsTheyCame_data()
    {
        columns<QString, int, int>("text", "shown", "longest");
        const auto row = [](const char* name, const QString& text, int shown = 0, int longest = 4200 + 2000) {
            QTest::newRow(name) << text << (shown ? shown : int(text.size())) << longest;
        };
        row("markup", "<b>&amp;\"'</b> [*]");
        row("right to left", QString::fromUtf8("\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D\xE2\x80\xAE abc"));
        row("emoji", QString::fromUtf8("\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7"));
        row("object character", QString(QChar(0xFFFC)) + u'x');
        row("long line", QString(60000, u'w'));
        row("unbroken mebibyte", QString(1048576, u'w'), 65536);
        row("emoji without end", QString::fromUtf8("\xF0\x9F\x98\x80").repeated(5000) + "x");
        row("joined emoji", QString::fromUtf8("\xF0\x9F\x91\xA9\xE2\x80\x8D").repeated(35000), 65535, 100);
        row("combining", u'a' + QString(60000, QChar(0x301)), 0, 200);
        row("a line of links", QString("www.a.b ").repeated(8000));
        row("short lines", QString("a\n").repeated(500000), 1999);
        row("line separators", QString(QString("a") + QChar::LineSeparator).repeated(500000), 1999);
    }
    void hostileTextsAreShownAsTheyCame()
    {
        const auto [text, shown, longest] = fetched<QString, int, int>();
        QString escaped = text;
        escaped.replace(u'&', "&amp;").replace(u'<', "&lt;");
        f->client.MyRoster.record(juliet)->nick = text.left(1000);
        const clock_t began = clock();
        f->message(juliet, "chat", QString("<body>%1</body>").arg(escaped));
        auto* window = f->window(juliet);
        QVERIFY(window);
        const auto& log = f->control<TranscriptView>(*window, "txtLog");
        const QString expected = QString(text).replace(QChar::LineSeparator, u'\n').left(shown);
        QVERIFY(f->transcript(*window).replace(QChar::LineSeparator, u'\n').contains(": " + expected));
        const QString more = QLocale().toString(text.size() - shown) + " more characters, which stand in";
        QCOMPARE(f->transcript(*window).contains(more), shown < text.size());
        QCOMPARE(files::read(f->hub->log().path(juliet)).count(text.at(0) == u'a' ? "a" : "w"),
                 QString(juliet + text).count(text.at(0) == u'a' ? u'a' : u'w'));
        window->showNormal();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QVERIFY(window->width() < 1000);
        for (auto block = log.document()->begin(); block.isValid(); block = block.next())
            QVERIFY(block.length() <= longest);
        QVERIFY2(clock() - began < CLOCKS_PER_SEC, qPrintable(QString::number(clock() - began)));
    }

    void transcriptForgetsItsOldestLines()
    {
        auto* window = f->open(juliet);
        auto& log = f->control<TranscriptView>(*window, "txtLog");
        for (int i = 0; i < 9990; ++i)
            log.appendLine({{TranscriptRun::Style::Plain, QString::number(i)}});
        QCoreApplication::processEvents();
        log.verticalScrollBar()->setValue(500);
        for (int i = 0; i < 60; ++i) {
            f->message(juliet, "chat", "<body>more</body>");
            QCoreApplication::processEvents();
        }
        QCOMPARE(log.blockCount(), 10000);
        // Who has scrolled back goes on reading where they were.
        QCOMPARE(log.cursorForPosition({5, 5}).block().text(), "500");
    }

    void messageWithoutSenderBreaksNothing()
    {
        for (const char* type : {"", "chat", "normal", "odd"})
            f->engine.inject(QString("<message type='%1'><body>x</body></message>").arg(QLatin1String(type)));
        QCOMPARE(f->transcript(f->notices(), "txtMsg"), " <07:08>  montague.example:  - x\n");
        QCOMPARE(f->logOf("montague.example").count(" (07:08:09): x\r\n"), 2);
        QCOMPARE(f->logOf({}), " (07:08:09): x\r\n"); // of the unknown type alone
    }
};

BRELO_TEST(InboundTest)
#include "InboundTest.moc"
