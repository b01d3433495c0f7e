#pragma once

#include "engine/Gateway.h"

#include <functional>

class ConnectionHost;

// A gateway that is made when the first connection is wanted. Until then it is not connected and knows no
// account.
class LateGateway : public Gateway
{
public:
    using Maker = std::function<std::unique_ptr<Gateway>(ConnectionHost&)>;

    // `make` may yield null: then the person is told and the connection is over at once. `host` must outlive
    // the gateway.
    LateGateway(ConnectionHost& host, Maker make);

    void DoConnect(const QString& userName, const QString& password, const QString& server,
                   QString& resource) override;
    void DoDisconnect() override;
    bool isconnected() const override { return real_ && real_->isconnected(); }
    QString UserName() const override { return real_ ? real_->UserName() : QString(); }
    QString Password() const override { return real_ ? real_->Password() : QString(); }
    QString Server() const override { return real_ ? real_->Server() : QString(); }
    bool isEncrypted() const override { return real_ && real_->isEncrypted(); }
    bool Secure() const override { return secure_; }
    void setSecure(bool on) override;
    void setProxy(const ProxyServer& proxy) override;
    void setQueue(std::shared_ptr<StanzaQueue> queue) override;
    void Trigger() override;

private:
    bool makeReal();
    void tellFailure();

    ConnectionHost& host_;
    Maker make_;
    std::unique_ptr<Gateway> real_;
    std::shared_ptr<StanzaQueue> queue_;
    ProxyServer proxy_;
    bool secure_ = false;
    bool failed_ = false;
};
