#pragma once

#include "contacts/Client.h"
#include "engine/ApplicationPlugIn.h"
#include "engine/Jid.h"
#include "engine/StanzaQueue.h"

#include <QStringList>

#include <memory>

// The test's own stanza, parsed; one that is not well-formed fails the test.
inline std::shared_ptr<Stanza> wellFormed(const QString& xml)
{
    auto stanza = Stanza::fromXml(xml);
    if (!stanza)
        qFatal("the test's stanza is not well-formed: %s", qPrintable(xml));
    return stanza;
}

// A gateway without a socket: what the client asks of it is written down.
class FakeGateway : public Gateway
{
public:
    void DoConnect(const QString& user, const QString& secret, const QString& host, QString& res) override
    {
        userName = user;
        password = secret;
        server = host;
        resource = res;
        ++connects;
    }
    void DoDisconnect() override
    {
        connected = false;
        ++disconnects;
    }
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
                        const QString& server = QStringLiteral("montague.example"))
        : client_(client)
    {
        auto gateway = std::make_unique<FakeGateway>();
        gateway_ = gateway.get();
        gateway_->userName = user;
        gateway_->server = server;
        gateway_->connected = true;
        client.Core = std::make_unique<TempVRXCore>(std::move(gateway));
        queue_ = client.Core->PluginManager->Queue();
        const QString own = client.ownFullJid();
        queue_->setOwnJid(own, own);
        client.Application.emplace(queue_, Stanza::notice(""), std::make_shared<Session>(QString(), nullptr));
    }

    FakeGateway& gateway() { return *gateway_; }
    // The plug-in that receives events. Not owned.
    void plugIn(ApplicationPlugIn* plugIn, ITriggerReceiver* receiver = nullptr)
    {
        client_.Core->PluginManager->PlugIn(plugIn, receiver);
    }

    // Delivers one stanza to the plug-in, at once.
    void inject(const QString& xml) { deliver(wellFormed(xml)); }
    // Delivers the engine's own presences.
    void connectStream()
    {
        gateway_->connected = true;
        deliver(Stanza::notice("connect"));
    }
    void closeStream()
    {
        gateway_->connected = false;
        deliver(Stanza::notice("close"));
    }
    // One tick of the pump; loop-back messages arrive here.
    void trigger() { client_.Core->tick(); }

    // A context as an event of this stanza would bring it.
    PlugInContext contextFor(const QString& xml)
    {
        auto stanza = wellFormed(xml);
        const QString bare = jid::bare(stanza->From());
        return {queue_, std::move(stanza), client_.Core->PluginManager->sessions().session(bare)};
    }

    // What was sent since the last call, one text a stanza.
    QStringList takeSent()
    {
        QStringList sent;
        for (const auto& stanza : queue_->takeOutbound())
            sent += QString::fromUtf8(stanza);
        return sent;
    }

private:
    void deliver(std::shared_ptr<Stanza> stanza)
    {
        queue_->deliver(std::move(stanza));
        trigger();
    }

    Client& client_;
    FakeGateway* gateway_;
    std::shared_ptr<StanzaQueue> queue_;
};
