#include "settings/Paths.h"
#include "settings/SettingsStore.h"
#include "support/Table.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"

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

    void comesBack_data()
    {
        columns<int, QRect>("state", "expected");
        const QRect geometry(-1200, 40, 260, 520);
        row("normal", 0, geometry);
        row("minimised is stored as zeros", 1, QRect(0, 0, 0, 0));
        row("maximised", 2, geometry);
    }
    void comesBack()
    {
        const auto [state, expected] = fetched<int, QRect>();
        QVERIFY(store().saveWindowPosition(QRect(-1200, 40, 260, 520), state));
        const WindowPosition position = store().loadWindowPosition(current);
        QCOMPARE(position.geometry.value_or(QRect()), expected);
        QCOMPARE(position.state, state);
    }

    void badNumbersAreReplaced_data()
    {
        columns<QString, QString, QRect, int>("key", "text", "expected", "state");
        const QRect stored(1, 2, 30, 40);
        row("word", "Top", "high", QRect(1, 20, 30, 40), 2);
        row("beyond a number", "Width", "99999999999", QRect(1, 2, 300, 40), 2);
        row("huge", "Left", "2147483647", QRect(1000000, 2, 30, 40), 2);
        row("unknown state", "Window State", "7", stored, 0);
        row("state as word", "Window State", "up", stored, 0);
    }
    void badNumbersAreReplaced()
    {
        const auto [key, text, expected, state] = fetched<QString, QString, QRect, int>();
        QVERIFY(store().saveWindowPosition(QRect(1, 2, 30, 40), 2));
        QSettings(paths::settingsFile(), QSettings::IniFormat)
            .setValue(QStringLiteral("Window Position/") + key, text);
        const WindowPosition position = store().loadWindowPosition(current);
        QCOMPARE(position.geometry.value_or(QRect()), expected);
        QCOMPARE(position.state, state);
    }

    void liesBesideTheSettings()
    {
        QVERIFY(!store().loadWindowPosition(current).geometry); // nothing is stored
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
