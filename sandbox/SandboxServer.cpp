#include "sandbox/SandboxServer.h"

#include "sandbox/Flood.h"
#include "sandbox/handlers/Dispatch.h"
#include "sandbox/handlers/PresenceHandler.h"

#include <algorithm>

namespace sandbox
{

SandboxServer::SandboxServer()
{
    connect(&listener_, &QTcpServer::newConnection, this, &SandboxServer::accept);
}

SandboxServer::~SandboxServer() = default;

bool SandboxServer::listen(quint16 port)
{
    return listener_.listen(QHostAddress::LocalHost, port);
}

bool SandboxServer::hasReceived(const QByteArray& part) const
{
    return countReceived(part) > 0;
}

int SandboxServer::countReceived(const QByteArray& part) const
{
    return int(std::count_if(received_.begin(), received_.end(),
                             [&](const auto& raw) { return raw.contains(part); }));
}

Connection* SandboxServer::client(const QString& user) const
{
    const auto found = std::find_if(connections_.rbegin(), connections_.rend(),
                                    [&user](const auto& one) { return one->user() == user; });
    return found == connections_.rend() ? nullptr : found->get();
}

void SandboxServer::sendText(const QString& xml)
{
    for (auto* connection : all())
        connection->sendText(xml);
}

void SandboxServer::release()
{
    script_.forgetHolds();
    for (const auto& held : std::exchange(heldRequests_, {}))
        handle(*held.connection, *held.stanza);
    for (auto* connection : all())
        connection->resume();
}

void SandboxServer::closeAll()
{
    for (auto* connection : all())
        connection->close();
}

void SandboxServer::abortAll()
{
    for (auto* connection : all())
        connection->abort();
}

void SandboxServer::floodPresences(const QString& user)
{
    auto* connection = client(user);
    Q_ASSERT_X(connection, "floodPresences", "the account isn't signed in");
    connection->pour(flood::presences(world_, *connection));
}

void SandboxServer::floodMessages(const QString& user, int count, int size, int senders)
{
    auto* connection = client(user);
    Q_ASSERT_X(connection, "floodMessages", "the account isn't signed in");
    connection->pour(flood::messages(world_, *connection, count, size, senders));
}

QList<Connection*> SandboxServer::all() const
{
    QList<Connection*> pointers;
    for (const auto& connection : connections_)
        pointers += connection.get();
    return pointers;
}

void SandboxServer::accept()
{
    while (auto* socket = listener_.nextPendingConnection()) {
        auto* connection = connections_.emplace_back(std::make_unique<Connection>(socket, script_)).get();
        connect(connection, &Connection::headerReceived, this, [this, connection](const QByteArray& raw) {
            headers_ += raw;
            world_.adoptHost(connection->host());
        });
        connect(connection, &Connection::stanzaReceived, this,
                [this, connection](const auto& stanza) { take(*connection, stanza); });
        connect(connection, &Connection::gone, this, [this, connection] { forget(*connection); });
    }
}

void SandboxServer::take(Connection& connection, const std::shared_ptr<Stanza>& stanza)
{
    if (keepsRecord_)
        received_ += stanza->raw();
    if (script_.holds(stanza->raw()))
        heldRequests_.append({&connection, stanza});
    else
        handle(connection, *stanza);
    emit stanzaReceived(stanza->raw());
}

void SandboxServer::handle(Connection& connection, const Stanza& stanza)
{
    if (const auto reply = script_.answerTo(stanza.raw()))
        return connection.sendText(filled(*reply, connection, stanza));
    const bool wasBound = connection.isBound();
    dispatch({world_, connection, stanza, script_});
    if (!wasBound && connection.isBound())
        emit signedIn(connection.user());
}

void SandboxServer::forget(Connection& connection)
{
    heldRequests_.removeIf([&connection](const auto& held) { return held.connection == &connection; });
    if (connection.isBound()) {
        world_.sessions.remove(&connection);
        presences::gone(world_, connection);
    }
    const auto found = std::find_if(connections_.begin(), connections_.end(),
                                    [&connection](const auto& one) { return one.get() == &connection; });
    if (found == connections_.end())
        return;
    found->release()->deleteLater(); // it may be the one that is calling
    connections_.erase(found);
}

QString SandboxServer::filled(QString reply, const Connection& connection, const Stanza& stanza)
{
    const QString me = connection.isBound() ? connection.fullJid() : QString();
    return reply.replace(QLatin1String("{id}"), escaped(stanza.id()))
        .replace(QLatin1String("{to}"), escaped(stanza.to()))
        .replace(QLatin1String("{me}"), escaped(me));
}

} // namespace sandbox
