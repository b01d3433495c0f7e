#pragma once

#include "contacts/Client.h"
#include "desktop/forms/Form.h"
#include "session/forms/SessionUi.h"
#include "session/forms/TrayControl.h"
#include "session/forms/TrayMenus.h"
#include "settings/SettingsStore.h"
#include "support/FakeEngine.h"
#include "support/RecordingDesktop.h"
#include "support/TempProfile.h"

#include <memory>

class RosterForm;
class SignInForm;

// The client's real windows over a gateway without a socket, in a home of its own.
class FakeClient
{
public:
    // `stored` stands in the settings file before the client reads it.
    explicit FakeClient(const Settings& stored = {});
    // With a gateway of the test's own; `make` is called once.
    FakeClient(const Settings& stored, const std::function<std::unique_ptr<FakeGateway>()>& make);
    ~FakeClient();

    SignInForm& signInForm() const { return ui->windows.session.signIn(); }
    RosterForm* rosterForm() const { return ui->windows.contacts.rosterForm(); }
    Form* form(const char* name) const { return registry.find(QLatin1String(name)); }

    // Types the account and clicks Connect.
    void connectToServer();
    // The same, and answers with both lists; the contact list then holds juliet@montague.example.
    void signIn();
    void inject(const QString& xml);
    // The engine's own presences, as the gateway would deliver them.
    void streamUp();
    void streamLost();
    QStringList takeSent();
    // Whether the tray's menu shows the entry, and its caption.
    QString trayEntry(const char* name) const;
    // What the settings file holds now.
    Settings storedSettings();

    TempProfile profile;
    RecordingDesktop world;
    FormRegistry registry;
    SettingsStore store;
    Client client;
    FakeGateway* gateway = nullptr;
    ConnectionHost* host = nullptr; // what the gateway asks
    std::unique_ptr<SessionUi> ui;
    TrayMenus menus;
    std::unique_ptr<TrayControl> trayControl;

private:
    void deliver(std::shared_ptr<Stanza> stanza);
};
