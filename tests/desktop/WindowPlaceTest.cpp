#include "desktop/forms/WindowPlace.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class WindowPlaceTest : public QObject
{
    Q_OBJECT

private slots:
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
};

BRELO_TEST(WindowPlaceTest)
#include "WindowPlaceTest.moc"
