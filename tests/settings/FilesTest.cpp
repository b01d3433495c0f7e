#include "settings/CRegistry.h"
#include "settings/Paths.h"
#include "support/Table.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"

// The autostart entry and the folders.
class FilesTest : public QObject
{
    Q_OBJECT

    QString entry() { return profile_->path() + QStringLiteral("/config/autostart/BreloIM.desktop"); }

private slots:
    void init() { profile_.emplace(); }

    void theEntryComesAndGoes()
    {
        CRegistry registry;
        QVERIFY2(!registry.setStringValue("BreloIM", "/opt/b"), "not open");
        QVERIFY(registry.openOrCreateKey());
        QVERIFY(registry.deleteValue("BreloIM"));
        QVERIFY(registry.setStringValue("BreloIM", "/opt/b c/breloim"));
        QFile file(entry());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const auto lines = file.readAll().split('\n');
        QCOMPARE(lines.first(), QByteArray("[Desktop Entry]"));
        QVERIFY(lines.contains("Type=Application"));
        QVERIFY(lines.contains("Exec=\"/opt/b c/breloim\""));
        QVERIFY(registry.deleteValue("BreloIM"));
        QVERIFY(!QFile::exists(entry()));
    }

    void execIsQuoted_data()
    {
        columns<QString, QString>("program", "exec");
        row("quote", "/a\"b", "\"/a\\\\\"b\"");
        row("dollar and backtick", "/a$b`c", "\"/a\\\\$b\\\\`c\"");
        row("backslash", "/a\\b", "\"/a\\\\\\\\b\"");
        row("field code", "/100%u", "\"/100%%u\"");
        row("letters", "/è'x", "\"/è'x\"");
    }
    void execIsQuoted()
    {
        const auto [program, exec] = fetched<QString, QString>();
        QCOMPARE(CRegistry::execValue(program), exec);
    }

    void badEntriesAreRefused_data()
    {
        columns<QString, QString>("name", "program");
        row("other folder", "../BreloIM", "/opt/b");
        row("no name", "", "/opt/b");
        row("no program", "BreloIM", "");
        row("line end", "BreloIM", "/opt/b\nHidden=true");
    }
    void badEntriesAreRefused()
    {
        const auto [name, program] = fetched<QString, QString>();
        CRegistry registry;
        QVERIFY(registry.openOrCreateKey());
        QVERIFY(!registry.setStringValue(name, program));
        QVERIFY(QDir(paths::autostartFolder()).isEmpty());
    }

    void filesOfSettingsAreFound_data()
    {
        columns<QString, QString>("named", "file");
        const QString app = paths::applicationFolder();
        row("backslashes", "\\Sounds\\x.wav", app + "/Sounds/x.wav");
        row("missing absolute", "/no/such.wav", "/no/such.wav");
        row("absolute", "/etc/passwd", "/etc/passwd");
        row("relative", "x.wav", "x.wav");
        row("empty", "", "");
    }
    void filesOfSettingsAreFound()
    {
        const auto [named, file] = fetched<QString, QString>();
        QCOMPARE(paths::applicationFile(named), file);
    }

    void newFoldersAreTheOwnersOnly()
    {
        const QString outer = profile_->path() + QStringLiteral("/outer");
        const auto owners = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
        const auto all = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                         QFile::WriteOther | QFile::ExeOther | owners;
        QVERIFY(paths::makePrivateFolder(outer + QStringLiteral("/inner/most")));
        for (const char* below : {"", "/inner", "/inner/most"})
            QCOMPARE(QFile::permissions(outer + QLatin1String(below)) & all, owners);
        QVERIFY(QFile::setPermissions(outer, QFile::Permissions(0x7755)));
        QVERIFY(paths::makePrivateFolder(outer));
        QCOMPARE(QFile::permissions(outer) & all, owners);
        QFile file(outer + QStringLiteral("/file"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(!paths::makePrivateFolder(file.fileName() + QStringLiteral("/below")));
    }

private:
    std::optional<TempProfile> profile_;
};

BRELO_TEST(FilesTest)
#include "FilesTest.moc"
