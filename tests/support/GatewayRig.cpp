#include "support/GatewayRig.h"

#include "engine/wire/socket/Resolver.h"

GatewayRig::GatewayRig() : gateway(std::make_unique<GatewayClient>(host, nullptr, [this] { return now; }))
{
    gateway->setQueue(queue);
}

void GatewayRig::connectTo(const QString& address)
{
    QString resource = QStringLiteral("garden");
    gateway->DoConnect("romeo", "s3cret", address, resource);
}

bool GatewayRig::tick()
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

void GatewayRig::send(const QString& stanza)
{
    QString error;
    queue->sendRaw(stanza, &error);
    if (!error.isEmpty())
        qFatal("the test's stanza is not well-formed: %s", qPrintable(stanza));
}
