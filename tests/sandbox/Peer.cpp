#include "Peer.h"

#include <QTest>

Peer::Peer(sandbox::SandboxServer& server, const QByteArray& host) : host_(host)
{
    QObject::connect(&socket, &QTcpSocket::readyRead, &socket, [this] {
        incoming += socket.readAll();
        ++chunks;
    });
    socket.connectToHost(QHostAddress::LocalHost, server.port());
}

QByteArray Peer::openStream()
{
    write("<stream:stream xmlns=\"jabber:client\" xmlns:stream=\"http://etherx.jabber.org/streams\" to=\"" + host_ +
          "\">");
    sees("<stream:stream");
    return std::exchange(incoming, {});
}

bool Peer::signIn(const QByteArray& user, const QByteArray& password, const QByteArray& resource)
{
    openStream();
    return ask("<iq type=\"set\" id=\"auth\"><query xmlns=\"jabber:iq:auth\"><username>" + user +
               "</username><password>" + password + "</password><resource>" + resource + "</resource></query></iq>")
        .contains("<iq type=\"result\" id=\"auth\"/>");
}

bool Peer::appear(const QByteArray& user, const QByteArray& resource)
{
    const bool isIn = signIn(user, "secret", resource);
    ask("<presence/>");
    return isIn;
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
    return QTest::qWaitFor([&] { return incoming.contains(part); });
}

bool Peer::isClosed()
{
    return QTest::qWaitFor([&] { return socket.state() == QAbstractSocket::UnconnectedState; });
}
