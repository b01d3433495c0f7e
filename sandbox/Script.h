#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace sandbox
{

// How bytes leave the server.
struct Pace {
    int pieceSize = 0;    // each write carries at most so many bytes; 0 for no bound
    qint64 cutAfter = -1; // the connection is closed after so many bytes of the stream; -1 for never
    bool held = false;    // nothing leaves while it is set
};

// What a test makes the server do otherwise than a server would. Change it at any time;
// `SandboxServer::release` lets go what was held.
class Script
{
public:
    Pace pace;
    bool silent = false;     // connections are accepted and never answered
    bool refuseAuth = false; // every password is wrong

    // Answers each request whose text on the wire contains `part` with exactly `reply`, instead of handling
    // it. An empty reply leaves the request unanswered. `{id}`, `{to}` and `{me}` stand for the request's id,
    // its address and the client's full JID. The first matching rule counts; `times` bounds how often, -1
    // does not.
    void answer(const QString& part, const QString& reply, int times = -1);
    // Requests that contain `part` wait, unhandled, until they are released.
    void hold(const QString& part) { held_ += part; }

    std::optional<QString> answerTo(const QByteArray& raw);
    bool holds(const QByteArray& raw) const;
    void forgetHolds() { held_.clear(); }

private:
    struct Rule {
        QByteArray part;
        QString reply;
        int times;
    };
    QList<Rule> rules_;
    QList<QString> held_;
};

} // namespace sandbox
