#include "desktop/forms/ImageList.h"
#include "support/TestRunner.h"

#include <bitset>

class ImageListTest : public QObject
{
    Q_OBJECT

    static QImage at16(const QString& key)
    {
        return ImageList::icon(key).pixmap(16).toImage().convertToFormat(QImage::Format_ARGB32);
    }
    // The shape alone: which pixels are coloured, neither transparent nor white.
    static std::bitset<256> shape(const QString& key)
    {
        const QImage image = at16(key);
        std::bitset<256> pixels;
        for (int i = 0; i < 256; ++i) {
            const QColor colour = image.pixelColor(i % 16, i / 16);
            pixels[i] = colour.alpha() > 127 && colour.lightness() < 190;
        }
        return pixels;
    }
    // How many pixels stand out from a grey background.
    static int seenOn(int background, const QImage& image)
    {
        int seen = 0;
        for (int i = 0; i < 256; ++i) {
            const QColor colour = image.pixelColor(i % 16, i / 16);
            seen += qAbs(qGray(colour.rgb()) - background) * colour.alpha() / 255 > 40;
        }
        return seen;
    }

private slots:
    void positionsAreAContract()
    {
        const QString order =
            "LightOn Away dnd Offline LightOff Online Add Del Pendingauth xAway ClosedFolder3 OpenFolder3 "
            "OpenFolder CloseFolder Mail ClosedFolder2 OpenFolder2 online groupchat Refresh Pending server "
            "free4chat notauth invite chatroom Service ServerOFF ServerON";
        QStringList keys;
        for (int position = 1; position <= 29; ++position)
            keys += ImageList::keyAt(position);
        QCOMPARE(keys.join(u' '), order);
    }

    void everyKeyHasAPictureOfItsOwnSeenOnAnyBackground()
    {
        QHash<QByteArray, QString> seen;
        for (int i = 1; i <= ImageList::count(); ++i) {
            const QString key = ImageList::keyAt(i);
            const QImage image = at16(key);
            QCOMPARE(image.size(), QSize(16, 16));
            QVERIFY2(shape(key).count() >= 30, qPrintable(key + " is nearly empty"));
            const QByteArray bits(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
            QVERIFY2(!seen.contains(bits), qPrintable(key + " looks like " + seen.value(bits)));
            seen.insert(bits, key);
            for (const int background : {0x20, 0xfc})
                QVERIFY2(seenOn(background, image) >= 30, qPrintable(key + " drowns in its background"));
        }
    }

    void statesDifferByShapeToo()
    {
        const QStringList states{"Online",  "Away",    "xAway",       "dnd",      "free4chat", "Offline",
                                 "notauth", "Pending", "Pendingauth", "ServerON", "ServerOFF"};
        for (const QString& a : states)
            for (const QString& b : states)
                QVERIFY2(a == b || (shape(a) ^ shape(b)).count() >= 10,
                         qPrintable(a + " has the shape of " + b));
    }
};

BRELO_TEST(ImageListTest)
#include "ImageListTest.moc"
