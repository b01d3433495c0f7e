#include "engine/wire/Transport.h"

#include <QSslConfiguration>

namespace
{

constexpr qint64 readBuffer = 256 * 1024;

Transport::Failure failureOf(QAbstractSocket::SocketError error)
{
    switch (error) {
    case QAbstractSocket::HostNotFoundError:
        return Transport::Failure::HostNotFound;
    case QAbstractSocket::ConnectionRefusedError:
        return Transport::Failure::Refused;
    case QAbstractSocket::RemoteHostClosedError:
        return Transport::Failure::ClosedByPeer;
    case QAbstractSocket::SslHandshakeFailedError:
    case QAbstractSocket::SslInternalError:
    case QAbstractSocket::SslInvalidUserDataError:
        return Transport::Failure::Tls;
    default:
        return Transport::Failure::Network;
    }
}

} // namespace

Transport::Transport(const Candidate& candidate, const QString& domain) : directTls_(candidate.directTls)
{
    QObject::connect(&socket_, &QSslSocket::connected, &socket_, [this] { onConnected(); });
    QObject::connect(&socket_, &QSslSocket::encrypted, &socket_, [this] { state_ = State::Open; });
    QObject::connect(&socket_, &QSslSocket::disconnected, &socket_, [this] { state_ = State::Closed; });
    QObject::connect(&socket_, &QSslSocket::errorOccurred, &socket_, [this](auto error) { onError(error); });
    socket_.setReadBufferSize(readBuffer);
    // The handshake goes through whatever the certificate is: who owns the transport judges it afterwards.
    socket_.setPeerVerifyMode(QSslSocket::QueryPeer);
    socket_.setPeerVerifyName(domain);
    if (directTls_) {
        auto configuration = socket_.sslConfiguration();
        configuration.setAllowedNextProtocols({QByteArrayLiteral("xmpp-client")});
        socket_.setSslConfiguration(configuration);
        socket_.connectToHostEncrypted(candidate.host, candidate.port);
    } else {
        socket_.connectToHost(candidate.host, candidate.port);
    }
}

Transport::~Transport()
{
    socket_.disconnect();
    if (state_ == State::Open)
        socket_.flush();
}

void Transport::onConnected()
{
    socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    state_ = directTls_ ? State::Securing : State::Open;
}

void Transport::onError(QAbstractSocket::SocketError error)
{
    if (state_ == State::Closed)
        return;
    // A peer that hangs up during the handshake speaks no TLS, or none that we do.
    failure_ = state_ == State::Securing ? Failure::Tls : failureOf(error);
    state_ = State::Closed;
}

QList<QSslError> Transport::certificateErrors() const
{
    if (socket_.peerCertificate().isNull())
        return {QSslError(QSslError::NoPeerCertificate)};
    return socket_.sslHandshakeErrors();
}

void Transport::startTls()
{
    state_ = State::Securing;
    socket_.startClientEncryption();
}

void Transport::close()
{
    socket_.flush();
    socket_.disconnectFromHost();
}

void Transport::abort()
{
    state_ = State::Closed;
    socket_.abort();
}
