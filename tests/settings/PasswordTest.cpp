#include "settings/Module.h"
#include "settings/Paths.h"
#include "settings/SecretStore.h"
#include "settings/SettingsStore.h"
#include "support/RecordingSecrets.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"

class PasswordTest : public QObject
{
    Q_OBJECT

    std::optional<TempProfile> profile_;
    RecordingSecrets secrets_;
    static QVariant inFile()
    {
        return QSettings(paths::settingsFile(), QSettings::IniFormat).value("Program Settings/Password");
    }
    static Settings account(const QString& password, bool save = true)
    {
        Settings settings;
        settings.UserName = "romeo";
        settings.Server = "montague.example";
        settings.Password = password;
        settings.SavePassword = save;
        return settings;
    }
    QString loaded()
    {
        Settings settings;
        SettingsStore(paths::settingsFile(), &secrets_).LoadSettings(settings);
        return settings.Password;
    }
    bool save(const Settings& settings)
    {
        return SettingsStore(paths::settingsFile(), &secrets_).SaveSettings(settings);
    }

private slots:
    void init()
    {
        profile_.emplace();
        secrets_ = {};
    }

    void isKeptOnlyWhenWanted()
    {
        for (const bool autoLogon : {false, true}) {
            for (const bool savePassword : {false, true}) {
                SettingsStore store(paths::settingsFile());
                QVERIFY(store.SaveSettings(account("old")));
                Settings settings = account("new", savePassword);
                settings.AutoLogon = autoLogon;
                QVERIFY(store.SaveSettings(settings));
                const bool wanted = autoLogon || savePassword;
                QCOMPARE(inFile().toString(), wanted ? "new" : "old");
                Settings read;
                store.LoadSettings(read);
                QCOMPARE(read.Password, wanted ? "new" : "");
            }
        }
    }

    void liesInTheKeyringAndNotInTheFile()
    {
        SettingsStore(paths::settingsFile()).SaveSettings(account("in clear"));
        QCOMPARE(loaded(), "in clear");
        QVERIFY(save(account("s3cret")));
        QCOMPARE(secrets_.passwords.value("romeo@montague.example"), "s3cret");
        QVERIFY(!inFile().isValid());
        QCOMPARE(loaded(), "s3cret");
        QVERIFY(save(account(QString())));
        QCOMPARE(loaded(), QString());
    }

    void outlivesAKeyringThatIsLocked()
    {
        QVERIFY(save(account("first")));
        secrets_.locked = true;
        QCOMPARE(loaded(), QString());
        QVERIFY(save(account(QString())));
        secrets_.locked = false;
        QCOMPARE(loaded(), "first");
        secrets_.locked = true;
        QVERIFY(save(account("second")));
        secrets_.locked = false;
        QCOMPARE(loaded(), "second");
    }

    void withoutASessionBusNoKeyringIsAsked()
    {
        const QByteArray bus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("XDG_RUNTIME_DIR", profile_->path().toUtf8());
        KeychainSecretStore keyring;
        QVERIFY(!keyring.read("romeo@montague.example"));
        QVERIFY(!keyring.write("romeo@montague.example", "x"));
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus);
        qputenv("XDG_RUNTIME_DIR", runtime);
    }

    void theModulesAreFound()
    {
        QVERIFY(module::factory("breloim_keychain") && module::factory("breloim_sound"));
        QVERIFY(module::factory("breloim_notifications"));
        QVERIFY(!module::factory("breloim_missing"));
    }
};

BRELO_TEST(PasswordTest)
#include "PasswordTest.moc"
