#include "Peer.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <functional>

namespace
{

// As QTest::qWaitFor, but looks again at each event instead of every 10 ms.
bool waitFor(const std::function<bool()>& holds)
{
    const QDeadlineTimer deadline(10000);
    QTimer wake;
    wake.start(200);
    while (!holds() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return holds();
}

} // namespace

Peer::Peer(sandbox::SandboxServer& server, const QByteArray& host) : host_(host)
{
    QObject::connect(&socket, &QTcpSocket::readyRead, &socket, [this] {
        incoming += socket.readAll();
        ++chunks;
    });
    QObject::connect(&socket, &QTcpSocket::connected, &socket,
                     [this] { socket.setSocketOption(QAbstractSocket::LowDelayOption, 1); });
    socket.connectToHost(QHostAddress::LocalHost, server.port());
}

QByteArray Peer::openStream()
{
    write("<stream:stream xmlns=\"jabber:client\" xmlns:stream=\"http://etherx.jabber.org/streams\" to=\"" +
          host_ + "\">");
    sees("<stream:stream");
    return std::exchange(incoming, {});
}

bool Peer::signIn(const QByteArray& user, const QByteArray& password, const QByteArray& resource)
{
    openStream();
    return ask("<iq type=\"set\" id=\"auth\"><query xmlns=\"jabber:iq:auth\"><username>" + user +
               "</username><password>" + password + "</password><resource>" + resource +
               "</resource></query></iq>")
        .contains("<iq type=\"result\" id=\"auth\"/>");
}

// A request that no server knows closes each question: its refusal comes after all other answers.
QByteArray Peer::ask(const QByteArray& xml)
{
    const QByteArray id = "id=\"sync" + QByteArray::number(++asked_) + '"';
    write(xml + "<iq type=\"get\" " + id + "><query xmlns=\"sync\"/></iq>");
    if (!sees(id) || !sees("</error></iq>"))
        return "no answer";
    const auto end = incoming.lastIndexOf("<iq ", incoming.indexOf(id));
    const QByteArray answer = incoming.left(end);
    incoming.clear();
    return answer;
}

bool Peer::sees(const QByteArray& part)
{
    return waitFor([&] { return incoming.contains(part); });
}

bool Peer::isClosed()
{
    return waitFor([&] { return socket.state() == QAbstractSocket::UnconnectedState; });
}

OnlinePeer::OnlinePeer(sandbox::SandboxServer& server, const QByteArray& user, const QByteArray& host)
    : Peer(server, host)
{
    if (!signIn(user, "secret"))
        qFatal("%s isn't let in", user.constData());
    ask("<presence/>");
}
