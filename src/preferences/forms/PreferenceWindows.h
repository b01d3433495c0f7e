#pragma once

#include <QObject>
#include <QString>

class FormRegistry;
class PreferencesForm;
class SettingsStore;
struct Client;

// The room's face: the preferences, made at first use, and the reset of the settings.
class PreferenceWindows : public QObject
{
    Q_OBJECT

public:
    // All must outlive the object.
    PreferenceWindows(FormRegistry& registry, Client& client, SettingsStore& store);

    // The preferences on this page, before all other windows.
    void show(const QString& page);

signals:
    // Settings were applied, or all reset: whoever shows them draws anew.
    void applied();
    void defaultsRestored();
    void blockedListChanged();
    void onTopChanged();
    // A page was asked for that isn't there.
    void pageMissing(const QString& page);

private:
    PreferencesForm& form();
    void askRestore();
    void restoreDefaults();

    FormRegistry& registry_;
    Client& client_;
    SettingsStore& store_;
};
