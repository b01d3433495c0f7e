#include "desktop/QtSoundPlayer.h"
#include "desktop/SafeLink.h"
#include "desktop/SystemClose.h"
#include "desktop/forms/QtDesktop.h"
#include "desktop/forms/WindowPlace.h"
#include "support/Files.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <csignal>

// What the client has of the system: sounds, links, a place on the screen, and word of its end.
class SystemTest : public QObject
{
    Q_OBJECT

    // Notes each cue outside of the player that owns it.
    struct Noting : SoundPlayer {
        QStringList& played;
        explicit Noting(QStringList& list) : played(list) {}
        void PlaySoundFile(const QString& file, bool looped) override
        {
            played += file + (looped ? " looped" : "");
        }
    };

    QString file(const char* name) { return folder_.filePath(name); }
    QtSoundPlayer::Maker maker()
    {
        return [this] {
            ++made_;
            return std::make_unique<Noting>(played_);
        };
    }

    QTemporaryDir folder_;
    QStringList played_;
    int made_ = 0;
    QStringList opened_;

public slots:
    void handle(const QUrl& url) { opened_ += url.toString(); }

private slots:
    void init()
    {
        for (const char* name : {"one.wav", "two.wav"})
            files::write(folder_.filePath(name), {});
        played_.clear();
        made_ = 0;
    }

    void theLastOfSeveralCuesPlays()
    {
        QtSoundPlayer player(maker());
        player.PlaySoundFile(file("one.wav"), false);
        player.PlaySoundFile(file("two.wav"), true);
        QCOMPARE(made_, 0);
        QTRY_COMPARE(played_, QStringList{file("two.wav") + " looped"});
        player.PlaySoundFile(file("two.wav"), false);
        QTRY_COMPARE(played_.size(), 2);
        QCOMPARE(made_, 1);
    }

    void aFileThatIsMissingPlaysNothing()
    {
        QtSoundPlayer player(maker());
        for (const QString& name : {QString(), folder_.path(), file("no.wav"), QString("\\Sounds\\no.wav")}) {
            player.PlaySoundFile(name, false);
            QCoreApplication::processEvents();
        }
        QCOMPARE(made_, 0);
        player.PlaySoundFile(file("one.wav"), false);
        QTRY_COMPARE(played_.size(), 1);
    }

    void withoutAPlayerAllIsSilent()
    {
        int asked = 0;
        QtSoundPlayer player([&asked] {
            ++asked;
            return std::unique_ptr<SoundPlayer>();
        });
        for (int i = 0; i < 3; ++i) {
            player.PlaySoundFile(file("one.wav"), false);
            QCoreApplication::processEvents();
        }
        QTRY_COMPARE(asked, 1);
    }

    void onlySafeLinksAreOpened_data()
    {
        columns<QString, bool>("link", "safe");
        const auto row = [](const QString& link, bool safe) {
            QTest::addRow("%s", qPrintable(link.left(60))) << link << safe;
        };
        const QString safe = "http://a.example HTTPS://a.example/b?c=d&e#f http://[::1]:8080/ "
                             "http://a.example/é%20x ftp://a.example/f mailto:romeo@a.example?subject=x "
                             "xmpp:romeo@a.example?message callto:romeo+type=directory callto:10.0.0.1";
        for (const auto& link : safe.split(' '))
            row(link, true);
        const QString unsafe =
            "|www.a.example|/etc/passwd|file:///etc/passwd|FILE:/etc/passwd|javascript:alert(1)|data:text/"
            "html,x|vbscript:x|smb://a/b|ssh://a|http:|http://|http:///"
            "path|https:a.example|mailto:|xmpp:|callto:|http://a b/| "
            "http://a.example|http://a.example/\n-x|http://a.example:99999/|http://a.example/"
            "<b>|--help|mailto:a@b?attach=/etc/passwd|mailto:a@b?subject=x&Attachment=/etc/passwd";
        for (const auto& link : unsafe.split('|'))
            row(link, false);
        row(QString("http://a.example/") + QString(9000, u'x'), false);
    }
    void onlySafeLinksAreOpened()
    {
        const auto [link, safe] = fetched<QString, bool>();
        QCOMPARE(isSafeLink(link), safe);
        const QString scheme = link.section(u':', 0, 0).trimmed().toLower();
        opened_.clear();
        QDesktopServices::setUrlHandler(scheme, this, "handle");
        QCOMPARE(DesktopLinkOpener().open(link), safe);
        QDesktopServices::unsetUrlHandler(scheme);
        QCOMPARE(opened_.size(), safe ? 1 : 0);
    }

    void aWindowStandsWhollyOnAScreen_data()
    {
        columns<QRect, QPoint>("frame", "place");
        row("wholly there", QRect(10, 20, 100, 100), QPoint(10, 20));
        row("above the edge", QRect(10, -20, 100, 100), QPoint(10, 0));
        row("beyond the far corner", QRect(1950, 1150, 100, 100), QPoint(1900, 1100));
        row("mostly on the second", QRect(990, 50, 100, 100), QPoint(1000, 50));
        row("mostly on the first", QRect(910, 50, 100, 100), QPoint(900, 50));
        row("too big", QRect(500, 500, 5000, 100), QPoint(1000, 500));
        row("on neither", QRect(-500, 50, 100, 100), QPoint(-1, -1));
    }
    void aWindowStandsWhollyOnAScreen()
    {
        const auto [frame, place] = fetched<QRect, QPoint>();
        const QList<QRect> screens{{0, 0, 1000, 800}, {1000, 0, 1000, 1200}};
        QCOMPARE(windowplace::onAScreen(frame, screens).value_or(QPoint(-1, -1)), place);
        QVERIFY(!windowplace::onAScreen(frame, {}));
    }

    void theWishThatTheProgramEndIsTold()
    {
        for (const int signal : {SIGTERM, SIGINT, SIGHUP, 0}) { // 0 is the application's Quit event
            const SystemClose close;
            QSignalSpy told(&close, &SystemClose::requested);
            if (signal)
                QCOMPARE(std::raise(signal), 0);
            else
                QCoreApplication::postEvent(QCoreApplication::instance(), new QEvent(QEvent::Quit));
            QTRY_COMPARE(told.size(), 1);
        }
    }
};

BRELO_TEST(SystemTest)
#include "SystemTest.moc"
