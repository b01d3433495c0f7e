#include "session/LateGateway.h"

#include "engine/ConnectionHost.h"
#include "engine/StanzaQueue.h"

#include <QCoreApplication>

#include <utility>

LateGateway::LateGateway(ConnectionHost& host, Maker make) : host_(host), make_(std::move(make)) {}

bool LateGateway::makeReal()
{
    if (real_)
        return true;
    real_ = make_(host_);
    if (!real_)
        return false;
    real_->setQueue(queue_);
    real_->setSecure(secure_);
    real_->setProxy(proxy_);
    return true;
}

void LateGateway::DoConnect(const QString& userName, const QString& password, const QString& server,
                            QString& resource)
{
    failed_ = !makeReal();
    if (real_)
        real_->DoConnect(userName, password, server, resource);
}

void LateGateway::DoDisconnect()
{
    if (real_)
        real_->DoDisconnect();
}

void LateGateway::setSecure(bool on)
{
    secure_ = on;
    if (real_)
        real_->setSecure(on);
}

void LateGateway::setProxy(const ProxyServer& proxy)
{
    proxy_ = proxy;
    if (real_)
        real_->setProxy(proxy);
}

void LateGateway::setQueue(std::shared_ptr<StanzaQueue> queue)
{
    queue_ = std::move(queue);
    if (real_)
        real_->setQueue(queue_);
}

void LateGateway::Trigger()
{
    if (real_)
        return real_->Trigger();
    queue_->clearOutbound();
    if (std::exchange(failed_, false))
        tellFailure();
}

void LateGateway::tellFailure()
{
    queue_->deliver(Stanza::notice("close"));
    host_.connectionProgress(QCoreApplication::translate(
        "LateGateway",
        "A part of the program that connects to servers is missing. Please install it again."));
}
