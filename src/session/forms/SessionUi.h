#pragma once

#include "engine/Gateway.h"
#include "engine/ITriggerReceiver.h"
#include "session/IdleTrim.h"
#include "session/Patience.h"
#include "session/SessionDispatch.h"
#include "session/SessionSteps.h"
#include "session/forms/ConnectionUi.h"
#include "session/forms/SessionEnd.h"
#include "session/forms/Windows.h"

#include <QObject>

#include <functional>
#include <memory>

class FormRegistry;
class SettingsStore;
struct Client;

// The session as the engine and the dispatch see it: their wishes are carried out on the windows.
class SessionUi : public QObject, public SessionSteps, public ITriggerReceiver
{
    Q_OBJECT

public:
    using GatewayFactory = std::function<std::unique_ptr<::Gateway>(ConnectionHost&)>;

    // Creates the engine by `makeGateway` unless the client has one. Nothing is owned; all must outlive it.
    SessionUi(FormRegistry& registry, Client& client, SettingsStore& store,
              const GatewayFactory& makeGateway);

    // Reads the settings, fills the sign-in window and starts the pump; with "Auto Logon" on it connects.
    void start();

    Windows windows;
    SessionEnd end;
    SessionDispatch dispatch;

    bool isInitiated() const override { return windows.contacts.isInitiated(); }
    void firstContact(const QString& progressLine) override;
    void listRefused(const QString& reason) override;
    void finishSignIn() override;
    void backToSignIn() override { end.backToSignIn(); }
    void connectAgain() override;
    QString userName() const override;
    QString password() const override;
    void removeContact(const QString& bareJid) override;
    void showAdminMenu(const QString& server) override;
    void writeNotice(const QString& from, const QString& body, const QString& subject) override
    {
        windows.messages.writeNotice(from, body, subject);
    }

    // The engine's periodic call; reaches the main window while connected.
    void Trigger() override;

signals:
    // The stream stands.
    void connected();

private:
    void followSignIn();
    void takeStanzas();
    void streamConnected();
    void streamEnded();
    void connectionLost();
    void loadBannedList();
    void loadWindowPosition();
    void tellWhereTheListIs();

    Client& client_;
    SettingsStore& store_;
    ConnectionUi connection_;
    IdleTrim trim_;
    bool started_ = false;
    bool byHand_ = false; // the person asked for the sign-in under way
    int saved_ = 0;       // the session whose settings were saved
    Patience lists_;      // with the server, until both have come
};
