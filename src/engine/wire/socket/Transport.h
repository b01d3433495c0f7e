#pragma once

#include "engine/ProxyServer.h"
#include "engine/wire/socket/ConnectPlan.h"

#include <QSslSocket>

#include <functional>

// One TCP connection, with TLS from the start or from startTls() on. Nothing blocks, and nothing is done from
// a call back: the owner is woken up and looks at the state. A certificate that doesn't verify doesn't end
// the connection: the owner judges it before it writes or reads.
class Transport
{
public:
    enum class State { Connecting, Securing, Open, Closed };
    enum class Failure { None, HostNotFound, Refused, Tls, ClosedByPeer, Network };

    // `domain` is the name that the certificate must carry. `wakeUp` is called when bytes have come or the
    // state has changed.
    Transport(const Candidate& candidate, const QString& domain, const ProxyServer& proxy,
              const std::function<void()>& wakeUp);
    ~Transport();
    Transport(const Transport&) = delete;
    Transport& operator=(const Transport&) = delete;

    void startTls();
    // Closed tells that nothing more arrives; bytes that came before can still be read.
    State state() const { return state_; }
    Failure failure() const { return failure_; }
    // The system's words for the failure.
    QString failureText() const { return failureText_.isEmpty() ? socket_.errorString() : failureText_; }
    bool isEncrypted() const { return socket_.isEncrypted(); }
    QSslCertificate certificate() const { return socket_.peerCertificate(); }
    // Empty for a certificate that verified.
    QList<QSslError> certificateErrors() const;

    // What has arrived, at most `most` bytes. The buffer behind it is bounded: while nobody reads, the other
    // end has to wait.
    QByteArray read(qint64 most) { return socket_.read(most); }
    bool hasBytes() const { return socket_.bytesAvailable() > 0; }
    void write(const QByteArray& bytes) { socket_.write(bytes); }
    // Bytes that the system hasn't taken yet.
    qint64 unsent() const { return socket_.bytesToWrite() + socket_.encryptedBytesToWrite(); }
    // Hands over to the system what it takes at once.
    void flush() { socket_.flush(); }
    // Closes after sending what is written.
    void close();
    void abort();

private:
    void dial();
    void onConnected();
    void askProxy();
    void onProxyAnswer();
    void onReached();
    void onError(QAbstractSocket::SocketError error);

    QSslSocket socket_;
    State state_ = State::Connecting;
    Failure failure_ = Failure::None;
    QString failureText_;
    Candidate candidate_;
    ProxyServer proxy_;
    // A SOCKS 4 proxy server that is dialled, or asked and hasn't answered yet.
    enum class ProxyStep { None, Dialled, Asked } proxyStep_ = ProxyStep::None;
};
