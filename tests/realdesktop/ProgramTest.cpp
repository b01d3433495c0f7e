#include "realdesktop/DesktopTest.h"
#include "settings/Paths.h"
#include "settings/SettingsStore.h"
#include "support/ChildProcess.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScreen>

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

    // After a kill too; a program on another profile stands beside it.
    void aSecondStartBringsUpTheFirst()
    {
        start();
        QVERIFY(SOON(signIn() && x.trayIcon()));
        program_->kill();
        QVERIFY(program_->waitForFinished());
        start();
        QVERIFY(SOON(isActive(signIn()) && x.trayIcon()));
        x.close(signIn());
        QVERIFY(SOON(!signIn()));
        QProcess second;
        child::endsWithUs(second);
        const QString file = QCoreApplication::applicationDirPath() + "/breloim";
        second.start(file);
        QVERIFY(second.waitForFinished() && second.exitCode() == 0);
        QVERIFY(SOON(isActive(signIn())));
        auto around = QProcessEnvironment::systemEnvironment();
        around.insert("XDG_CONFIG_HOME", around.value("XDG_CONFIG_HOME") + "/other");
        second.setProcessEnvironment(around);
        const auto first = signIn();
        x.minimise(first);
        second.start(file);
        QVERIFY(SOON(isActive(signIn()) || (x.active() && x.active() != first)));
        QVERIFY(SOON(second.state() == QProcess::Running));
    }

    // Stored places are logical pixels; the screen has 1280 by 1024 of its own.
    void comesUpWhollyOnAScreen_data()
    {
        columns<int, QRect, QPoint>("scale", "stored", "corner");
        const QPoint lastColumn(-1, 100);
        row("in a corner", 1, QRect(0, 0, 300, 500), QPoint(0, 0));
        row("zeros", 1, QRect(0, 0, 0, 0), QPoint(0, 0));
        row("above the screen", 1, QRect(100, -50, 300, 500), QPoint(100, 0));
        row("beyond its right edge", 1, QRect(1200, 100, 300, 500), lastColumn);
        row("in a corner, twice as big", 2, QRect(0, 0, 300, 400), QPoint(0, 0));
        row("beyond the edge, twice as big", 2, QRect(600, 50, 300, 400), lastColumn);
        row("higher than the screen, twice as big", 2, QRect(50, 0, 300, 700), QPoint(100, 0));
        row("on a screen that is gone", 1, QRect(3000, 100, 300, 500), QPoint(-1, -1));
    }

    void comesUpWhollyOnAScreen()
    {
        const auto [scale, stored, corner] = fetched<int, QRect, QPoint>();
        Settings settings;
        settings.UserName = "romeo";
        settings.Password = "secret";
        settings.Server = address();
        settings.SavePassword = settings.AutoLogon = true;
        SettingsStore store(paths::settingsFile());
        QVERIFY(store.SaveSettings(settings) && store.saveWindowPosition(stored, 0));
        start(scale);
        QVERIFY(SOON(isActive(main()) && !x.window("Connection status")));
        const QRect usable = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(SOON(usable.contains(framed(main()))));
        const QRect frame = framed(main());
        QVERIFY(corner.x() < 0 || frame.x() == corner.x());
        QVERIFY(corner.y() < 0 || frame.y() == corner.y());
        QVERIFY(usable.right() - frame.right() < 16 || corner.x() >= 0 || corner.y() < 0);
        QVERIFY(stored.width() == 0 ? frame.width() > 100
                                    : x.place(main()).width() == stored.width() * scale);
        QVERIFY(leavesByTheTray());
        const auto left = store.loadWindowPosition({}).geometry.value_or(QRect());
        QVERIFY(stored.isEmpty() || left.size() == stored.size());
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

    // The first hangs: the second says so, and changes nothing.
    void aSecondStartTellsThatTheFirstHangs()
    {
        start();
        QVERIFY(SOON(isActive(signIn()) && x.trayIcon()));
        QCOMPARE(::kill(pid_t(program_->processId()), SIGSTOP), 0);
        QProcess second;
        child::endsWithUs(second);
        second.start(QCoreApplication::applicationDirPath() + "/breloim");
        QVERIFY(SOON(isActive(x.window("BreloIM"))));
        x.press(XDisplay::Return);
        QVERIFY(SOON(second.state() == QProcess::NotRunning) && second.exitCode() == 1);
        QVERIFY(second.readAllStandardError().contains("does not answer"));
        QCOMPARE(::kill(pid_t(program_->processId()), SIGCONT), 0);
        QVERIFY(leavesByTheTray());
    }

    // Nobody is there to answer a box then.
    void endsWithTheSystemWhereNothingCanBeWritten()
    {
        QVERIFY(SettingsStore(paths::settingsFile()).SaveSettings({}));
        QVERIFY(QFile::setPermissions(paths::settingsFile(), QFile::ReadOwner));
        start();
        QVERIFY(SOON(isActive(signIn()) && x.trayIcon()));
        program_->terminate();
        QVERIFY(SOON(program_->state() == QProcess::NotRunning));
        QVERIFY(program_->exitStatus() == QProcess::NormalExit && program_->exitCode() == 0);
    }

    // Who logs out under the box that tells of damaged settings keeps what could be read of them.
    void endsWithTheSystemUnderTheFirstBox()
    {
        QVERIFY(QDir().mkpath(QFileInfo(paths::settingsFile()).path()));
        QFile file(paths::settingsFile());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Program%20Settings]\nUserName=romeo\nServer=a.example\nSSL=perhaps\n");
        file.close();
        start();
        QVERIFY(SOON(isActive(x.window("BreloIM"))));
        program_->terminate();
        QVERIFY(SOON(program_->state() == QProcess::NotRunning));
        QVERIFY(program_->exitStatus() == QProcess::NormalExit && program_->exitCode() == 0);
        const auto kept = read(paths::settingsFile());
        QVERIFY(kept.contains("UserName=romeo") && kept.contains("Server=a.example"));
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
    void start(int scale = 1)
    {
        program_.emplace();
        auto around = QProcessEnvironment::systemEnvironment();
        around.insert("QT_SCALE_FACTOR", QString::number(scale));
        program_->setProcessEnvironment(around);
        child::endsWithUs(*program_);
        program_->setProcessChannelMode(QProcess::ForwardedChannels);
        program_->start(QCoreApplication::applicationDirPath() + "/breloim");
    }

    bool signsIn()
    {
        const std::pair<char16_t, QString> fields[] = {{u'u', "romeo"}, {u'p', "secret"}, {u'v', address()}};
        for (const auto& [mnemonic, text] : fields) {
            if (!SOON(isActive(signIn())))
                return false;
            x.press(mnemonic, {XDisplay::Alt});
            x.press(u'a', {XDisplay::Control});
            x.type(text);
        }
        x.press(u'c', {XDisplay::Alt});
        return SOON(isActive(main()) && !x.window("Connection status"));
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
