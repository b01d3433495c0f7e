#include "desktop/AnimatedGif.h"
#include "desktop/GifFile.h"
#include "support/Files.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class AnimatedGifTest : public QObject
{
    Q_OBJECT

    QString write(const QByteArray& data)
    {
        files::write(folder_.filePath("a.gif"), data);
        return folder_.filePath("a.gif");
    }

    QTemporaryDir folder_;
    const QString notGif = "This file is not a *.gif file";
    const QString ownFile = qEnvironmentVariable("BRELO_SOURCE_DIR") + "/resources/connect.gif";

private slots:
    void ownAnimationRunsWhole()
    {
        AnimatedGif gif;
        QCOMPARE(gif.LoadGif(ownFile), 12);
        QCOMPARE(gif.TotalFrames(), 11);
        QCOMPARE(gif.screenSize(), QSize(96, 48));
        QCOMPARE(gif.errorText(), QString());
        QImage last;
        for (int i = 0; i < gif.count(); ++i) {
            const QImage picture = QImage::fromData(gif.gif(i), "gif");
            QCOMPARE(picture.size(), QSize(96, 48));
            QVERIFY(picture != last);
            QVERIFY(gif.delay(i) >= 50);
            last = picture;
        }
        // It loops without a jump: what the cut leaves over is the first picture again.
        const QByteArray data = files::read(ownFile);
        const QByteArray left = data.mid(data.lastIndexOf(QByteArray("\0\x21\xf9", 3)) + 2);
        QVERIFY(left.startsWith(gif.gif(0).mid(data.indexOf(QByteArray("\0\x21\xf9", 3)) + 2).chopped(2)));
    }

    void cutsAtTheControlBlocks_data()
    {
        columns<QByteArray, QString, QList<int>>("data", "error", "delays");
        const QSize screen(4, 4);
        const auto looping = [screen] { return GifFile(screen).loop(0); };
        const auto bare = GifFile(screen).bareSeparator().bareSeparator().bareSeparator();
        const QList<int> none;
        row("the last frame is left out", looping().frame(10, 1).frame(25, 2).frame(7, 3).bytes(), "",
            QList<int>{100, 250});
        row("no delay", looping().frame(0, 1).frame(5, 2).bytes(), "", QList<int>{0});
        row("the longest delay", looping().frame(65535, 1).frame(5, 2).bytes(), "", QList<int>{655350});
        row("one picture only", looping().frame(10, 1).bytes(), "", none);
        row("no separator", GifFile(screen, 3).bytes(), notGif, none);
        row("separators behind each other", bare.bytes(), "", QList<int>{0, 0});
        row("another format", QByteArray("\x89PNG\0\x21\xf9\0\x21\xf9", 10), notGif, none);
        row("nothing but a separator", QByteArray("\0\x21\xf9", 3), notGif, none);
        row("empty", QByteArray(), notGif, none);
        row("the word alone", QByteArray("GIF"), notGif, none);
    }
    void cutsAtTheControlBlocks()
    {
        const auto [data, error, delays] = fetched<QByteArray, QString, QList<int>>();
        AnimatedGif gif;
        QCOMPARE(gif.LoadGif(write(data)), int(delays.size()));
        QCOMPARE(gif.errorText(), error);
        for (int i = 0; i < gif.count(); ++i)
            QCOMPARE(gif.delay(i), delays[i]);
    }

    void placesFrames()
    {
        GifFile file({300, 8});
        file.loop(0).frame(1, 1, {3, 3}).frame(1, 2, {258, 4}, {3, 2}).frame(1, 3);
        AnimatedGif gif;
        QCOMPARE(gif.LoadGif(write(file.bytes())), 2);
        QCOMPARE(gif.offset(0), QPoint(0, 0));
        QCOMPARE(gif.place(0), QPoint(3, 3));
        QCOMPARE(gif.offset(1), QPoint(258, 4));
        // Each frame is a picture of its own, without the one before it.
        const QImage second = QImage::fromData(gif.gif(1), "gif");
        QCOMPARE(second.pixelColor(260, 5), QColor(Qt::green));
        QVERIFY(second.pixelColor(4, 4) != QColor(Qt::red));
    }

    void tellsMissingFiles()
    {
        for (const auto& path :
             {QString(), folder_.filePath("none.gif"), folder_.path(), QString("/nowhere/%1.gif")}) {
            AnimatedGif gif;
            QCOMPARE(gif.LoadGif(path), 0);
            QCOMPARE(gif.errorText(), "File " + path + " not found");
        }
    }

    void boundsHostileFiles()
    {
        const QByteArray flood =
            GifFile({4, 4}).loop(0).bytes() + QByteArray("\0\x21\xf9", 3).repeated(2'000'000);
        AnimatedGif gif;
        const int count = gif.LoadGif(write(flood));
        QVERIFY(count > 0 && count <= 4096);
        QVERIFY(gif.gif(count - 1).size() < 100);
    }
};

BRELO_TEST(AnimatedGifTest)
#include "AnimatedGifTest.moc"
