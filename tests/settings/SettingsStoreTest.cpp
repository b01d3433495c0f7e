#include "settings/SettingsStore.h"
#include "settings/Paths.h"
#include "settings/SettingKeys.h"
#include "support/Files.h"
#include "support/Table.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"

#include <sys/stat.h>
#include <unistd.h>

class SettingsStoreTest : public QObject
{
    Q_OBJECT

    std::optional<TempProfile> profile_;

    // Another value than `settings` holds, of the same type.
    static QString changed(const SettingKey& key, const Settings& settings)
    {
        const QString now = key.text(settings);
        if (std::holds_alternative<bool Settings::*>(key.member))
            return now == "True" ? "False" : "True";
        if (std::holds_alternative<QString Settings::*>(key.member))
            return " @a \"b\", c;d=%41 \\ \n[é] " + QString(key.key);
        return QString::number(now.toDouble() + 7, 'f', 2).remove(".00");
    }
    // The three keys that are never written read as their defaults.
    static Settings asStored(Settings settings)
    {
        settings.CharOnffLineBold = Settings().CharOnffLineBold;
        settings.CharOffLineSize = Settings().CharOffLineSize;
        settings.CharOffLineName = Settings().CharOffLineName;
        return settings;
    }
    static QStringList texts(const Settings& settings)
    {
        QStringList all;
        for (const SettingKey& key : settingKeys())
            all += QLatin1String(key.key) + u'=' + key.text(settings);
        return all;
    }
    static QString stored(const char* path)
    {
        return QSettings(paths::settingsFile(), QSettings::IniFormat).value(QLatin1String(path)).toString();
    }
    static void store(const char* path, const QString& text)
    {
        QSettings(paths::settingsFile(), QSettings::IniFormat).setValue(QLatin1String(path), text);
    }
    static Settings loaded()
    {
        Settings settings;
        SettingsStore(paths::settingsFile()).LoadSettings(settings);
        return settings;
    }
    static bool save(const Settings& settings)
    {
        return SettingsStore(paths::settingsFile()).SaveSettings(settings);
    }

private slots:
    void init() { profile_.emplace(); }

    void aFirstRunReadsTheDefaults()
    {
        Settings expected;
        expected.Server = SiteData().DefaultServer;
        QCOMPARE(texts(loaded()), texts(expected));
        QVERIFY(!QFile::exists(paths::settingsFile()));
    }

    void everyValueComesBack()
    {
        Settings written;
        for (const SettingKey& key : settingKeys())
            QVERIFY(key.put(written, changed(key, written)));
        QVERIFY(save(written));
        QCOMPARE(texts(loaded()), texts(asStored(written)));
    }

    void valuesStandAsTextUnderTheirKeys()
    {
        Settings settings;
        settings.NewWindowOnTop = true;
        settings.Resource = "home";
        QVERIFY(save(settings));
        QCOMPARE(stored("Program Settings/Check Yahoo! Mail"), "False");
        QCOMPARE(stored("Program Settings/New Window on Top"), "True");
        QCOMPARE(stored("Program Settings/Color Online"), "12222037");
        QCOMPARE(stored("Program Settings/Char OnLine Size"), "8.25");
        QCOMPARE(stored("Program Settings/Sponsor added"), "False");
        QCOMPARE(stored("Program Settings/Version"), BRELO_VERSION);
        QCOMPARE(stored("Program Settings/Session"), "home");
        QCOMPARE(stored("Status Messages/DND"), "I'm busy, go away.");
        for (const char* unwritten : {"OnffLine Bold", "OffLine Size", "OffLine Name"})
            QCOMPARE(stored(QByteArray("Program Settings/Char ") + unwritten), QString());
    }

    void spellingsThatDifferInCaseAreOneKey()
    {
        store("program settings/new window ON TOP", "True");
        store("Program Settings/Sponsor added", "true");
        Settings settings = loaded();
        QVERIFY(settings.NewWindowOnTop && settings.SponsorAdded);
        settings.NewWindowOnTop = false;
        QVERIFY(save(settings));
        QVERIFY(!loaded().NewWindowOnTop);
    }

    // A pipe would keep whoever opens it waiting for ever.
    void whatIsNoFileIsLeftAlone_data()
    {
        columns<QString>("kind");
        for (const char* kind : {"pipe", "folder", "device"})
            row(kind, kind);
    }
    void whatIsNoFileIsLeftAlone()
    {
        const auto [kind] = fetched<QString>();
        const QByteArray file = QFile::encodeName(paths::settingsFile());
        QVERIFY(paths::makePrivateFolder(QFileInfo(paths::settingsFile()).path()));
        QCOMPARE(kind == "pipe"     ? ::mkfifo(file.constData(), 0600)
                 : kind == "folder" ? ::mkdir(file.constData(), 0700)
                                    : ::symlink("/dev/zero", file.constData()),
                 0);
        Settings settings;
        SettingsStore store(paths::settingsFile());
        QCOMPARE(store.loadSite().DefaultServer, SiteData().DefaultServer);
        QVERIFY(store.LoadSettings(settings).contains("is no file"));
        QCOMPARE(settings.Server, SiteData().DefaultServer);
        QVERIFY(!store.SaveSettings(settings) && !store.saveWindowPosition({}, 0));
        QVERIFY(!QFileInfo(paths::settingsFile()).isFile() && !QFile::exists(file + ".damaged"));
    }

    void textsAreTakenAndTheKeySessionCounts()
    {
        store("Program Settings/Priority", "high"); // a text, which is never unreadable
        QCOMPARE(loaded().Priority, "high");
        store("Program Settings/Resource", "first");
        QCOMPARE(loaded().Resource, "BreloIM");
        store("Program Settings/Session", "second");
        QCOMPARE(loaded().Resource, "second");
    }

    void handwrittenLinesAreRead()
    {
        files::write(paths::settingsFile(),
                     "# mine\n[Program Settings]\nCheck Yahoo! Mail=1\nUserName = romeo\n\n"
                     "[Status Messages]\nAway=Back soon, love\nAv=");
        const Settings settings = loaded();
        QVERIFY(settings.CheckYahooMail);
        QCOMPARE(settings.UserName, "romeo");
        QCOMPARE(settings.StatusAway, "Back soon, love");
        QCOMPARE(settings.Priority, "1");
        QVERIFY(!settings.CheckError);
    }

    void anUnreadableValueResets_data()
    {
        columns<QString, QString>("key", "text");
        row("word for a Boolean", "Check Hotmail", "perhaps");
        row("cut Boolean", "Current Window on Top", "Tr");
        row("empty Boolean", "Auto Logon", "");
        row("word for a number", "Balloon Time", "long");
        row("number too big", "Auto Away Timer Mins", "99999999999");
        row("fraction", "Auto xAway Timer Mins", "1.5");
        row("no number", "Char OnLine Size", "nan");
        row("endless", "Char OffLine Size", "inf");
    }
    void anUnreadableValueResets()
    {
        const auto [key, text] = fetched<QString, QString>();
        store("Program Settings/User Mode", "True");
        store("Program Settings/Add Sponsors", "False");
        store("Program Settings/UserName", "romeo");
        store("Program Settings/Server", "montague.example");
        store("Status Messages/DND", "dreaming");
        store(("Program Settings/" + key).toUtf8(), text);
        const QByteArray before = files::read(paths::settingsFile());
        const Settings settings = loaded();
        QCOMPARE(settings.UserName + settings.Server + settings.StatusDND, "romeomontague.exampledreaming");
        QVERIFY(save(settings));
        QCOMPARE(files::read(paths::settingsFile() + ".damaged"), before);
        QVERIFY(settings.CheckError && !settings.AutoReconnect);
        QVERIFY(!settings.UserMode);
        QVERIFY2(settings.AddSponsors, "the reading went on");
        QCOMPARE(settings.Priority, "0");
        QCOMPARE(settings.CharOnLineSize, 8.0);
    }

    void aResetLeavesSomeMembersAlone()
    {
        Settings settings;
        settings.UserName = settings.Password = "kept";
        settings.SavePassword = settings.OnTop = true;
        settings.NoBanList = settings.SoundOnOnLine = false;
        settings.Resource = settings.AutoXAwayTimerMsg = "lost";
        SiteData site;
        site.DefaultServer = "im.example";
        SettingsStore::LoadDefaults(settings, site);
        QCOMPARE(settings.UserName + settings.Password, "keptkept");
        QVERIFY(settings.SavePassword && settings.OnTop && !settings.NoBanList && settings.SoundOnOnLine);
        QCOMPARE(settings.SoundOnOnLineFile, paths::applicationFolder() + "/Sounds/online.wav");
        QCOMPARE(settings.Server + u' ' + settings.Resource, "im.example BreloIM");
        QCOMPARE(settings.AutoXAwayTimerMsg, "Al momento non al computer per un po'");
    }

    void aCutFileNeverHarms()
    {
        Settings whole;
        whole.UserName = "romeo";
        whole.Resource = "garden";
        QVERIFY(save(whole));
        const QByteArray bytes = files::read(paths::settingsFile());
        const QString aside = paths::settingsFile() + ".damaged";
        int damaged = 0;
        for (qsizetype size = 0; size < bytes.size(); size += 13) {
            const QByteArray cut = bytes.left(size);
            QFile::remove(aside);
            files::write(paths::settingsFile(), cut);
            const Settings settings = loaded();
            QVERIFY(save(settings));
            if (QFile::exists(aside)) {
                ++damaged;
                QVERIFY2(settings.CheckError, "a damaged file is a failure");
                QCOMPARE(files::read(aside), cut);
            }
            QCOMPARE(texts(loaded()), texts(asStored(settings)));
        }
        QVERIFY(damaged > 0);
    }

    void aFileOfOtherBytesIsKeptAside()
    {
        QVERIFY(save(Settings()));
        files::write(paths::settingsFile(), QByteArray(5000, '\0'));
        QVERIFY(loaded().CheckError);
        QVERIFY(SettingsStore(paths::settingsFile()).allowPlainPassword("a.example"));
        QCOMPARE(files::read(paths::settingsFile() + ".damaged"), QByteArray(5000, '\0'));
        QVERIFY(SettingsStore(paths::settingsFile()).plainPasswordAllowed("a.example"));
    }

    void onlyTheOwnerCanReadTheFile()
    {
        const QString file = paths::settingsFile();
        const QString folder = QFileInfo(file).path();
        const auto open = [](const QString& name) { return int(QFile::permissions(name)) & 0x66; };
        QVERIFY(save(Settings()));
        QCOMPARE(open(file) | open(folder), 0);
        QVERIFY(QFile::setPermissions(file, QFile::Permissions(0x6644)));
        QVERIFY(QFile::setPermissions(folder, QFile::Permissions(0x7755)));
        QVERIFY(save(Settings()));
        QCOMPARE(open(file) | open(folder), 0);
        QVERIFY(QFile::setPermissions(file, QFile::Permissions(0x6644)));
        (void)loaded();
        QCOMPARE(open(file), 0);
    }

    void whatMayNotBeWrittenIsTold()
    {
        QVERIFY(save(Settings()));
        const QByteArray before = files::read(paths::settingsFile());
        QVERIFY(QFile::setPermissions(paths::settingsFile(), QFile::ReadOwner | QFile::ReadOther));
        Settings changed = loaded();
        QCOMPARE(int(QFile::permissions(paths::settingsFile())) & 0x3077, 0x3000 & int(QFile::ReadOwner));
        changed.UserName = "romeo";
        QVERIFY(!save(changed));
        QCOMPARE(files::read(paths::settingsFile()), before);
    }

    void aFolderThatCantBeMadeIsTold()
    {
        files::write(profile_->path() + "/config", "a file in the way");
        QVERIFY(!save(Settings()));
        SettingsStore store(paths::settingsFile());
        QVERIFY(!store.saveWindowPosition(QRect(1, 2, 3, 4), 0));
        QVERIFY(!store.pinCertificate("a.example", QByteArray(32, 'x')));
    }
};

BRELO_TEST(SettingsStoreTest)
#include "SettingsStoreTest.moc"
