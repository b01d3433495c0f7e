#pragma once

#include "sandbox/SandboxServer.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTcpSocket>
#include <QTimer>

// A bare client: a socket, and what has come over it.
class Peer
{
public:
    explicit Peer(sandbox::SandboxServer& server, const QByteArray& host = "im.test") : host_(host)
    {
        QObject::connect(&socket, &QTcpSocket::readyRead, &socket, [this] { incoming += socket.readAll(); });
        QObject::connect(&socket, &QTcpSocket::connected, &socket,
                         [this] { socket.setSocketOption(QAbstractSocket::LowDelayOption, 1); });
        socket.connectToHost(QHostAddress::LocalHost, server.port());
    }
    QByteArray openStream()
    {
        write("<stream:stream xmlns='jabber:client' xmlns:stream='http://etherx.jabber.org/streams' to='" +
              host_ + "'>");
        sees("<stream:stream");
        return std::exchange(incoming, {});
    }
    // Opens the stream and signs in with the password in clear. False if the server refuses.
    bool signIn(const QByteArray& user, const QByteArray& password, const QByteArray& resource = "Desk")
    {
        openStream();
        return ask("<iq type='set' id='auth'><query xmlns='jabber:iq:auth'><username>" + user +
                   "</username><password>" + password + "</password><resource>" + resource +
                   "</resource></query></iq>")
            .contains("<iq type=\"result\" id=\"auth\"/>");
    }

    void write(const QByteArray& bytes) { socket.write(bytes); }
    // Sends `xml` and gives all that came until the server had dealt with it. A request that no server knows
    // closes each question: its refusal comes after all other answers.
    QByteArray ask(const QByteArray& xml)
    {
        const QByteArray id = "id=\"sync" + QByteArray::number(++asked_) + '"';
        write(xml + "<iq type=\"get\" " + id + "><query xmlns=\"sync\"/></iq>");
        if (!sees(id) || !sees("</error></iq>"))
            return "no answer";
        const auto end = incoming.lastIndexOf("<iq ", incoming.indexOf(id));
        return std::exchange(incoming, {}).left(end);
    }
    // All that came by now, after whatever the server was doing.
    QByteArray news() { return ask({}); }
    // Waits until what came holds `part`. It stays in `incoming`.
    bool sees(const QByteArray& part)
    {
        return waitFor([&] { return incoming.contains(part); });
    }
    bool isClosed()
    {
        return waitFor([&] { return socket.state() == QAbstractSocket::UnconnectedState; });
    }

    QTcpSocket socket;
    QByteArray incoming;

private:
    // As QTest::qWaitFor, but looks again at each event instead of every 10 ms.
    template <typename Holds>
    static bool waitFor(Holds holds)
    {
        const QDeadlineTimer deadline(10000);
        QTimer wake;
        wake.start(200);
        while (!holds() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return holds();
    }

    QByteArray host_;
    int asked_ = 0;
};

// One that has signed in and says that it is available; what that brought is thrown away.
class OnlinePeer : public Peer
{
public:
    OnlinePeer(sandbox::SandboxServer& server, const QByteArray& user, const QByteArray& host = "im.test")
        : Peer(server, host)
    {
        if (!signIn(user, "secret"))
            qFatal("%s isn't let in", user.constData());
        ask("<presence/>");
    }
};
