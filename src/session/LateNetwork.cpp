#include "session/LateNetwork.h"

#include "engine/Gateway.h"
#include "settings/Module.h"

#include <QCoreApplication>
#include <QTimer>

LateNetwork::~LateNetwork() = default;

NetworkModule* LateNetwork::module()
{
    if (!module_)
        module_ = module::make<NetworkModule>(QStringLiteral("breloim_network"));
    return module_.get();
}

NetworkChecks* LateNetwork::checks()
{
    if (!checks_ && module())
        checks_ = module()->makeChecks();
    return checks_.get();
}

std::unique_ptr<Gateway> LateNetwork::makeGateway(ConnectionHost& host)
{
    return module() ? module()->makeGateway(host) : nullptr;
}

bool LateNetwork::isConnected()
{
    return !checks() || checks()->isConnected();
}

bool LateNetwork::dial(bool unattended)
{
    return checks() && checks()->dial(unattended);
}

NetworkChecks::OwnAddress LateNetwork::ownAddress()
{
    const QString fault =
        QCoreApplication::translate("LateNetwork", "The 32-bit Windows Socket is not responding.");
    return checks() ? checks()->ownAddress() : OwnAddress{{}, fault};
}

std::unique_ptr<QObject> LateNetwork::ask(const HttpQuestion& question, Done done)
{
    if (!http_ && module())
        http_ = module()->makeHttp();
    if (http_)
        return http_->ask(question, std::move(done));
    auto call = std::make_unique<QObject>();
    QTimer::singleShot(0, call.get(), [done = std::move(done)] { done({}); });
    return call;
}
