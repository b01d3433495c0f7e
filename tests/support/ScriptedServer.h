#pragma once

#include <QByteArray>
#include <QList>
#include <QPointer>
#include <QSslSocket>
#include <QTcpServer>

#include <functional>

// A server on loopback that does what its script says, whatever sense it makes: each step waits for a text
// from the client and then answers, closes or starts TLS. Without a script it accepts and stays silent.
class ScriptedServer : public QTcpServer
{
    Q_OBJECT

public:
    enum class Then { Stay, StartTls, Close, Abort };

    ScriptedServer();

    // "127.0.0.1:port".
    QString address() const;
    // TLS from the first byte.
    void setDirectTls() { directTls_ = true; }
    // Every answer goes out in pieces of so many bytes.
    void setPieces(int bytes) { pieces_ = bytes; }
    // From now on connections are refused.
    void refuse() { close(); }

    // The steps are taken in order, over all connections. `$id` in an answer stands for the last id received.
    void on(const QByteArray& awaited, const QByteArray& answer = {}, Then then = Then::Stay);
    // Ready-made: a stream without features and jabber:iq:auth, up to the signed-in session.
    void onLegacySignIn();
    // Ready-made: SASL PLAIN, up to the stream behind it; `features` stand beside the binding.
    void onSasl(const QByteArray& features = {});
    // The same, and a bound resource.
    void onSaslSignIn(const QByteArray& features = {});

    void say(const QByteArray& text);
    void hangUp();
    // From now on what comes stays in the system's buffers.
    void stopReading() { peer_->disconnect(this), peer_->setReadBufferSize(1); }
    // The steps that are left are not taken.
    void forget() { steps_.clear(); }
    // Everything that this connection sent, and how many connections there were.
    QByteArray received() const { return received_; }
    int connections() const { return connections_; }
    bool isConnected() const { return peer_ && peer_->state() == QAbstractSocket::ConnectedState; }
    bool scriptIsDone() const { return steps_.isEmpty(); }

    static QByteArray header(bool withVersion = true);

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    struct Step {
        QByteArray awaited;
        QByteArray answer;
        Then then;
    };
    void takeIn();
    void act(const Step& step);
    void write(const QByteArray& text);

    QList<Step> steps_;
    QPointer<QSslSocket> peer_;
    QByteArray received_;
    qsizetype seen_ = 0;
    int connections_ = 0;
    int pieces_ = 0;
    bool directTls_ = false;
};
