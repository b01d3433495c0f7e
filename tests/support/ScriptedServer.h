#pragma once

#include "support/TestCertificate.h"

#include <QPointer>
#include <QRegularExpression>
#include <QSslSocket>
#include <QTcpServer>

// A server on loopback that does what its script says, whatever sense it makes: each step waits for a text
// from the client and then answers, closes or starts TLS. Without a script it accepts and stays silent.
class ScriptedServer : public QTcpServer
{
public:
    enum class Then { Stay, StartTls, Close, Abort };

    ScriptedServer() { listen(QHostAddress::LocalHost); }

    QString address() const { return QStringLiteral("127.0.0.1:%1").arg(serverPort()); }
    // TLS from the first byte.
    void setDirectTls() { directTls_ = true; }
    // From now on connections are refused.
    void refuse() { close(); }

    // The steps are taken in order, over all connections. `$id` in an answer stands for the last id received.
    void on(const QByteArray& awaited, const QByteArray& answer = {}, Then then = Then::Stay)
    {
        steps_.append({awaited, answer, then});
    }
    // Ready-made: a stream without features and jabber:iq:auth, up to the signed-in session.
    void onLegacySignIn()
    {
        on("<stream:stream", header(false));
        on("</iq>",
           "<iq type='result' id='$id'><query xmlns='jabber:iq:auth'><username/><digest/><resource/></query>"
           "</iq>");
        on("</iq>", "<iq type='result' id='$id'/>");
    }
    // Ready-made: SASL PLAIN, up to the stream behind it; `features` stand beside the binding.
    void onSasl(const QByteArray& features = {})
    {
        on("<stream:stream", header() +
                                 "<stream:features><mechanisms xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>"
                                 "<mechanism>PLAIN</mechanism></mechanisms></stream:features>");
        on("</auth>", "<success xmlns='urn:ietf:params:xml:ns:xmpp-sasl'/>");
        on("<stream:stream", header() + "<stream:features><bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'/>" +
                                 features + "</stream:features>");
    }
    // The same, and a bound resource.
    void onSaslSignIn(const QByteArray& features = {})
    {
        onSasl(features);
        on("</iq>", "<iq type='result' id='$id'><bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'>"
                    "<jid>romeo@127.0.0.1/orchard</jid></bind></iq>");
    }

    void say(const QByteArray& text)
    {
        peer_->write(text);
        peer_->flush();
    }
    void hangUp() { peer_->disconnectFromHost(); }
    // From now on what comes stays in the system's buffers.
    void stopReading() { peer_->disconnect(this), peer_->setReadBufferSize(1); }
    // The steps that are left are not taken.
    void forget() { steps_.clear(); }
    // Everything that this connection sent, and how many connections there were.
    QByteArray received() const { return received_; }
    int connections() const { return connections_; }
    bool isConnected() const { return peer_ && peer_->state() == QAbstractSocket::ConnectedState; }
    bool scriptIsDone() const { return steps_.isEmpty(); }
    qsizetype stepsLeft() const { return steps_.size(); }

    static QByteArray header(bool withVersion = true)
    {
        return QByteArrayLiteral(
                   "<?xml version='1.0'?><stream:stream xmlns='jabber:client' id='s1' from='127.0.0.1' "
                   "xmlns:stream='http://etherx.jabber.org/streams'") +
               (withVersion ? " version='1.0'>" : ">");
    }

protected:
    void incomingConnection(qintptr descriptor) override
    {
        ++connections_;
        received_.clear();
        seen_ = 0;
        peer_ = new QSslSocket(this);
        peer_->setSocketDescriptor(descriptor);
        peer_->setLocalCertificate(testCertificate::certificate());
        peer_->setPrivateKey(testCertificate::key());
        connect(peer_, &QSslSocket::readyRead, this, &ScriptedServer::takeIn);
        if (directTls_)
            peer_->startServerEncryption();
    }

private:
    struct Step {
        QByteArray awaited;
        QByteArray answer;
        Then then;
    };
    void takeIn()
    {
        if (sender() == peer_)
            received_ += peer_->readAll();
        while (!steps_.isEmpty()) {
            const auto at = received_.indexOf(steps_.first().awaited, seen_);
            if (at < 0)
                return;
            seen_ = at + steps_.first().awaited.size();
            act(steps_.takeFirst());
        }
    }
    void act(const Step& step)
    {
        static const QRegularExpression ids(" id=\"([^\"]*)\"");
        QByteArray id;
        auto matches = ids.globalMatch(QString::fromUtf8(received_.first(seen_)));
        while (matches.hasNext())
            id = matches.next().captured(1).toUtf8();
        say(QByteArray(step.answer).replace("$id", id));
        if (step.then == Then::StartTls)
            peer_->startServerEncryption();
        else if (step.then == Then::Close)
            hangUp();
        else if (step.then == Then::Abort)
            peer_->abort();
    }

    QList<Step> steps_;
    QPointer<QSslSocket> peer_;
    QByteArray received_;
    qsizetype seen_ = 0;
    int connections_ = 0;
    bool directTls_ = false;
};
