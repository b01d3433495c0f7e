#pragma once

#include "sandbox/SandboxServer.h"

#include <QTcpSocket>

// A bare client: a socket, and what has come over it.
class Peer
{
public:
    explicit Peer(sandbox::SandboxServer& server, const QByteArray& host = "im.test");

    // Opens the stream and signs in with the password in clear. False if the server refuses.
    bool signIn(const QByteArray& user, const QByteArray& password, const QByteArray& resource = "Desk");

    // Sends `xml` and gives all that came until the server had dealt with it.
    QByteArray ask(const QByteArray& xml);
    // All that came by now, after whatever the server was doing.
    QByteArray news() { return ask({}); }

    QByteArray openStream();
    void write(const QByteArray& bytes) { socket.write(bytes); }
    // Waits until what came holds `part`. It stays in `incoming`.
    bool sees(const QByteArray& part);
    bool isClosed();

    QTcpSocket socket;
    QByteArray incoming;
    int chunks = 0; // how many times something came

private:
    QByteArray host_;
    int asked_ = 0;
};

// One that has signed in and says that it is available; what that brought is thrown away.
class OnlinePeer : public Peer
{
public:
    OnlinePeer(sandbox::SandboxServer& server, const QByteArray& user, const QByteArray& host = "im.test");
};
