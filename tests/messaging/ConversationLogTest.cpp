#include "messaging/MessagingFixture.h"
#include "settings/Paths.h"

#include <QClipboard>
#include <QPushButton>
#include <csignal>
#include <ctime>
#include <sys/resource.h>
#include <sys/stat.h>

// Conversation logs: their place, their failures, their reader.
class ConversationLogTest : public QObject
{
    Q_OBJECT
    std::optional<MessagingFixture> f;
    QWidget* reader() const { return f->registry.find("LogMessageForm"); }

private slots:
    void init() { f.emplace(); }

    void logLiesInItsFolder_data()
    {
        columns<QString, QString>("peer", "file");
        row("ordinary", juliet, "juliet@capulet.example.log");
        row("resource", "juliet@capulet.example/balcony", "juliet@capulet.example.log");
        row("gateway", "jule%mail.example@msn.example", "jule%mail.example@msn.example.log");
        row("escape of ours", "a%2fb@x", "a%252fb@x.log");
        row("dots", "..", "...log");
        row("up and away", "../../../etc/passwd", "...log");
        row("back slashes", "..\\..\\x", "..\\..\\x.log");
        row("NUL", QString("a") + QChar(0) + "b", "a%00b.log");
        row("line break", "a\r\nb", "a%0d%0ab.log");
        row("empty", "", ".log");
        row("script", "\xE6\x9C\xB1\xE9\xBA\x97@x", "\xE6\x9C\xB1\xE9\xBA\x97@x.log");
    }
    void logLiesInItsFolder()
    {
        const auto [peer, file] = fetched<QString, QString>();
        QCOMPARE(f->hub->log().WriteLogLine("b", peer, {}, false), QString());
        const QString folder = paths::logFolder() + "/montague.example/romeo";
        QCOMPARE(QDir(folder).entryList(QDir::Files | QDir::Hidden), QStringList(file));
        QCOMPARE(f->logOf(peer), QString(peer).replace("\n", "\n    ") + " (07:08:09): b\r\n");
    }

    void namesNeverShareAFile()
    {
        f->engine.gateway().server = "..";
        f->engine.gateway().userName = "../x";
        const QString longest(300, u'a');
        const QStringList peers{
            longest + u'1', longest + u'2', QString(250, QChar(0x6731)), "%~", QString(), "a%41", "aA"};
        QSet<QString> files;
        for (const auto& peer : peers) {
            QCOMPARE(f->hub->log().WriteLogLine(peer, peer, {}, false), QString());
            const QString path = QFileInfo(f->hub->log().path(peer)).canonicalFilePath();
            const QString root = QFileInfo(paths::logFolder()).canonicalFilePath();
            QVERIFY2(path.startsWith(root + u'/'), qPrintable(path));
            files += path;
        }
        QCOMPARE(files.size(), peers.size());
    }

    void logsAreTheirAccountsAndTheOwnersAlone()
    {
        f->message(juliet, "chat", "<body>for romeo</body>");
        constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        const QFileInfo file(f->hub->log().path(juliet));
        QVERIFY(file.exists());
        QVERIFY(!((file.permissions() | QFileInfo(file.path()).permissions()) & others));
        QVERIFY(QFile::setPermissions(file.filePath(), QFile::Permissions(0x6644))); // of an older version
        f->message(juliet, "chat", "<body>again</body>");
        QVERIFY(!(QFile::permissions(file.filePath()) & others));
        QVERIFY(QFile::setPermissions(paths::logFolder(), QFile::Permissions(0x7755)));
        f->engine.gateway().userName = "tybalt";
        QCOMPARE(f->logOf(juliet), QString());
        QVERIFY(!(QFile::permissions(paths::logFolder()) & others));
        f->message(juliet, "chat", "<body>for tybalt</body>");
        QVERIFY(!f->logOf(juliet).contains("romeo"));
    }

    void fullDiskIsToldOnce()
    {
        const auto* window = f->open(juliet);
        const QString path = f->hub->log().path(juliet);
        QVERIFY(QFile::rename(path, path + ".kept"));
        QVERIFY(QFile::link("/dev/full", path));
        f->message(juliet, "chat", "<body>one</body>");
        f->message(juliet, "chat", "<body>two</body>");
        QCOMPARE(f->world.boxes.shown.size(), 1);
        QVERIFY(f->world.boxes.shown[0].text.contains(path));
        QVERIFY(f->transcript(*window).contains(": one\n") && f->transcript(*window).contains(": two\n"));
        QVERIFY(QFile::remove(path));
        f->message(juliet, "chat", "<body>three</body>");
        QVERIFY(f->logOf(juliet).contains("three"));
        QCOMPARE(f->world.boxes.shown.size(), 1);
        // It has worked since, so that the next failure is news.
        QVERIFY(QFile::remove(path));
        QVERIFY(QDir().mkdir(path));
        f->message(juliet, "chat", "<body>four</body>");
        QCOMPARE(f->world.boxes.shown.size(), 2);
    }

    void aPipeKeepsNobodyWaiting()
    {
        auto* window = f->open(juliet);
        const QString path = f->hub->log().path(juliet);
        QVERIFY(QFile::remove(path));
        QCOMPARE(::mkfifo(QFile::encodeName(path), 0600), 0);
        f->message(juliet, "chat", "<body>one</body>");
        QVERIFY(f->world.boxes.shown.value(0).text.endsWith(" be written: It is no file."));
        f->control<QAction>(*window, "mnustrDelHistory").trigger();
        QVERIFY(f->world.boxes.shown.value(1).text.endsWith(" be written: It is no file."));
        f->control<QAction>(*window, "mnustroldconv").trigger();
        QVERIFY(f->transcript(*reader()).endsWith(" be read: It is no file.\n"));
    }

    void whatFitsInPartOnlyIsTakenBack()
    {
        f->message(juliet, "chat", "<body>one</body>");
        const QString before = f->logOf(juliet);
        std::signal(SIGXFSZ, SIG_IGN); // as the program does
        rlimit usual{};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &usual), 0);
        const rlimit room{300'000, usual.rlim_max};
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &room), 0);
        f->message(juliet, "chat", "<body>" + QString("x\n").repeated(200'000) + "</body>");
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &usual), 0);
        QCOMPARE(f->logOf(juliet), before);
        QCOMPARE(f->world.boxes.shown.size(), 1);
        QVERIFY(f->world.boxes.shown[0].text.endsWith("There is no room left for it."));
    }

    void erasedLogIsEmpty()
    {
        auto* window = f->open(juliet);
        f->message(juliet, "chat", "<body>secret</body>");
        f->control<QAction>(*window, "mnustrDelHistory").trigger();
        QCOMPARE(f->logOf(juliet), "\r\n");
        QVERIFY(f->world.boxes.shown.isEmpty());
        f->control<QAction>(*window, "mnustroldconv").trigger();
        QVERIFY(reader()->isVisible());
        QCOMPARE(f->transcript(*reader()).trimmed(), QString());
        reader()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(reader()));
        QTest::keyClick(reader(), Qt::Key_Escape);
        QVERIFY(!reader());
        // Where there is no folder yet, none is made, and every try is answered.
        f->engine.gateway().userName = "tybalt";
        f->control<QAction>(*window, "mnustrDelHistory").trigger();
        f->control<QAction>(*window, "mnustrDelHistory").trigger();
        QCOMPARE(f->world.boxes.shown.size(), 2);
        QVERIFY(!QFileInfo::exists(paths::logFolder() + "/montague.example/tybalt"));
    }

    void readerShowsTheLog()
    {
        f->hub->ShowMessageLog(juliet);
        QCOMPARE(f->transcript(*reader()), "< no previous message >");
        reader()->close();
        f->hub->log().WriteLogHeader(juliet);
        f->hub->log().WriteLogLine("one\ntwo http://x.example", juliet, {}, false);
        f->hub->ShowMessageLog(juliet + "/balcony");
        const auto* window = reader();
        QCOMPARE(window->windowTitle(), juliet + " -- Message Log");
        QCOMPARE(f->transcript(*window),
                 QString("\n*** New chat window with %1 at 07:08:09 Thursday, 6 May 2004\n"
                         "%1 (07:08:09): one\n    two http://x.example\n")
                     .arg(juliet));
        // Kept: not even a header is bold.
        QCOMPARE(f->formatOf(*window, "*** New").fontWeight(), int(QFont::Normal));
        QVERIFY(f->formatOf(*window, "x.example").isAnchor());
    }

    void readerTurnsThePages_data()
    {
        columns<QString, int, int>("line", "lines", "most");
        row("ordinary", QString(60, u'x'), 100000, 4002);
        row("short", "a", 100000, 4002);
        row("endless", QString::fromUtf8("\xC3\xA9").repeated(400000), 1, 40);
    }
    void readerTurnsThePages()
    {
        const auto [line, lines, most] = fetched<QString, int, int>();
        f->hub->log().WriteLogLine("b", juliet, {}, false);
        QString text;
        for (int i = 0; i < lines; ++i)
            text += line + QString::number(i) + u'\n';
        const QString path = f->hub->log().path(juliet);
        files::write(path, text.toUtf8());
        const clock_t began = clock();
        f->hub->ShowMessageLog(juliet);
        QVERIFY2(clock() - began < CLOCKS_PER_SEC / 4, qPrintable(QString::number(clock() - began)));
        auto* window = reader();
        files::write(path, text.toUtf8() + "written since\n");
        for (const char* button : {"cmdEarlier", "cmdLater"}) {
            QString read = f->transcript(*window);
            int pages = 0;
            for (auto* turn = &f->control<QPushButton>(*window, button); turn->isEnabled();) {
                QVERIFY(++pages < 100);
                QVERIFY(f->control<QPlainTextEdit>(*window, "txtLog").blockCount() <= most);
                turn->click();
                read.insert(button == QByteArray("cmdLater") ? read.size() : 0, f->transcript(*window));
            }
            QVERIFY(pages > 0);
            QVERIFY(read.remove(u'\n') == QString(text).remove(u'\n'));
        }
        // What is saved is the whole.
        const QString file = f->profile.path() + "/log.rtf";
        f->world.boxes.inputs = {file};
        f->control<QAction>(*window, "mnuEditSave").trigger();
        QCOMPARE(files::read(file).count("\\par\r\n"), lines);
    }

    void copyWithoutASelectionEmptiesTheClipboard()
    {
        f->hub->log().WriteLogLine("b", juliet, {}, false);
        f->hub->ShowMessageLog(juliet);
        auto& copy = f->control<QAction>(*reader(), "mnuEditCopy");
        QGuiApplication::clipboard()->setText("old");
        f->control<QPlainTextEdit>(*reader(), "txtLog").moveCursor(QTextCursor::Start);
        copy.trigger();
        QCOMPARE(QGuiApplication::clipboard()->text(), QString());
        f->control<QPlainTextEdit>(*reader(), "txtLog").selectAll();
        copy.trigger();
        QCOMPARE(QGuiApplication::clipboard()->text(), juliet + " (07:08:09): b\n");
    }

    void lineBreaksLookLikeNoLine_data()
    {
        columns<QString>("lineBreak");
        for (const char* lineBreak :
             {"\n", "\r", "\r\n", "\v", "\f", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"})
            QTest::addRow("%s", QByteArray(lineBreak).toHex().constData()) << QString::fromUtf8(lineBreak);
    }
    void lineBreaksLookLikeNoLine()
    {
        QFETCH(QString, lineBreak);
        const QString line = own + " (07:08:09): I owe you";
        // Where one slice of a long text ends, too.
        const QString before =
            QString(4095, u'x') + QString::fromUtf8("\xF0\x9F\x98\x80") + QString(4094, u'x');
        f->hub->log().WriteLogLine(before + lineBreak + line, juliet + "/x" + lineBreak + line, {}, false);
        const QString shown =
            juliet + "/x\r\n    " + line + " (07:08:09): " + before + "\r\n    " + line + "\r\n";
        QCOMPARE(f->logOf(juliet), shown);
    }

    void readerSavesRichText()
    {
        f->hub->log().WriteLogLine(QString::fromUtf8("{a\\b} \xC3\xA9"), juliet, {}, false);
        f->hub->ShowMessageLog(juliet);
        auto& save = f->control<QAction>(*reader(), "mnuEditSave");
        save.trigger();
        const QString file = f->profile.path() + "/log.rtf";
        f->world.boxes.inputs = {file, f->profile.path() + "/missing/log.rtf"};
        save.trigger();
        const QByteArray text = files::read(file);
        QVERIFY2(text.startsWith("{\\rtf1") && text.contains("\\{a\\\\b\\} \\u233?\\par") &&
                     text.endsWith("}\r\n"),
                 text.constData());
        const auto before = f->world.boxes.shown.size();
        save.trigger();
        QCOMPARE(f->world.boxes.shown.size(), before + 2);
        QCOMPARE(f->world.boxes.shown.last().icon, MessageBoxes::Icon::Exclamation);
    }
};

BRELO_TEST(ConversationLogTest)
#include "ConversationLogTest.moc"
