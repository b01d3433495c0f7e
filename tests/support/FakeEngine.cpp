#include "support/FakeEngine.h"

#include "engine/Jid.h"

std::shared_ptr<Stanza> wellFormed(const QString& xml)
{
    auto stanza = Stanza::fromXml(xml);
    if (!stanza)
        qFatal("the test's stanza is not well-formed: %s", qPrintable(xml));
    return stanza;
}

void FakeGateway::DoConnect(const QString& user, const QString& secret, const QString& host, QString& res)
{
    userName = user;
    password = secret;
    server = host;
    resource = res;
    ++connects;
}

void FakeGateway::DoDisconnect()
{
    connected = false;
    ++disconnects;
}

FakeEngine::FakeEngine(Client& client, const QString& user, const QString& server) : client_(client)
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

void FakeEngine::plugIn(ApplicationPlugIn* plugIn, ITriggerReceiver* receiver)
{
    client_.Core->PluginManager->PlugIn(plugIn, receiver);
}

void FakeEngine::inject(const QString& xml)
{
    queue_->deliver(wellFormed(xml));
    trigger();
}

void FakeEngine::connectStream()
{
    gateway_->connected = true;
    queue_->deliver(Stanza::notice("connect"));
    trigger();
}

void FakeEngine::closeStream()
{
    gateway_->connected = false;
    queue_->deliver(Stanza::notice("close"));
    trigger();
}

void FakeEngine::trigger()
{
    client_.Core->tick();
}

PlugInContext FakeEngine::contextFor(const QString& xml)
{
    auto stanza = wellFormed(xml);
    const QString bare = jid::bare(stanza->From());
    return {queue_, std::move(stanza), client_.Core->PluginManager->sessions().session(bare)};
}

QStringList FakeEngine::takeSent()
{
    QStringList sent;
    for (const auto& stanza : queue_->takeOutbound())
        sent += QString::fromUtf8(stanza);
    return sent;
}
