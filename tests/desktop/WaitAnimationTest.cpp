#include "desktop/forms/WaitAnimation.h"
#include "desktop/GifFile.h"
#include "support/Files.h"
#include "support/RecordingDesktop.h"
#include "support/TestRunner.h"

class WaitAnimationTest : public QObject
{
    Q_OBJECT

    QString write(const GifFile& gif)
    {
        files::write(folder_.filePath("a.gif"), gif.bytes());
        return folder_.filePath("a.gif");
    }

    // The colour at a point of the 8 x 8 pixels on show.
    QColor pixel(int x, int y) { return animation_->grab().toImage().pixelColor(x, y); }
    QTemporaryDir folder_;
    RecordingBoxes boxes_;
    std::unique_ptr<WaitAnimation> animation_;

private slots:
    void init()
    {
        boxes_ = RecordingBoxes();
        animation_ = std::make_unique<WaitAnimation>();
        animation_->setBoxes(&boxes_);
        animation_->resize(8, 8);
    }

    void showsTheFramesInTurnAndWraps()
    {
        const QSize size(8, 8);
        animation_->Start(
            write(GifFile(size).loop(0).frame(5, 1, {}, size).frame(5, 2, {}, size).frame(5, 3, {}, size)));
        QCOMPARE(animation_->frameOnShow(), 0);
        QCOMPARE(pixel(4, 4), QColor(Qt::red));
        QTRY_COMPARE(animation_->frameOnShow(), 1);
        QCOMPARE(pixel(4, 4), QColor(Qt::green));
        QTRY_COMPARE(animation_->frameOnShow(), 0);
        QCOMPARE(pixel(4, 4), QColor(Qt::red));
        QVERIFY(animation_->isRunning());
        QVERIFY(boxes_.shown.isEmpty());
    }

    void aFrameWithoutDelayStandsForGood()
    {
        animation_->Start(write(GifFile({8, 8}).loop(0).frame(1, 1).frame(0, 2).frame(1, 3)));
        QVERIFY(animation_->isRunning());
        QTRY_VERIFY(!animation_->isRunning());
        QCOMPARE(animation_->frameOnShow(), 1);
        QCOMPARE(pixel(1, 1), QColor(Qt::green));
    }

    void anExtraDelayKeepsEvenThatFrameGoing()
    {
        animation_->setExtraDelay(5);
        animation_->Start(write(GifFile({8, 8}).loop(0).frame(0, 1).frame(0, 2).frame(0, 3)));
        QTRY_COMPARE(animation_->frameOnShow(), 1);
        QTRY_COMPARE(animation_->frameOnShow(), 0);
    }

    void tellsFilesThatCannotBeUsed()
    {
        animation_->Start(write(GifFile({8, 8}, 3)));
        QCOMPARE(boxes_.shown,
                 QList<RecordingBoxes::Box>({{"BreloIM", "This file is not a *.gif file",
                                              MessageBoxes::Icon::Critical, MessageBoxes::Buttons::Ok}}));
        QVERIFY(!animation_->isRunning());
        QCOMPARE(animation_->frameOnShow(), -1);
    }

    void hostilePicturesShowNothing()
    {
        // A screen beyond measure, one a pixel too wide, one without an area, no picture behind the head.
        for (const QSize size : {QSize(65535, 65535), QSize(1025, 1), QSize(0, 0), QSize(8, 8)}) {
            init();
            GifFile file(size);
            if (size.width() > 8)
                file.loop(0).frame(1, 1).frame(1, 1).frame(1, 1);
            else
                file.bareSeparator().bareSeparator().bareSeparator();
            const QImage empty = animation_->grab().toImage();
            animation_->Start(write(file));
            QCOMPARE(animation_->frameOnShow(), 0);
            QCOMPARE(animation_->grab().toImage(), empty);
            QVERIFY(animation_->sizeHint().width() <= 1024);
        }
    }
};

BRELO_TEST(WaitAnimationTest)
#include "WaitAnimationTest.moc"
