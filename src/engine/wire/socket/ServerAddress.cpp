#include "engine/wire/socket/ServerAddress.h"

#include <QHostAddress>

#include <algorithm>

ServerAddress ServerAddress::parsed(const QString& text)
{
    ServerAddress address;
    const QString trimmed = text.trimmed();
    address.host_ = trimmed;
    if (trimmed.isEmpty())
        address.error_ = tr("No server is given.");
    else if (std::any_of(trimmed.begin(), trimmed.end(), [](QChar c) { return c.isSpace() || !c.isPrint(); }))
        address.error_ = tr("The server's name \"%1\" has blanks in it.").arg(trimmed);
    else
        address.split(trimmed);
    return address;
}

void ServerAddress::split(const QString& text)
{
    if (text.startsWith(u'[')) {
        const auto end = text.indexOf(u']');
        const QString rest = end < 0 ? QString() : text.mid(end + 1);
        host_ = text.mid(1, end - 1);
        if (end < 0 || QHostAddress(host_).protocol() != QAbstractSocket::IPv6Protocol)
            error_ = tr("\"%1\" is not an IPv6 address in brackets.").arg(text);
        else if (rest.startsWith(u':'))
            readPort(rest.mid(1));
        else if (!rest.isEmpty())
            error_ = tr("After the address \"%1\" only a colon and a port may stand.").arg(host_);
        return;
    }
    if (text.count(u':') == 1) {
        host_ = text.section(u':', 0, 0);
        readPort(text.section(u':', 1));
    }
    checkHost();
}

void ServerAddress::readPort(const QString& text)
{
    const bool digits = std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    const int number = digits ? text.toInt() : 0;
    if (number < 1 || number > 65535)
        error_ = tr("\"%1\" is not a port: it must be a number from 1 to 65535.").arg(text);
    else
        port_ = static_cast<quint16>(number);
}

void ServerAddress::checkHost()
{
    if (!error_.isEmpty())
        return;
    const bool strange = std::any_of(host_.begin(), host_.end(), [](QChar c) {
        return c.unicode() < 0x80 && !c.isLetterOrNumber() && c != u'.' && c != u'-' && c != u'_';
    });
    if (host_.isEmpty())
        error_ = tr("No server is given before the port.");
    else if (host_.contains(u':') ? QHostAddress(host_).isNull() : strange)
        error_ = tr("\"%1\" is not the name of a server.").arg(host_);
}

bool ServerAddress::asksDns() const
{
    return isValid() && port_ == 0 && host_.contains(u'.') && QHostAddress(host_).isNull();
}
