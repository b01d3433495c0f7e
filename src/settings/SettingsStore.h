#pragma once

#include "settings/Settings.h"
#include "settings/SiteData.h"

#include <QByteArray>
#include <QRect>
#include <QString>

#include <optional>

// Keeps passwords outside of the settings file. Without one they stand in the file, which only its owner can read.
class SecretStore
{
public:
    virtual ~SecretStore() = default;
    // Null when no store answers; an empty text when it holds no password for the account.
    virtual std::optional<QString> read(const QString& account) = 0;
    // False when the store did not take it.
    virtual bool write(const QString& account, const QString& password) = 0;
};

// The window position as stored; sizes in logical pixels.
struct WindowPosition {
    std::optional<QRect> geometry;
    int state = 0; // 0 normal, 1 minimised, 2 maximised
};

// The settings file: sections, keys and values as text.
class SettingsStore
{
public:
    explicit SettingsStore(QString file, SecretStore* secrets = nullptr);

    // Reads all keys in order. A value that can't be read sets the defaults of a reset and stops the reading.
    void LoadSettings(Settings& settings);
    // Writes all keys but the three that are never written. The password only with AutoLogon or SavePassword.
    // False when the file could not be written.
    bool SaveSettings(const Settings& settings);
    // The values after a reset; members that a reset leaves alone keep theirs.
    static void LoadDefaults(Settings& settings, const SiteData& site);

    SiteData loadSite();

    WindowPosition loadWindowPosition(const QRect& current);
    // A minimised window is stored as four zeros.
    void saveWindowPosition(const QRect& geometry, int state);

    // Certificates that the person accepted for good, and servers that may get a password in clear.
    QByteArray pinnedCertificate(const QString& server);
    void pinCertificate(const QString& server, const QByteArray& sha256);
    bool plainPasswordAllowed(const QString& server);
    void allowPlainPassword(const QString& server);

private:
    QString file_;
    SecretStore* secrets_;
};
