#include "settings/SettingsStore.h"
#include "settings/Paths.h"
#include "settings/SettingKeys.h"
#include "support/Files.h"
#include "support/Table.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"

namespace
{

// Another value than `settings` holds, of the same type.
QString changed(const SettingKey& key, const Settings& settings)
{
    if (std::holds_alternative<bool Settings::*>(key.member))
        return key.text(settings) == QLatin1String("True") ? QStringLiteral("False") : QStringLiteral("True");
    if (std::holds_alternative<QString Settings::*>(key.member))
        return QStringLiteral(" @a \"b\", c;d=%41 \\ \n[é] ") + QLatin1String(key.key);
    return QString::number(key.text(settings).toDouble() + 7, 'f', 2).remove(".00");
}

// The three keys that are never written read as their defaults.
Settings asStored(Settings settings)
{
    settings.CharOnffLineBold = Settings().CharOnffLineBold;
    settings.CharOffLineSize = Settings().CharOffLineSize;
    settings.CharOffLineName = Settings().CharOffLineName;
    return settings;
}

QStringList texts(const Settings& settings)
{
    QStringList all;
    for (const SettingKey& key : settingKeys())
        all += QLatin1String(key.key) + u'=' + key.text(settings);
    return all;
}

QString stored(const char* path)
{
    return QSettings(paths::settingsFile(), QSettings::IniFormat).value(QLatin1String(path)).toString();
}

void store(const char* path, const QString& text)
{
    QSettings(paths::settingsFile(), QSettings::IniFormat).setValue(QLatin1String(path), text);
}

Settings loaded()
{
    Settings settings;
    SettingsStore(paths::settingsFile()).LoadSettings(settings);
    return settings;
}

bool save(const Settings& settings)
{
    return SettingsStore(paths::settingsFile()).SaveSettings(settings);
}

} // namespace

class SettingsStoreTest : public QObject
{
    Q_OBJECT

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

    void valuesStandAsTextUnderTheirKeys_data()
    {
        columns<QString>("text");
        row("Program Settings/Check Yahoo! Mail", "False");
        row("Program Settings/New Window on Top", "True");
        row("Program Settings/Color Online", "12222037");
        row("Program Settings/Char OnLine Size", "8.25");
        row("Program Settings/Sponsor added", "False");
        row("Program Settings/Version", BRELO_VERSION);
        row("Program Settings/Session", "home");
        row("Status Messages/DND", "I'm busy, go away.");
        row("Program Settings/Char OnffLine Bold", QString());
        row("Program Settings/Char OffLine Size", QString());
        row("Program Settings/Char OffLine Name", QString());
    }
    void valuesStandAsTextUnderTheirKeys()
    {
        QFETCH(QString, text);
        Settings settings;
        settings.NewWindowOnTop = true;
        settings.Resource = QStringLiteral("home");
        QVERIFY(save(settings));
        QCOMPARE(stored(QTest::currentDataTag()), text);
    }

    void spellingsThatDifferInCaseAreOneKey()
    {
        store("program settings/new window ON TOP", "True");
        store("Program Settings/Sponsor added", "true");
        Settings settings = loaded();
        QVERIFY(settings.NewWindowOnTop);
        QVERIFY(settings.SponsorAdded);
        settings.NewWindowOnTop = false;
        QVERIFY(save(settings));
        QVERIFY(!loaded().NewWindowOnTop);
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
        store(("Program Settings/" + key).toUtf8(), text);
        const Settings settings = loaded();
        QVERIFY(settings.CheckError);
        QVERIFY(!settings.AutoReconnect);
        QVERIFY(!settings.UserMode);
        QVERIFY2(settings.AddSponsors, "the reading went on");
        QCOMPARE(settings.Priority, "0");
        QCOMPARE(settings.CharOnLineSize, 8.0);
    }

    void aResetLeavesSomeMembersAlone()
    {
        Settings settings;
        settings.UserName = settings.Password = QStringLiteral("kept");
        settings.SavePassword = settings.OnTop = true;
        settings.NoBanList = settings.SoundOnOnLine = false;
        settings.Resource = settings.AutoXAwayTimerMsg = QStringLiteral("lost");
        SiteData site;
        site.DefaultServer = QStringLiteral("im.example");
        SettingsStore::LoadDefaults(settings, site);
        QCOMPARE(settings.UserName + settings.Password, "keptkept");
        QVERIFY(settings.SavePassword && settings.OnTop && !settings.NoBanList);
        QVERIFY(settings.SoundOnOnLine);
        QCOMPARE(settings.SoundOnOnLineFile,
                 paths::applicationFolder() + QStringLiteral("/Sounds/online.wav"));
        QCOMPARE(settings.Server, "im.example");
        QCOMPARE(settings.Resource, "BreloIM");
        QCOMPARE(settings.AutoXAwayTimerMsg, "Al momento non al computer per un po'");
    }

    void aCutFileNeverHarms()
    {
        Settings whole;
        whole.UserName = QStringLiteral("romeo");
        whole.Resource = QStringLiteral("garden");
        QVERIFY(save(whole));
        const QByteArray bytes = files::read(paths::settingsFile());
        const QString aside = paths::settingsFile() + QStringLiteral(".damaged");
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
        QCOMPARE(files::read(paths::settingsFile() + QStringLiteral(".damaged")), QByteArray(5000, '\0'));
        QVERIFY(SettingsStore(paths::settingsFile()).plainPasswordAllowed("a.example"));
    }

    void onlyTheOwnerCanReadTheFile()
    {
        constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        for (const bool exists : {false, true}) {
            const QString folder = QFileInfo(paths::settingsFile()).path();
            if (exists) {
                QVERIFY(QFile::setPermissions(paths::settingsFile(), QFile::Permissions(0x6644)));
                QVERIFY(QFile::setPermissions(folder, QFile::Permissions(0x7755)));
            }
            QVERIFY(save(Settings()));
            QVERIFY(!(QFile::permissions(paths::settingsFile()) & others));
            QVERIFY(!(QFile::permissions(folder) & others));
        }
        QVERIFY(QFile::setPermissions(paths::settingsFile(), QFile::Permissions(0x6644)));
        Settings settings;
        SettingsStore(paths::settingsFile()).LoadSettings(settings);
        QVERIFY(!(QFile::permissions(paths::settingsFile()) & others));
    }

    void aFolderThatCantBeMadeIsTold()
    {
        files::write(profile_->path() + QStringLiteral("/config"), "a file in the way");
        QVERIFY(!save(Settings()));
        SettingsStore store(paths::settingsFile());
        QVERIFY(!store.saveWindowPosition(QRect(1, 2, 3, 4), 0));
        QVERIFY(!store.pinCertificate("a.example", QByteArray(32, 'x')));
    }

private:
    std::optional<TempProfile> profile_;
};

BRELO_TEST(SettingsStoreTest)
#include "SettingsStoreTest.moc"
