#pragma once

#include <QObject>
#include <QString>

class FormRegistry;
class PlugInContext;
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

    // The preferences on this page, before all other windows. A page that isn't there is that of a gateway
    // that went: the page of all gateways stands for it.
    void show(const QString& page);

    // The agents have come, or the account turned out to be an administrator's.
    void reload();
    // The connection is gone.
    void sessionEnded();
    // Answers for the panels (jabber:iq:register, jabber:iq:browse), and a gateway's wish for the presence.
    void OnRegister(PlugInContext& context);
    void OnOnlineUsers(PlugInContext& context);
    void OnGatewaySubscribed(const PlugInContext& context);

signals:
    // Settings were applied, or all reset: whoever shows them draws anew.
    void applied();
    void defaultsRestored();
    void blockedListChanged();
    void onTopChanged();
    void messageRequested(const QString& jid);

private:
    PreferencesForm& form();
    // Null when it isn't loaded.
    PreferencesForm* loaded() const;
    void askRestore();
    void restoreDefaults();

    FormRegistry& registry_;
    Client& client_;
    SettingsStore& store_;
};
