#include "settings/Paths.h"
#include "settings/SettingsStore.h"
#include "support/Table.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"

// What the settings file holds beside the keys of the table: about servers, and the window's place.
class BesideKeysTest : public QObject
{
    Q_OBJECT

    std::optional<TempProfile> profile_;
    const QRect current{10, 20, 300, 400};
    SettingsStore store() { return SettingsStore(paths::settingsFile()); }

private slots:
    void init() { profile_.emplace(); }

    void aPinBelongsToOneServer()
    {
        const QByteArray sha256(32, '\xA5');
        QVERIFY(store().pinCertificate("Chat.Example:5223", sha256));
        QVERIFY(store().pinCertificate("évil/../x", QByteArray(32, '\1')));
        QCOMPARE(store().pinnedCertificate("évil/../x"), QByteArray(32, '\1'));
        for (const char* pinned : {"Chat.Example:5223", "chat.example:5223"})
            QCOMPARE(store().pinnedCertificate(pinned), sha256);
        for (const char* other : {"chat.example", "example", "chat.example:5223/", ""})
            QVERIFY2(store().pinnedCertificate(other).isEmpty(), other);
    }

    void aBrokenPinIsNone()
    {
        for (const char* text : {"", "zz", "a5a5"}) {
            QSettings(paths::settingsFile(), QSettings::IniFormat)
                .setValue("Certificates/chat.example", QLatin1String(text));
            QCOMPARE(store().pinnedCertificate("chat.example"), QByteArray());
        }
    }

    void plainPasswordsNeedAWordForEachServer()
    {
        QVERIFY(!store().plainPasswordAllowed("a.example"));
        QVERIFY(store().allowPlainPassword("a.example"));
        QVERIFY(store().plainPasswordAllowed("A.example"));
        QVERIFY(!store().plainPasswordAllowed("b.example"));
    }

    void theLastSignInsAreRemembered()
    {
        const Safety some[] = {
            {true, true, Proof::ScramSha256}, {true, false, Proof::Plain}, {false, false, Proof::Digest}};
        QVERIFY(!store().lastSafety("romeo@a.example"));
        for (const Safety& safety : some) {
            QVERIFY(store().keepSafety("Romeo@a.example", safety));
            QVERIFY(store().lastSafety("romeo@A.example") == safety);
        }
        for (int i = 0; i < 49; ++i)
            QVERIFY(store().keepSafety(QStringLiteral("u%1@a.example").arg(i), some[0]));
        // The one that is used again stays, the one that wasn't goes.
        QVERIFY(store().keepSafety("romeo@a.example", some[2]));
        QVERIFY(store().keepSafety("new@a.example", some[1]));
        QVERIFY(store().lastSafety("romeo@a.example") == some[2] && !store().lastSafety("u0@a.example"));
        QVERIFY(store().lastSafety("u1@a.example") == some[0] && store().lastSafety("new@a.example"));
        QSettings(paths::settingsFile(), QSettings::IniFormat).setValue("Sign-ins/bad%40a.example", "7 up");
        QVERIFY(!store().lastSafety("bad@a.example"));
    }

    void theSiteCanBeOverridden()
    {
        QCOMPARE(store().loadSite().DefaultServer, SiteData().DefaultServer);
        QSettings file(paths::settingsFile(), QSettings::IniFormat);
        file.setValue("Site/DefaultServer", "localhost:5222");
        file.setValue("Site/WebSite", "www.example");
        file.sync();
        const SiteData site = store().loadSite();
        QCOMPARE(site.DefaultServer, "localhost:5222");
        QCOMPARE(site.WebSite, "www.example");
        QCOMPARE(site.SisterServer, SiteData().SisterServer);
        Settings settings;
        store().LoadSettings(settings);
        QCOMPARE(settings.Server, "localhost:5222");
    }

    void comesBack()
    {
        const QRect geometry(-1200, 40, 260, 520);
        QVERIFY(!store().loadWindowPosition(current).geometry); // nothing is stored
        for (const int state : {0, 1, 2}) {                     // minimised, it is stored as zeros
            QVERIFY(store().saveWindowPosition(geometry, state));
            const WindowPosition position = store().loadWindowPosition(current);
            QCOMPARE(position.geometry.value_or(QRect()), state == 1 ? QRect(0, 0, 0, 0) : geometry);
            QCOMPARE(position.state, state);
        }
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
            .setValue(QString("Window Position/") + key, text);
        const WindowPosition position = store().loadWindowPosition(current);
        QCOMPARE(position.geometry.value_or(QRect()), expected);
        QCOMPARE(position.state, state);
    }
};

BRELO_TEST(BesideKeysTest)
#include "BesideKeysTest.moc"
