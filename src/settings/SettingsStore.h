#pragma once

#include "engine/Safety.h"
#include "settings/MailLogin.h"
#include "settings/SecretStore.h"
#include "settings/Settings.h"
#include "settings/SiteData.h"

#include <QByteArray>
#include <QRect>
#include <QString>

#include <optional>

class IniFile;

// The window position as stored; sizes in logical pixels.
struct WindowPosition {
    std::optional<QRect> geometry; // null when none was ever stored
    int state = 0;                 // 0 normal, 1 minimised, 2 maximised
};

// The settings file: sections, keys and values as text. Each operation that writes brings its change to the
// file at once and is false when that failed.
class SettingsStore
{
public:
    // `secrets` is not owned and outlives the store.
    explicit SettingsStore(QString file, SecretStore* secrets = nullptr);

    // Reads all keys in order. A value that can't be read sets the defaults of a reset and stops the reading;
    // so does a damaged file, once what it still holds was read. What the file has of texts, which can always
    // be read, is taken all the same, and a copy of the file is kept. A sentence for the person then, else an
    // empty text.
    QString LoadSettings(Settings& settings);
    // Writes all keys but the three that are never written. The password only with AutoLogon or SavePassword.
    bool SaveSettings(const Settings& settings);
    // The values after a reset; members that a reset leaves alone keep theirs.
    static void LoadDefaults(Settings& settings, const SiteData& site);

    SiteData loadSite();

    // What isn't stored or can't be read of the geometry is taken from `current`.
    WindowPosition loadWindowPosition(const QRect& current);
    // A minimised window is stored as four zeros.
    bool saveWindowPosition(const QRect& geometry, int state);

    // SHA-256 of the certificate that the person accepted for good; empty when there is none.
    QByteArray pinnedCertificate(const QString& server);
    bool pinCertificate(const QString& server, const QByteArray& sha256);
    // Whether the server may get a password in clear.
    bool plainPasswordAllowed(const QString& server);
    bool allowPlainPassword(const QString& server);
    // How an account, a bare JID, signed in the last time, so that nothing it had goes unnoticed.
    std::optional<Safety> lastSafety(const QString& account);
    bool keepSafety(const QString& account, const Safety& reached);
    // The servers that may, and the end of one's being so.
    QStringList plainPasswordServers();
    bool forbidPlainPassword(const QString& server);

    // What the mail watcher's window is filled with; null when nothing is kept, and to keep nothing.
    std::optional<MailLogin> mailLogin();
    bool keepMailLogin(const std::optional<MailLogin>& login);

private:
    static void readTexts(const IniFile& file, Settings& settings);
    bool readAll(const IniFile& file, Settings& settings, const SiteData& site);
    QString readPassword(const IniFile& file, const Settings& settings);
    void writePassword(IniFile& file, const Settings& settings);

    QString file_;
    SecretStore* secrets_;
    QString secret_; // what the keyring holds, as far as this run has seen
};
