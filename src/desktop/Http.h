#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>
#include <utility>

// What is asked over HTTP (RFC 9110).
struct HttpQuestion {
    QByteArray method;
    QUrl url; // http or https, with a host
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
    // For Basic, Digest and NTLM. They go to the host of `url` alone.
    QString user;
    QString password;
    int mostMs = 30'000; // for the whole of it
    qint64 mostBytes = 4 * 1024 * 1024;
};

struct HttpAnswer {
    // Whole: a server answered, whatever its status says.
    enum class Outcome { Whole, BadUrl, Unreachable, Distrusted, TimedOut, TooLarge };

    // The value of a header, by its name in any case; empty for none.
    QByteArray header(const QByteArray& name) const
    {
        for (const auto& [key, value] : headers) {
            if (key.compare(name, Qt::CaseInsensitive) == 0)
                return value;
        }
        return {};
    }

    Outcome outcome = Outcome::Unreachable;
    int status = 0; // 0 when no server answered
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
};

// Asks servers over HTTP without blocking. Redirections aren't followed: they are an answer like any other.
class HttpClient
{
public:
    using Done = std::function<void(const HttpAnswer&)>;

    virtual ~HttpClient() = default;
    // `done` is called once, from the event loop. Destroying what is returned gives the question up.
    virtual std::unique_ptr<QObject> ask(const HttpQuestion& question, Done done) = 0;
};
