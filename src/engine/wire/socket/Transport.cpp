#include "engine/wire/socket/Transport.h"

#include "engine/wire/socket/Socks4.h"

#include <QCoreApplication>
#include <QNetworkProxy>
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

Transport::Transport(const Candidate& candidate, const QString& domain, const ProxyServer& proxy,
                     const std::function<void()>& wakeUp)
    : candidate_(candidate), proxy_(proxy)
{
    QObject::connect(&socket_, &QSslSocket::connected, &socket_, [this] { onConnected(); });
    QObject::connect(&socket_, &QSslSocket::readyRead, &socket_, [this] { onProxyAnswer(); });
    QObject::connect(&socket_, &QSslSocket::encrypted, &socket_, [this] { state_ = State::Open; });
    QObject::connect(&socket_, &QSslSocket::disconnected, &socket_, [this] { state_ = State::Closed; });
    QObject::connect(&socket_, &QSslSocket::errorOccurred, &socket_, [this](auto error) { onError(error); });
    // Behind the others, so that the state is there when somebody looks.
    QObject::connect(&socket_, &QSslSocket::connected, &socket_, wakeUp);
    QObject::connect(&socket_, &QSslSocket::readyRead, &socket_, wakeUp);
    QObject::connect(&socket_, &QSslSocket::encrypted, &socket_, wakeUp);
    QObject::connect(&socket_, &QSslSocket::disconnected, &socket_, wakeUp);
    QObject::connect(&socket_, &QSslSocket::errorOccurred, &socket_, wakeUp);
    socket_.setReadBufferSize(readBuffer);
    // The handshake goes through whatever the certificate is: who owns the transport judges it afterwards.
    socket_.setPeerVerifyMode(QSslSocket::QueryPeer);
    socket_.setPeerVerifyName(domain);
    if (candidate_.directTls) {
        auto configuration = socket_.sslConfiguration();
        configuration.setAllowedNextProtocols({QByteArrayLiteral("xmpp-client")});
        socket_.setSslConfiguration(configuration);
    }
    dial();
}

void Transport::dial()
{
    if (proxy_.kind == ProxyServer::Kind::Socks4) {
        proxyStep_ = ProxyStep::Dialled;
        return socket_.connectToHost(proxy_.host, proxy_.port);
    }
    if (proxy_.kind == ProxyServer::Kind::Socks5)
        socket_.setProxy(
            {QNetworkProxy::Socks5Proxy, proxy_.host, proxy_.port, proxy_.user, proxy_.password});
    socket_.connectToHost(candidate_.host, candidate_.port);
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
    if (proxyStep_ == ProxyStep::Dialled)
        askProxy();
    else
        onReached();
}

void Transport::askProxy()
{
    proxyStep_ = ProxyStep::Asked;
    socket_.write(socks4::request(candidate_.host, candidate_.port, proxy_.user));
}

void Transport::onProxyAnswer()
{
    if (proxyStep_ != ProxyStep::Asked || socket_.bytesAvailable() < socks4::answerSize)
        return;
    proxyStep_ = ProxyStep::None;
    if (socks4::isGranted(socket_.read(socks4::answerSize)))
        return onReached();
    failureText_ = QCoreApplication::translate("Transport", "the proxy server refused the connection");
    failure_ = Failure::Network;
    abort();
}

void Transport::onReached()
{
    if (candidate_.directTls)
        startTls();
    else
        state_ = State::Open;
}

void Transport::onError(QAbstractSocket::SocketError error)
{
    if (state_ == State::Closed)
        return;
    if (proxyStep_ != ProxyStep::None) {
        failure_ = Failure::Network;
        failureText_ = QCoreApplication::translate("Transport", "the proxy server does not answer: %1")
                           .arg(socket_.errorString());
        state_ = State::Closed;
        return;
    }
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
