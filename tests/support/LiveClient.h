#pragma once

#include "contacts/Client.h"
#include "desktop/forms/Form.h"
#include "session/forms/SessionUi.h"
#include "settings/SettingsStore.h"
#include "support/RecordingDesktop.h"
#include "support/TempProfile.h"

#include <memory>

class RosterForm;

// The whole client with its real engine, in a home of its own; only the world outside is written down.
class LiveClient
{
public:
    // `prepare` may set up the settings file before the client reads it.
    explicit LiveClient(const std::function<void(SettingsStore&)>& prepare = {});
    ~LiveClient();

    // Types the account into the sign-in window and clicks Connect.
    void signIn(const QString& server, const QString& user = QStringLiteral("romeo"),
                const QString& password = QStringLiteral("secret"));
    bool isOnline() const;
    RosterForm* rosterForm() const { return ui->windows.contacts.rosterForm(); }
    Form* form(const char* name) { return registry.find(QLatin1String(name)); }
    // The progress window's text, line by line; empty when it isn't there.
    QString progressText();

    TempProfile profile;
    RecordingDesktop world;
    FormRegistry registry;
    SettingsStore store;
    Client client;
    std::unique_ptr<SessionUi> ui;
};
