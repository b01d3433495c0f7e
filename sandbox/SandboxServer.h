#pragma once

#include "sandbox/Connection.h"
#include "sandbox/Script.h"
#include "sandbox/World.h"

#include <QList>
#include <QTcpServer>

#include <memory>
#include <vector>

namespace sandbox
{

// A Jabber server on loopback that speaks the old dialect: streams without a version, jabber:iq:auth, agents,
// browse, conference rooms. Tests run it in their own process and script it; the demo runs it as a program.
//
//     SandboxServer server;
//     server.world().addAccount("romeo", "secret");
//     server.world().addContact("romeo", "juliet", "Juliet", "Friends");
//     server.listen();
//     ... a client connects to 127.0.0.1:server.port() ...
//     QTRY_VERIFY(server.hasReceived("jabber:iq:roster"));
class SandboxServer : public QObject
{
    Q_OBJECT
public:
    SandboxServer();
    ~SandboxServer() override;

    // On 127.0.0.1; port 0 takes a free one. False if the port is taken.
    bool listen(quint16 port = 0);
    quint16 port() const { return listener_.serverPort(); }
    QString errorString() const { return listener_.errorString(); }

    World& world() { return world_; }
    Script& script() { return script_; }

    // Every stanza received, as exact text and in the order of arrival, over all connections.
    QList<QByteArray> received() const { return received_; }
    QList<QByteArray> takeReceived() { return std::exchange(received_, {}); }
    bool hasReceived(const QByteArray& part) const;
    int countReceived(const QByteArray& part) const;
    // Stream headers, likewise.
    QList<QByteArray> headers() const { return headers_; }

    // A server that runs for long keeps no record.
    void keepRecord(bool on) { keepsRecord_ = on; }

    int connectionCount() const { return int(connections_.size()); }
    // The newest signed-in connection of the account, or null.
    Connection* client(const QString& user) const;
    // Writes text as it stands to every connection, well-formed or not.
    void sendText(const QString& xml);
    // Lets go all that the script held: requests, and writes when the pace is no longer held.
    void release();
    // Ends all streams: properly, or by dropping the connections.
    void closeAll();
    void abortAll();

    // One presence from each contact; messages in turn from the first `senders` contacts. The account must be
    // signed in.
    void floodPresences(const QString& user);
    void floodMessages(const QString& user, int count, int size, int senders);

signals:
    void stanzaReceived(const QByteArray& raw);
    void signedIn(const QString& user);

private:
    // A copy, as whoever goes through it may end connections. They live on until control returns to the event
    // loop.
    QList<Connection*> all() const;
    void accept();
    void take(Connection& connection, const std::shared_ptr<Stanza>& stanza);
    void handle(Connection& connection, const Stanza& stanza);
    void forget(Connection& connection);
    static QString filled(QString reply, const Connection& connection, const Stanza& stanza);

    struct Held {
        Connection* connection;
        std::shared_ptr<Stanza> stanza;
    };

    QTcpServer listener_;
    World world_;
    Script script_;
    std::vector<std::unique_ptr<Connection>> connections_;
    QList<Held> heldRequests_;
    bool keepsRecord_ = true;
    QList<QByteArray> received_;
    QList<QByteArray> headers_;
};

} // namespace sandbox
