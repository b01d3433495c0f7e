#include "settings/Paths.h"
#include "settings/SettingsStore.h"
#include "support/Table.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"

// What the settings file holds about servers beside the keys of the table.
class ServerTrustTest : public QObject
{
    Q_OBJECT

    SettingsStore store() { return SettingsStore(paths::settingsFile()); }

private slots:
    void init() { profile_.emplace(); }

    void aPinBelongsToOneServer_data()
    {
        columns<QString, bool>("asked", "pinned");
        row("same", "Chat.Example:5223", true);
        row("other case", "chat.example:5223", true);
        row("other port", "chat.example", false);
        row("part", "example", false);
        row("separator", "chat.example:5223/", false);
        row("empty", "", false);
    }
    void aPinBelongsToOneServer()
    {
        const auto [asked, pinned] = fetched<QString, bool>();
        const QByteArray sha256(32, '\xA5');
        QVERIFY(store().pinCertificate("Chat.Example:5223", sha256));
        QVERIFY(store().pinCertificate("évil/../x", QByteArray(32, '\1')));
        QCOMPARE(store().pinnedCertificate(asked), pinned ? sha256 : QByteArray());
        QCOMPARE(store().pinnedCertificate("évil/../x"), QByteArray(32, '\1'));
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

private:
    std::optional<TempProfile> profile_;
};

BRELO_TEST(ServerTrustTest)
#include "ServerTrustTest.moc"
