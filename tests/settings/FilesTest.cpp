#include "support/Files.h"
#include "settings/CRegistry.h"
#include "settings/Paths.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"

// The autostart entry and the folders.
class FilesTest : public QObject
{
    Q_OBJECT

    std::optional<TempProfile> profile_;
    QString entry() { return profile_->path() + "/config/autostart/BreloIM.desktop"; }

private slots:
    void init() { profile_.emplace(); }

    void theEntryComesAndGoes()
    {
        CRegistry registry;
        QVERIFY(!registry.setStringValue("BreloIM", "/opt/b")); // not open
        QVERIFY(registry.openOrCreateKey());
        QVERIFY(registry.deleteValue("BreloIM"));
        QVERIFY(registry.setStringValue("BreloIM", "/opt/b c/breloim"));
        const auto lines = files::read(entry()).split('\n');
        QCOMPARE(lines.first(), QByteArray("[Desktop Entry]"));
        QVERIFY(lines.contains("Type=Application") && lines.contains("Exec=\"/opt/b c/breloim\""));
        QVERIFY(registry.deleteValue("BreloIM"));
        QVERIFY(!QFile::exists(entry()));
    }

    void execIsQuoted()
    {
        const std::pair<const char*, const char*> programs[] = {{"/a\"b", "\"/a\\\\\"b\""},
                                                                {"/a$b`c", "\"/a\\\\$b\\\\`c\""},
                                                                {"/a\\b", "\"/a\\\\\\\\b\""},
                                                                {"/100%u", "\"/100%%u\""},
                                                                {"/è'x", "\"/è'x\""}};
        for (const auto& [program, exec] : programs)
            QCOMPARE(CRegistry::execValue(program), exec);
    }

    void badEntriesAreRefused()
    {
        CRegistry registry;
        QVERIFY(registry.openOrCreateKey());
        QVERIFY(!registry.setStringValue("../BreloIM", "/opt/b"));
        QVERIFY(!registry.setStringValue("", "/opt/b"));
        QVERIFY(!registry.setStringValue("BreloIM", ""));
        QVERIFY(!registry.setStringValue("BreloIM", "/opt/b\nHidden=true"));
        QVERIFY(QDir(paths::autostartFolder()).isEmpty());
    }

    void filesOfSettingsAreFound()
    {
        QCOMPARE(paths::applicationFile("\\Sounds\\x.wav"), paths::applicationFolder() + "/Sounds/x.wav");
        for (const QString asNamed : {"/no/such.wav", "/etc/passwd", "x.wav", ""})
            QCOMPARE(paths::applicationFile(asNamed), asNamed);
    }

    void newFoldersAreTheOwnersOnly()
    {
        const QString outer = profile_->path() + "/outer";
        // Without those of the present user, which are the owner's here.
        const auto permissions = [](const QString& name) { return int(QFile::permissions(name)) & 0x7077; };
        QVERIFY(paths::makePrivateFolder(outer + "/inner/most"));
        for (const char* below : {"", "/inner", "/inner/most"})
            QCOMPARE(permissions(outer + below), 0x7000);
        QVERIFY(QFile::setPermissions(outer, QFile::Permissions(0x7755)));
        QVERIFY(paths::makePrivateFolder(outer));
        QCOMPARE(permissions(outer), 0x7000);
        files::write(outer + "/file", {});
        QVERIFY(!paths::makePrivateFolder(outer + "/file/below"));
    }
};

BRELO_TEST(FilesTest)
#include "FilesTest.moc"
