#pragma once

#include <QHash>
#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>
#include <memory>

// A mail server on loopback with one mailbox, ann's with the password "secret": SUBSCRIBE, POLL and
// UNSUBSCRIBE as Exchange answers them, or as the test says.
class MailServer : public QTcpServer
{
public:
    MailServer()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] { serve(*nextPendingConnection()); });
    }

    QString inbox() const
    {
        return QStringLiteral("http://127.0.0.1:%1/exchange/ann/inbox").arg(serverPort());
    }
    // Answers the next request of this method so, and hangs up. Without bytes it stays silent.
    void answerNext(const QByteArray& method, const QByteArray& bytes) { answers_[method].append(bytes); }
    // The last request of this method: its first line and what the client chose to add, a header a line.
    QByteArray last(const QByteArray& method) const
    {
        const auto isOf = [&](const QByteArray& request) { return request.startsWith(method + ' '); };
        const auto found = std::find_if(asked.crbegin(), asked.crend(), isOf);
        return found == asked.crend() ? QByteArray() : *found;
    }
    qsizetype count(const QByteArray& method) const
    {
        return std::count_if(asked.cbegin(), asked.cend(),
                             [&](const QByteArray& request) { return request.startsWith(method + ' '); });
    }
    static QByteArray answer(const QByteArray& status, const QByteArray& body = {},
                             const QByteArray& headers = {})
    {
        return "HTTP/1.1 " + status + "\r\n" + headers +
               "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
    }
    static QByteArray multiStatus(const QByteArray& status)
    {
        return answer("207 Multi-Status",
                      "<?xml version=\"1.0\"?><a:multistatus xmlns:a=\"DAV:\"><a:response><a:status>" +
                          status + "</a:status></a:response></a:multistatus>");
    }

    bool hasNews = false;
    QList<QByteArray> subscriptions; // that stand
    QList<QByteArray> asked;         // with the right password, or answered as the test says

private:
    void serve(QTcpSocket& peer)
    {
        auto received = std::make_shared<QByteArray>();
        connect(&peer, &QTcpSocket::readyRead, this, [this, &peer, received] {
            *received += peer.readAll();
            for (qsizetype end = 0; (end = received->indexOf("\r\n\r\n")) >= 0; received->remove(0, end + 4))
                take(peer, received->first(end));
        });
        connect(&peer, &QTcpSocket::disconnected, &peer, &QObject::deleteLater);
    }

    void take(QTcpSocket& peer, const QByteArray& request)
    {
        const QByteArray method = request.first(request.indexOf(' '));
        if (auto& scripted = answers_[method]; !scripted.isEmpty()) {
            asked += chosen(request);
            const QByteArray bytes = scripted.takeFirst();
            if (bytes.isEmpty())
                return;
            peer.write(bytes);
            return peer.disconnectFromHost();
        }
        if (!request.contains("\r\nAuthorization: Basic " + QByteArray("ann:secret").toBase64())) {
            peer.write(answer("401 Unauthorized", {}, "WWW-Authenticate: Basic realm=\"mail\"\r\n"));
            return;
        }
        asked += chosen(request);
        peer.write(method == "SUBSCRIBE" ? subscribed() : subscriber(method, request));
    }

    QByteArray subscribed()
    {
        subscriptions += QByteArray::number(++last_);
        return answer("200 OK", {}, "Subscription-id: " + subscriptions.last() + "\r\n");
    }

    QByteArray subscriber(const QByteArray& method, const QByteArray& request)
    {
        const auto at = request.indexOf("Subscription-id: ") + 17;
        const auto id = request.mid(at, request.indexOf('\r', at) - at);
        if (!subscriptions.contains(id))
            return answer("412 Precondition Failed", "<h1>Precondition Failed</h1>");
        if (method == "UNSUBSCRIBE")
            subscriptions.removeAll(id);
        return multiStatus(hasNews ? "HTTP/1.1 200 OK" : "HTTP/1.1 204 No Content");
    }

    static QByteArray chosen(const QByteArray& request)
    {
        QList<QByteArray> lines = request.split('\n');
        lines.removeIf([](const QByteArray& line) {
            const QByteArray name = line.first(qMax(0, line.indexOf(':'))).toLower();
            return QList<QByteArray>{
                "host", "connection", "user-agent", "accept-encoding", "accept-language", "content-length"}
                .contains(name);
        });
        return lines.join('\n').replace('\r', "").trimmed();
    }

    QHash<QByteArray, QList<QByteArray>> answers_;
    int last_ = 0;
};
