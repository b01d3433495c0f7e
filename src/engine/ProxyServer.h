#pragma once

#include <QString>

// The proxy server through which a connection is made.
struct ProxyServer {
    enum class Kind {
        None,
        Socks4, // with SOCKS 4A's names, so that the proxy asks DNS
        Socks5, // RFC 1928, with user name and password as RFC 1929 tells
    };

    Kind kind = Kind::None;
    QString host;
    quint16 port = 0;
    QString user;
    QString password;
};
