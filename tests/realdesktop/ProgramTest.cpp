#include "realdesktop/DesktopTest.h"
#include "settings/Paths.h"
#include "settings/SettingsStore.h"
#include "support/ChildProcess.h"
#include "support/TestRunner.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>

#include <sys/resource.h>

// The built program, driven by nothing but keys, pointer and window manager.
class ProgramTest : public DesktopTest
{
    Q_OBJECT

private slots:
    void cleanup() override
    {
        DesktopTest::cleanup();
        program_.reset();
    }

    void talksAndLivesInTheTray()
    {
        start();
        QVERIFY(signsIn());
        QVERIFY(openChatByKeys());
        x.type("Good evening!");
        x.press(XDisplay::Return);
        QVERIFY(SOON(server->hasReceived("<body>Good evening!</body>")));
        julietSays("Who speaks?");
        const QString log = paths::logFolder() + "/127.0.0.1/romeo/juliet@127.0.0.1.log";
        QVERIFY(SOON(read(log).contains("Who speaks?")));
        const QRect window = x.place(chat());
        x.click(window.topLeft() + QPoint(window.width() / 2, window.height() / 3)); // the transcript
        x.press(u'a', {XDisplay::Control});
        x.press(u'c', {XDisplay::Control});
        const auto copied = [] { return QGuiApplication::clipboard()->text(); };
        QVERIFY(SOON(copied().contains("Good evening!") && copied().contains("Who speaks?")));

        x.close(main());
        QVERIFY(SOON(!main() && isActive(toldWhere()) && x.trayIcon()));
        QVERIFY(choosesInTheTray(2)); // Restore
        QVERIFY(SOON(isActive(main())));
        QVERIFY(leavesByTheTray());
        QVERIFY(read(paths::settingsFile()).contains("UserName=romeo"));
    }

    void comesUpAsItWasLeft()
    {
        start();
        QVERIFY(signsIn());
        const QRect left = putAside(main());
        QVERIFY(leavesByTheTray());
        start();
        QVERIFY(signsIn());
        QVERIFY(SOON(framed(main()) == left));
        QVERIFY(leavesByTheTray());
    }

    void loadsItsModulesWhenTheyAreNeeded()
    {
        Settings settings;
        settings.SavePassword = settings.SoundOnNewMessage = true;
        QVERIFY(SettingsStore(paths::settingsFile()).SaveSettings(settings));
        start();
        QVERIFY(SOON(hasLoaded("keychain")) && !hasLoaded("network"));
        QVERIFY(signsIn());
        QVERIFY(hasLoaded("network") && !hasLoaded("sound"));
        julietSays("Hark!");
        QVERIFY(SOON(hasLoaded("sound")));
        QVERIFY(leavesByTheTray());
    }

    void livesOnWhereNothingCanBeWritten()
    {
        start();
        QVERIFY(SOON(isActive(signIn())));
        const rlimit none{0, 0};
        QCOMPARE(prlimit(pid_t(program_->processId()), RLIMIT_FSIZE, &none, nullptr), 0);
        QVERIFY(choosesInTheTray(1)); // Exit
        QVERIFY(SOON(x.window("BreloIM")));
        QVERIFY(program_->state() == QProcess::Running);
        x.press(XDisplay::Return);
        QVERIFY(SOON(program_->state() == QProcess::NotRunning));
        QCOMPARE(program_->exitStatus(), QProcess::NormalExit);
    }

private:
    void start()
    {
        program_.emplace();
        child::endsWithUs(*program_);
        program_->setProcessChannelMode(QProcess::ForwardedChannels);
        program_->start(QCoreApplication::applicationDirPath() + "/breloim");
    }

    bool signsIn()
    {
        const std::pair<char16_t, QString> fields[] = {{u'u', "romeo"}, {u'p', "secret"}, {u'v', address()}};
        for (const auto& [mnemonic, text] : fields) {
            if (!SOON(isActive(signIn())) || !goesTo(mnemonic))
                return false;
            x.press(u'a', {XDisplay::Control});
            x.type(text);
        }
        x.press(u'c', {XDisplay::Alt});
        return SOON(isActive(main()) && !x.window("Connection status"));
    }

    // A field selects its text a moment after it got the focus, and what was typed by then is lost: wait
    // until the program has nothing left to do.
    bool goesTo(char16_t mnemonic)
    {
        x.press(mnemonic, {XDisplay::Alt});
        x.settle();
        int looks = 0;
        return SOON((looks = isAtRest() ? looks + 1 : 0) == 3);
    }

    bool isAtRest() const
    {
        const QDir threads(QStringLiteral("/proc/%1/task").arg(program_->processId()));
        const auto names = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        return std::all_of(names.begin(), names.end(), [&](const QString& name) {
            return read(threads.filePath(name + "/stat")).contains(") S ");
        });
    }

    bool hasLoaded(const char* module) const
    {
        const auto map = read(QStringLiteral("/proc/%1/maps").arg(program_->processId()));
        return map.contains(QByteArray("/libbreloim_") + module);
    }

    static QByteArray read(const QString& name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    // The entry of the icon's menu, counted from the end.
    bool choosesInTheTray(int entry)
    {
        if (!SOON(x.trayIcon()))
            return false;
        x.click(x.place(x.trayIcon()).center(), XDisplay::Right);
        const bool isOpen = SOON(x.menu());
        for (; entry > 0; --entry)
            x.press(XDisplay::Up);
        x.press(XDisplay::Return);
        return isOpen && SOON(!x.menu());
    }

    bool leavesByTheTray()
    {
        return choosesInTheTray(1) && SOON(program_->state() == QProcess::NotRunning) &&
               program_->exitStatus() == QProcess::NormalExit && program_->exitCode() == 0;
    }

    std::optional<QProcess> program_;
};

BRELO_TEST(ProgramTest)
#include "ProgramTest.moc"
