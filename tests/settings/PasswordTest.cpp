#include "settings/Module.h"
#include "settings/Paths.h"
#include "settings/SecretStore.h"
#include "settings/SettingsStore.h"
#include "support/RecordingSecrets.h"
#include "support/Table.h"
#include "support/TempProfile.h"
#include "support/TestRunner.h"

namespace
{

const QString passwordPath = QStringLiteral("Program Settings/Password");

QVariant inFile()
{
    return QSettings(paths::settingsFile(), QSettings::IniFormat).value(passwordPath);
}

Settings account(const QString& password, bool save = true)
{
    Settings settings;
    settings.UserName = QStringLiteral("romeo");
    settings.Server = QStringLiteral("montague.example");
    settings.Password = password;
    settings.SavePassword = save;
    return settings;
}

} // namespace

class PasswordTest : public QObject
{
    Q_OBJECT

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

    void isKeptOnlyWhenWanted_data()
    {
        columns<bool, bool>("autoLogon", "savePassword");
        row("neither", false, false);
        row("auto logon", true, false);
        row("save password", false, true);
        row("both", true, true);
    }
    void isKeptOnlyWhenWanted()
    {
        const auto [autoLogon, savePassword] = fetched<bool, bool>();
        const bool wanted = autoLogon || savePassword;
        SettingsStore store(paths::settingsFile());
        QVERIFY(store.SaveSettings(account("old")));
        Settings settings = account("new", savePassword);
        settings.AutoLogon = autoLogon;
        QVERIFY(store.SaveSettings(settings));
        QCOMPARE(inFile().toString(), wanted ? QStringLiteral("new") : QStringLiteral("old"));
        Settings read;
        store.LoadSettings(read);
        QCOMPARE(read.Password, wanted ? QStringLiteral("new") : QString());
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
        QVERIFY(module::factory("breloim_keychain"));
        QVERIFY(module::factory("breloim_sound"));
        QVERIFY(!module::factory("breloim_missing"));
    }

private:
    std::optional<TempProfile> profile_;
    RecordingSecrets secrets_;
};

BRELO_TEST(PasswordTest)
#include "PasswordTest.moc"
