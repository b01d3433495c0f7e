#include "engine/wire/socket/Socks4.h"

#include <QHostAddress>
#include <QtEndian>

namespace socks4
{
namespace
{

QByteArray text(const QString& value)
{
    return value.toUtf8().replace('\0', QByteArray()) + '\0';
}

template <typename Number>
QByteArray bigEndian(Number value)
{
    const Number swapped = qToBigEndian(value);
    return {reinterpret_cast<const char*>(&swapped), sizeof swapped};
}

} // namespace

QByteArray request(const QString& host, quint16 port, const QString& user)
{
    constexpr quint32 nameFollows = 0x00000001; // 0.0.0.1
    const QHostAddress address(host);
    const bool numeric = address.protocol() == QAbstractSocket::IPv4Protocol;
    const QByteArray head = QByteArrayLiteral("\x04\x01") + bigEndian(port) +
                            bigEndian(numeric ? address.toIPv4Address() : nameFollows) + text(user);
    return numeric ? head : head + text(host);
}

bool isGranted(const QByteArray& answer)
{
    constexpr char granted = 0x5A;
    return answer.size() == answerSize && answer[0] == 0 && answer[1] == granted;
}

} // namespace socks4
