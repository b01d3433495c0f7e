#include "plugins/network/SystemNetworkChecks.h"

#include <QCoreApplication>
#include <QNetworkInterface>
#include <QUdpSocket>

#include <algorithm>

namespace
{

bool isOnLine(const QNetworkInterface& interface)
{
    constexpr auto wanted = QNetworkInterface::IsUp | QNetworkInterface::IsRunning;
    const auto flags = interface.flags();
    return (flags & wanted) == wanted && !(flags & QNetworkInterface::IsLoopBack) &&
           !interface.addressEntries().isEmpty();
}

bool isUsable(const QHostAddress& address)
{
    return !address.isNull() && !address.isLoopback() && !address.isLinkLocal() &&
           address.protocol() == QAbstractSocket::IPv4Protocol;
}

// Of the way that leads out. Binding an address to a peer of a datagram socket sends nothing.
QHostAddress addressOfDefaultWay()
{
    QUdpSocket socket;
    constexpr quint16 discard = 9;
    socket.connectToHost(QHostAddress(QStringLiteral("192.0.2.1")), discard); // kept for documentation
    return socket.localAddress();
}

QHostAddress firstAddress()
{
    for (const auto& interface : QNetworkInterface::allInterfaces()) {
        if (!isOnLine(interface))
            continue;
        for (const auto& entry : interface.addressEntries()) {
            if (isUsable(entry.ip()))
                return entry.ip();
        }
    }
    return {};
}

} // namespace

bool SystemNetworkChecks::isConnected()
{
    const auto all = QNetworkInterface::allInterfaces();
    return std::any_of(all.begin(), all.end(), isOnLine);
}

NetworkChecks::OwnAddress SystemNetworkChecks::ownAddress()
{
    QHostAddress address = addressOfDefaultWay();
    if (!isUsable(address))
        address = firstAddress();
    if (!address.isNull())
        return {address.toString(), {}};
    return {{},
            QCoreApplication::translate("SystemNetworkChecks", "Windows Sockets are not responding. "
                                                               "Unable to successfully get Host Name.")};
}
