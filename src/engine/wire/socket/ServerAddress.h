#pragma once

#include <QCoreApplication>
#include <QString>

// Where the person wants to connect to: a host, or host:port. An IPv6 address with a port stands in brackets.
class ServerAddress
{
    Q_DECLARE_TR_FUNCTIONS(ServerAddress)

public:
    // Blanks around `text` are ignored. With an unusable text isValid() is false and error() tells a person
    // why.
    static ServerAddress parsed(const QString& text);

    bool isValid() const { return error_.isEmpty(); }
    const QString& error() const { return error_; }
    // Without port and brackets.
    const QString& host() const { return host_; }
    // 0 where none was given.
    quint16 port() const { return port_; }
    // Whether DNS may know better where the service runs: not with a port, an IP address, or a name of one
    // label.
    bool asksDns() const;

private:
    void split(const QString& text);
    void readPort(const QString& text);
    void checkHost();

    QString host_;
    quint16 port_ = 0;
    QString error_;
};
