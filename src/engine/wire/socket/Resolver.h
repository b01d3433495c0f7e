#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <memory>

// One place where a service runs (RFC 2782).
struct SrvRecord {
    QString host;
    quint16 port = 0;
    quint16 priority = 0;
};

// A question under way. Destroying it gives it up.
class SrvLookup
{
public:
    virtual ~SrvLookup() = default;
    virtual bool isFinished() const = 0;
    // In the order in which they are to be tried; empty for none, or when the question failed.
    virtual QList<SrvRecord> records() const = 0;
};

// Asks DNS where a service runs.
class Resolver
{
public:
    virtual ~Resolver() = default;
    // `name` is like _xmpp-client._tcp.example.org. Returns at once; `wakeUp` is called when it is finished.
    virtual std::unique_ptr<SrvLookup> lookUp(const QString& name, const std::function<void()>& wakeUp) = 0;
};

// Asks the system's DNS.
std::unique_ptr<Resolver> systemResolver();
