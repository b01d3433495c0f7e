#include "settings/Paths.h"
#include "settings/SettingsStore.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"

#include <QSettings>
#include <QTest>

namespace
{

const QRect current(10, 20, 300, 400);

} // namespace

class WindowPositionTest : public QObject
{
    Q_OBJECT

    SettingsStore store() { return SettingsStore(paths::settingsFile()); }

private slots:
    void init() { profile_.emplace(); }

    void nothingStoredLeavesTheWindowWhereItIs()
    {
        const WindowPosition position = store().loadWindowPosition(current);
        QVERIFY(!position.geometry);
        QCOMPARE(position.state, 0);
    }

    void comesBack_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QRect>("expected");
        const QRect geometry(-1200, 40, 260, 520);
        QTest::newRow("normal") << 0 << geometry;
        QTest::newRow("minimised is stored as zeros") << 1 << QRect(0, 0, 0, 0);
        QTest::newRow("maximised") << 2 << geometry;
    }
    void comesBack()
    {
        QFETCH(int, state);
        QFETCH(QRect, expected);
        QVERIFY(store().saveWindowPosition(QRect(-1200, 40, 260, 520), state));
        const WindowPosition position = store().loadWindowPosition(current);
        QCOMPARE(position.geometry.value_or(QRect()), expected);
        QCOMPARE(position.state, state);
    }

    void badNumbersAreReplaced_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QRect>("expected");
        QTest::addColumn<int>("state");
        const QRect stored(1, 2, 30, 40);
        QTest::newRow("word") << "Top"
                              << "high" << QRect(1, 20, 30, 40) << 2;
        QTest::newRow("beyond a number") << "Width"
                                         << "99999999999" << QRect(1, 2, 300, 40) << 2;
        QTest::newRow("huge") << "Left"
                              << "2147483647" << QRect(1000000, 2, 30, 40) << 2;
        QTest::newRow("unknown state") << "Window State"
                                       << "7" << stored << 0;
        QTest::newRow("state as word") << "Window State"
                                       << "up" << stored << 0;
    }
    void badNumbersAreReplaced()
    {
        QFETCH(QString, key);
        QFETCH(QString, text);
        QFETCH(QRect, expected);
        QFETCH(int, state);
        QVERIFY(store().saveWindowPosition(QRect(1, 2, 30, 40), 2));
        QSettings(paths::settingsFile(), QSettings::IniFormat)
            .setValue(QStringLiteral("Window Position/") + key, text);
        const WindowPosition position = store().loadWindowPosition(current);
        QCOMPARE(position.geometry.value_or(QRect()), expected);
        QCOMPARE(position.state, state);
    }

    void liesBesideTheSettings()
    {
        QVERIFY(store().saveWindowPosition(QRect(1, 2, 30, 40), 0));
        Settings settings;
        settings.UserName = QStringLiteral("romeo");
        QVERIFY(store().SaveSettings(settings));
        QCOMPARE(store().loadWindowPosition(current).geometry.value_or(QRect()), QRect(1, 2, 30, 40));
    }

private:
    std::optional<TempProfile> profile_;
};

BRELO_TEST(WindowPositionTest)
#include "WindowPositionTest.moc"
