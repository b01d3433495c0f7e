#include "desktop/BalloonQueue.h"
#include "desktop/forms/QtTrayIcon.h"
#include "support/Table.h"
#include "support/TestRunner.h"

static QIcon anyPicture()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::blue);
    return pixmap;
}

class TrayIconTest : public QObject
{
    Q_OBJECT

private slots:
    void balloonsThatComeTogetherShowAsTheLast()
    {
        QList<Balloon> shown;
        BalloonQueue queue([&shown](const Balloon& balloon) { shown += balloon; }, 30);
        const auto post = [&queue](int from, int to) {
            for (int i = from; i <= to; ++i)
                queue.post({"title", QString::number(i), i});
        };
        post(1, 1000);
        QCOMPARE(shown.size(), 0);
        QTRY_COMPARE(shown.size(), 1);
        QCOMPARE(shown.last(), (Balloon{"title", "1000", 1000}));
        post(1001, 1003);
        QTRY_COMPARE(shown.size(), 2);
        QCOMPARE(shown.last().text, "1003");
    }

    void noticesReadAsTyped()
    {
        using Notice = std::pair<QString, int>; // and how many joiners keep it plain
        for (const auto& [text, joiners] : {Notice("<b>x</b>", 2), Notice("<a href='file:///'>&amp;", 2),
                                            Notice("&#60;", 1), Notice("1 < 2 && a <3 \"q\"", 0)}) {
            QString plain = plainNotice(text);
            QCOMPARE(int(plain.count(QChar(0x2060))), joiners);
            QCOMPARE(plain.remove(QChar(0x2060)), text);
        }
    }

    void takesItsPlaceWithWhatWasSetBefore()
    {
        QStringList drawn;
        QtTrayIcon tray([&drawn](const QString& key) {
            drawn += key;
            return anyPicture();
        });
        tray.setIcon("offline");
        tray.setToolTip("before");
        QVERIFY(!tray.findChild<QSystemTrayIcon*>());
        QVERIFY(drawn.isEmpty());
        tray.appear();
        tray.appear();
        const auto icons = tray.findChildren<QSystemTrayIcon*>();
        QCOMPARE(icons.size(), 1);
        QCOMPARE(icons.first()->toolTip(), "before");
        tray.setToolTip("after");
        tray.setIcon("online");
        tray.setIcon("online");
        QCOMPARE(icons.first()->toolTip(), "after");
        QCOMPARE(drawn, QStringList({"offline", "online"}));
        const auto blue = [&] {
            return icons.first()->icon().pixmap(16).toImage().pixelColor(11, 11) == Qt::blue;
        };
        QVERIFY(blue());
        tray.setUnread(2);
        QVERIFY(!blue() && icons.first()->toolTip() == "after\n2 unread conversations");
        tray.setUnread(0);
        QVERIFY(blue() && icons.first()->toolTip() == "after");
    }

    void clicksBecomeRequests_data()
    {
        using Click = QSystemTrayIcon::ActivationReason;
        columns<QList<Click>, bool, int, int, int>("clicks", "hasMenu", "singles", "doubles", "menus");
        row("one click", QList{Click::Trigger}, true, 1, 0, 0);
        row("double click", QList{Click::Trigger, Click::DoubleClick}, true, 1, 1, 0);
        row("two single clicks", QList{Click::Trigger, Click::Trigger}, true, 1, 1, 0);
        row("middle", QList{Click::MiddleClick}, true, 0, 0, 1);
        row("right with a menu", QList{Click::Context}, true, 0, 0, 0);
        row("right without a menu", QList{Click::Context}, false, 0, 0, 1);
    }
    void clicksBecomeRequests()
    {
        using Clicks = QList<QSystemTrayIcon::ActivationReason>;
        const auto [clicks, hasMenu, singles, doubles, menus] = fetched<Clicks, bool, int, int, int>();
        QtTrayIcon tray([](const QString&) { return anyPicture(); });
        QMenu menu;
        if (hasMenu)
            tray.setContextMenu(&menu);
        tray.appear();
        QSignalSpy clicked(&tray, &QtTrayIcon::clicked);
        QSignalSpy doubleClicked(&tray, &QtTrayIcon::doubleClicked);
        QSignalSpy menuRequested(&tray, &QtTrayIcon::menuRequested);
        QSignalSpy balloonClicked(&tray, &QtTrayIcon::balloonClicked);
        for (const auto click : clicks)
            emit tray.findChild<QSystemTrayIcon*>()->activated(click);
        QCOMPARE(balloonClicked.size(), 0);
        emit tray.findChild<QSystemTrayIcon*>()->messageClicked();
        QCOMPARE(balloonClicked.size(), 1);
        QCOMPARE(clicked.size(), singles);
        QCOMPARE(doubleClicked.size(), doubles);
        QCOMPARE(menuRequested.size(), menus);
    }

    void aBalloonWithoutATrayDoesNoHarm()
    {
        QtTrayIcon tray([](const QString&) { return anyPicture(); });
        tray.setBalloonTitle("title");
        tray.showBalloon();
        QTRY_VERIFY(tray.findChild<QSystemTrayIcon*>());
        QCOMPARE(tray.isReachable(), QSystemTrayIcon::isSystemTrayAvailable());
    }
};

BRELO_TEST(TrayIconTest)
#include "TrayIconTest.moc"
