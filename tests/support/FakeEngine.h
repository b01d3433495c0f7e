#pragma once

#include "contacts/Client.h"
#include "engine/ApplicationPlugIn.h"
#include "engine/StanzaQueue.h"

#include <QStringList>

#include <memory>

// The test's own stanza, parsed; one that is not well-formed fails the test.
std::shared_ptr<Stanza> wellFormed(const QString& xml);

// A gateway without a socket: what the client asks of it is written down.
class FakeGateway : public Gateway
{
public:
    void DoConnect(const QString& userName, const QString& password, const QString& server,
                   QString& resource) override;
    void DoDisconnect() override;
    bool isconnected() const override { return connected; }
    QString UserName() const override { return userName; }
    QString Password() const override { return password; }
    QString Server() const override { return server; }
    bool isEncrypted() const override { return encrypted; }
    bool Secure() const override { return secure; }
    void setSecure(bool on) override { secure = on; }
    void setProxy(const ProxyServer& value) override { proxy = value; }
    void setQueue(std::shared_ptr<StanzaQueue> queue) override { queue_ = std::move(queue); }
    void Trigger() override {}

    bool connected = false;
    bool secure = false;
    bool encrypted = false;
    ProxyServer proxy;
    QString userName;
    QString password;
    QString server;
    QString resource;
    int connects = 0;
    int disconnects = 0;

private:
    std::shared_ptr<StanzaQueue> queue_;
};

// The real plug-in manager over a fake gateway: stanzas are injected as text, what the client sends is
// recorded as the exact text of the wire.
class FakeEngine
{
public:
    // Installs itself as `client.Core`, signed in as user@server.
    explicit FakeEngine(Client& client, const QString& user = QStringLiteral("romeo"),
                        const QString& server = QStringLiteral("montague.example"));

    FakeGateway& gateway() { return *gateway_; }
    // The plug-in that receives events. Not owned.
    void plugIn(ApplicationPlugIn* plugIn, ITriggerReceiver* receiver = nullptr);

    // Delivers one stanza to the plug-in, at once.
    void inject(const QString& xml);
    // Delivers the engine's own presences.
    void connectStream();
    void closeStream();
    // One tick of the pump; loop-back messages arrive here.
    void trigger();

    // A context as an event of this stanza would bring it.
    PlugInContext contextFor(const QString& xml);

    // What was sent since the last call, one text a stanza.
    QStringList takeSent();

private:
    Client& client_;
    FakeGateway* gateway_;
    std::shared_ptr<StanzaQueue> queue_;
};
