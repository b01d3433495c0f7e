#pragma once

#include "engine/Gateway.h"
#include "engine/wire/socket/Resolver.h"

#include <functional>
#include <memory>

class ConnectionHost;

// The gateway that speaks XMPP (RFC 6120) and the older jabber:iq:auth (XEP-0078) over a socket. All parsing,
// dispatch and sending happen inside Trigger.
class GatewayClient : public Gateway
{
public:
    // `host` must outlive the gateway. Asks the system's DNS and clock.
    explicit GatewayClient(ConnectionHost& host);
    // `resolver` may be null: then the system's DNS is asked. `clock` gives the milliseconds of a steady
    // clock, for the time-outs; empty for the system's.
    GatewayClient(ConnectionHost& host, std::unique_ptr<Resolver> resolver,
                  std::function<qint64()> clock = {});
    ~GatewayClient() override;

    void DoConnect(const QString& userName, const QString& password, const QString& server,
                   QString& resource) override;
    void DoDisconnect() override;
    bool isconnected() const override;
    QString UserName() const override;
    QString Password() const override;
    QString Server() const override;
    bool isEncrypted() const override;
    bool Secure() const override;
    void setSecure(bool on) override;
    void setProxy(const ProxyServer& proxy) override;
    void setQueue(std::shared_ptr<StanzaQueue> queue) override;
    void Trigger() override;

private:
    class Private;
    std::unique_ptr<Private> d_;
};
