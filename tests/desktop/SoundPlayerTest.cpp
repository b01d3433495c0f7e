#include "desktop/QtSoundPlayer.h"
#include "support/Files.h"
#include "support/RecordingDesktop.h"
#include "support/TestRunner.h"

class SoundPlayerTest : public QObject
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
};

BRELO_TEST(SoundPlayerTest)
#include "SoundPlayerTest.moc"
