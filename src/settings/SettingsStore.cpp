#include "settings/SettingsStore.h"

#include "settings/IniFile.h"
#include "settings/LastSafety.h"
#include "settings/SettingKeys.h"

#include "settings/Paths.h"

#include <QCoreApplication>
#include <QUrl>

#include <algorithm>

namespace
{

const QString programSection = QStringLiteral("Program Settings");
const QString passwordKey = QStringLiteral("Password");
const QString windowSection = QStringLiteral("Window Position");
const QString topKey = QStringLiteral("Top");
const QString leftKey = QStringLiteral("Left");
const QString widthKey = QStringLiteral("Width");
const QString heightKey = QStringLiteral("Height");
const QString geometryKeys[] = {topKey, leftKey, widthKey, heightKey};
const QString stateKey = QStringLiteral("Window State");
const QString pinSection = QStringLiteral("Certificates");
const QString plainSection = QStringLiteral("Plain Passwords");
const QString mailSection = QStringLiteral("Login");
const QString mailUserKey = QStringLiteral("Username");
const QString mailUrlKey = QStringLiteral("Url");
const QString mailSaveKey = QStringLiteral("CheckSave"); // 1 where the others stand

bool wantsPassword(const Settings& settings)
{
    return settings.AutoLogon || settings.SavePassword;
}

QString account(const Settings& settings)
{
    return settings.UserName + u'@' + settings.Server;
}

// A stored number of the window position. The bound keeps sums of two within an int.
int number(const IniFile& file, const QString& key, int fallback)
{
    bool readable = false;
    const int value = file.read(windowSection, key).value_or(QString()).trimmed().toInt(&readable);
    return readable ? std::clamp(value, -1'000'000, 1'000'000) : fallback;
}

SiteData siteOf(const IniFile& file)
{
    SiteData site;
    const auto take = [&file](const char* key, QString& value) {
        value = file.read(QStringLiteral("Site"), QLatin1String(key)).value_or(value);
    };
    take("DefaultServer", site.DefaultServer);
    take("SisterServer", site.SisterServer);
    take("ThirdServer", site.ThirdServer);
    take("WebSite", site.WebSite);
    take("UpdateHost", site.UpdateHost);
    return site;
}

} // namespace

SettingsStore::SettingsStore(QString file, SecretStore* secrets) : file_(std::move(file)), secrets_(secrets)
{
}

QString SettingsStore::LoadSettings(Settings& settings)
{
    // A file that came from elsewhere may hold a password that others can read.
    paths::makePrivateFile(file_);
    const IniFile file(file_);
    const SiteData site = siteOf(file);
    if (readAll(file, settings, site) && !file.isDamaged())
        return {};
    LoadDefaults(settings, site);
    if (file.isNoFile())
        return QCoreApplication::translate("SettingsStore",
                                           "The settings can be neither read nor saved: %1 is no file.")
            .arg(file_);
    readTexts(file, settings);
    return file.keepCopy() ? QCoreApplication::translate("SettingsStore",
                                                         "The settings could not be read and were set anew. "
                                                         "The file is kept as %1.damaged.")
                                 .arg(file_)
                           : QCoreApplication::translate("SettingsStore",
                                                         "The settings could not be read and were set anew.");
}

void SettingsStore::readTexts(const IniFile& file, Settings& settings)
{
    for (const SettingKey& key : settingKeys()) {
        const auto stored = file.read(QLatin1String(key.section), QLatin1String(key.key));
        if (stored && key.use == SettingKey::Both && std::holds_alternative<QString Settings::*>(key.member))
            key.put(settings, *stored);
    }
}

bool SettingsStore::readAll(const IniFile& file, Settings& settings, const SiteData& site)
{
    for (const SettingKey& key : settingKeys()) {
        if (key.use == SettingKey::Secret && wantsPassword(settings))
            settings.Password = readPassword(file, settings);
        if (key.use == SettingKey::Secret || key.use == SettingKey::WriteOnly)
            continue;
        const auto stored = file.read(QLatin1String(key.section), QLatin1String(key.key));
        if (!key.put(settings, stored ? *stored : SettingKey::filled(key.missing, site)))
            return false;
    }
    return true;
}

bool SettingsStore::SaveSettings(const Settings& settings)
{
    IniFile file(file_);
    for (const SettingKey& key : settingKeys()) {
        if (key.use == SettingKey::Secret && wantsPassword(settings))
            writePassword(file, settings);
        if (key.use == SettingKey::Secret || key.use == SettingKey::ReadOnly)
            continue;
        file.write(QLatin1String(key.writtenSection ? key.writtenSection : key.section),
                   QLatin1String(key.writtenKey ? key.writtenKey : key.key), key.text(settings));
    }
    return file.save();
}

void SettingsStore::LoadDefaults(Settings& settings, const SiteData& site)
{
    for (const SettingKey& key : settingKeys()) {
        if (key.reset)
            key.put(settings, SettingKey::filled(key.reset, site));
    }
}

// The file holds a password only where no secret store took it, so a password in the file is the newer one.
QString SettingsStore::readPassword(const IniFile& file, const Settings& settings)
{
    const QString stored = file.read(programSection, passwordKey).value_or(QString());
    if (!stored.isEmpty() || !secrets_)
        return stored;
    const QString kept = secrets_->read(account(settings)).value_or(QString());
    secret_ = account(settings) + u'\n' + kept;
    return kept;
}

void SettingsStore::writePassword(IniFile& file, const Settings& settings)
{
    const QString secret = account(settings) + u'\n' + settings.Password;
    if (secrets_ && (secret == secret_ || secrets_->write(account(settings), settings.Password))) {
        secret_ = secret;
        file.remove(programSection, passwordKey);
    } else {
        file.write(programSection, passwordKey, settings.Password);
    }
}

SiteData SettingsStore::loadSite()
{
    return siteOf(IniFile(file_));
}

WindowPosition SettingsStore::loadWindowPosition(const QRect& current)
{
    const IniFile file(file_);
    WindowPosition position;
    const bool isStored =
        std::any_of(std::begin(geometryKeys), std::end(geometryKeys),
                    [&file](const QString& key) { return file.read(windowSection, key).has_value(); });
    if (isStored)
        position.geometry =
            QRect(number(file, leftKey, current.x()), number(file, topKey, current.y()),
                  number(file, widthKey, current.width()), number(file, heightKey, current.height()));
    const int state = number(file, stateKey, 0);
    position.state = state == 1 || state == 2 ? state : 0;
    return position;
}

bool SettingsStore::saveWindowPosition(const QRect& geometry, int state)
{
    // Kept: a minimised window is stored as zeros, and the next run takes them.
    const QRect stored = state == 1 ? QRect(0, 0, 0, 0) : geometry;
    const int values[] = {stored.y(), stored.x(), stored.width(), stored.height()};
    IniFile file(file_);
    for (std::size_t i = 0; i < std::size(values); ++i)
        file.write(windowSection, geometryKeys[i], QString::number(values[i]));
    file.write(windowSection, stateKey, QString::number(state));
    return file.save();
}

QByteArray SettingsStore::pinnedCertificate(const QString& server)
{
    const auto stored = IniFile(file_).read(pinSection, IniFile::keyOf(server));
    const QByteArray sha256 = QByteArray::fromHex(stored.value_or(QString()).toLatin1());
    return sha256.size() == 32 ? sha256 : QByteArray();
}

bool SettingsStore::pinCertificate(const QString& server, const QByteArray& sha256)
{
    IniFile file(file_);
    file.write(pinSection, IniFile::keyOf(server), QString::fromLatin1(sha256.toHex()));
    return file.save();
}

bool SettingsStore::plainPasswordAllowed(const QString& server)
{
    const auto stored = IniFile(file_).read(plainSection, IniFile::keyOf(server));
    return stored && stored->compare(QLatin1String("True"), Qt::CaseInsensitive) == 0;
}

bool SettingsStore::allowPlainPassword(const QString& server)
{
    IniFile file(file_);
    file.write(plainSection, IniFile::keyOf(server), QStringLiteral("True"));
    return file.save();
}

QStringList SettingsStore::plainPasswordServers()
{
    QStringList servers;
    for (const QString& key : IniFile(file_).keys(plainSection)) {
        const QString server = QUrl::fromPercentEncoding(key.toLatin1());
        if (plainPasswordAllowed(server))
            servers += server;
    }
    return servers;
}

bool SettingsStore::forbidPlainPassword(const QString& server)
{
    IniFile file(file_);
    file.remove(plainSection, IniFile::keyOf(server));
    return file.save();
}

std::optional<Safety> SettingsStore::lastSafety(const QString& account)
{
    return lastSafety::read(IniFile(file_), account);
}

bool SettingsStore::keepSafety(const QString& account, const Safety& reached)
{
    IniFile file(file_);
    return !lastSafety::write(file, account, reached) || file.save();
}

std::optional<MailLogin> SettingsStore::mailLogin()
{
    const IniFile file(file_);
    if (file.read(mailSection, mailSaveKey).value_or(QString()).toInt() == 0)
        return std::nullopt;
    const auto text = [&file](const QString& key) { return file.read(mailSection, key).value_or(QString()); };
    return MailLogin{text(mailUserKey), text(mailUrlKey)};
}

bool SettingsStore::keepMailLogin(const std::optional<MailLogin>& login)
{
    IniFile file(file_);
    if (!login && file.keys(mailSection).isEmpty())
        return true;
    const std::pair<QString, QString> entries[] = {{mailUserKey, login ? login->Username : QString()},
                                                   {mailUrlKey, login ? login->Url : QString()},
                                                   {mailSaveKey, QStringLiteral("1")}};
    for (const auto& [key, text] : entries)
        login ? file.write(mailSection, key, text) : file.remove(mailSection, key);
    return file.save();
}
