#include "engine/wire/session/GatewayClient.h"

#include "engine/StanzaQueue.h"
#include "engine/wire/session/Connection.h"

#include <QDeadlineTimer>

class GatewayClient::Private
{
public:
    Private(ConnectionHost& host, std::unique_ptr<Resolver> resolver, std::function<qint64()> clock)
        : connection(host, std::move(resolver), std::move(clock))
    {
    }

    Connection connection;
    Account account;
    bool secure = false;
    ProxyServer proxy;
};

namespace
{

qint64 steadyMs()
{
    return QDeadlineTimer::current().deadline();
}

} // namespace

GatewayClient::GatewayClient(ConnectionHost& host) : GatewayClient(host, nullptr) {}

GatewayClient::GatewayClient(ConnectionHost& host, std::unique_ptr<Resolver> resolver,
                             std::function<qint64()> clock)
{
    if (!resolver)
        resolver = systemResolver();
    if (!clock)
        clock = steadyMs;
    d_ = std::make_unique<Private>(host, std::move(resolver), std::move(clock));
}

GatewayClient::~GatewayClient() = default;

void GatewayClient::DoConnect(const QString& userName, const QString& password, const QString& server,
                              QString& resource)
{
    d_->account = {userName, password, resource, {ServerAddress::parsed(server), d_->secure, d_->proxy}};
    d_->connection.connectTo(d_->account);
}

void GatewayClient::DoDisconnect()
{
    d_->connection.leave();
}
bool GatewayClient::isconnected() const
{
    return d_->connection.isOnline();
}
QString GatewayClient::UserName() const
{
    return d_->account.user;
}
QString GatewayClient::Password() const
{
    return d_->account.password;
}
QString GatewayClient::Server() const
{
    return d_->account.domain();
}
bool GatewayClient::isEncrypted() const
{
    return d_->connection.isEncrypted();
}
bool GatewayClient::Secure() const
{
    return d_->secure;
}
void GatewayClient::setSecure(bool on)
{
    d_->secure = on;
}
void GatewayClient::setProxy(const ProxyServer& proxy)
{
    d_->proxy = proxy;
}
void GatewayClient::setQueue(std::shared_ptr<StanzaQueue> queue)
{
    d_->connection.setQueue(std::move(queue));
}
void GatewayClient::Trigger()
{
    d_->connection.trigger();
}
