#pragma once

#include "engine/ITriggerReceiver.h"
#include "engine/ProxyServer.h"

#include <QString>

#include <memory>

class StanzaQueue;

// The connection to the server as the client sees it. GatewayClient is the one that opens a socket.
class Gateway : public ITriggerReceiver
{
public:
    // Starts the connection and returns at once. `server` is a host, or host:port. `resource` is by
    // reference: the server may give another one.
    virtual void DoConnect(const QString& userName, const QString& password, const QString& server,
                           QString& resource) = 0;
    // Closes the stream after sending what was queued. Safe when not connected.
    virtual void DoDisconnect() = 0;
    // True while the stream is up and authenticated.
    virtual bool isconnected() const = 0;

    virtual QString UserName() const = 0;
    virtual QString Password() const = 0;
    // The host that was passed to DoConnect, without its port.
    virtual QString Server() const = 0;

    // Whether what is said now goes encrypted.
    virtual bool isEncrypted() const = 0;
    // What is wished for the next connection: encryption or none at all.
    virtual bool Secure() const = 0;
    virtual void setSecure(bool on) = 0;
    // The way that the next DoConnect takes.
    virtual void setProxy(const ProxyServer& proxy) = 0;
    virtual void setQueue(std::shared_ptr<StanzaQueue> queue) = 0;
};
