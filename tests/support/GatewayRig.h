#pragma once

#include "engine/StanzaQueue.h"
#include "engine/wire/session/GatewayClient.h"
#include "engine/wire/socket/Resolver.h"
#include "support/RecordingHost.h"
#include "support/ScriptedServer.h"

#include <QStringList>

#include <memory>

// The real gateway before a scripted server, with a recorded person and a clock that stands until it is
// moved.
class GatewayRig
{
public:
    GatewayRig() { gateway->setQueue(queue); }

    void connectTo(const QString& address)
    {
        QString resource = QStringLiteral("garden");
        gateway->DoConnect("romeo", "s3cret", address, resource);
    }
    void connectToServer() { connectTo(server.address()); }
    // One tick, and what came up is added to `up`. Always true, so that it may stand in a condition.
    bool tick()
    {
        if (gateway)
            gateway->Trigger();
        while (const auto stanza = queue->takeInbound())
            up += (stanza->kind() == Stanza::Kind::Unsent      ? "unsent "
                   : stanza->kind() == Stanza::Kind::Uncertain ? "uncertain "
                                                               : "") +
                  stanza->Xml();
        return true;
    }
    void send(const QString& stanza)
    {
        QString error;
        queue->sendRaw(stanza, &error);
        if (!error.isEmpty())
            qFatal("the test's stanza is not well-formed: %s", qPrintable(stanza));
    }
    int count(const QString& stanza) const { return static_cast<int>(up.count(stanza)); }
    bool isClosed() const { return up.contains("<presence type=\"close\"/>"); }
    bool isUp() const { return up.contains("<presence type=\"connect\"/>"); }

    qint64 now = 1'000;
    ScriptedServer server;
    RecordingHost host;
    std::shared_ptr<StanzaQueue> queue = std::make_shared<StanzaQueue>();
    std::unique_ptr<GatewayClient> gateway =
        std::make_unique<GatewayClient>(host, nullptr, [this] { return now; });
    // Stanzas that the client has been given, as text; before those that came back stands how they are.
    QStringList up;
};

// Ticks the rig until `condition` holds.
#define TICK_UNTIL(rig, condition) QTRY_VERIFY((rig).tick() && (condition))
// Connects the rig to its server first.
#define CONNECT_UNTIL(rig, condition)                                                                        \
    do {                                                                                                     \
        (rig).connectToServer();                                                                             \
        TICK_UNTIL(rig, condition);                                                                          \
    } while (false)
