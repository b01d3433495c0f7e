#pragma once

#include "engine/wire/socket/StreamLink.h"

#include <functional>
#include <memory>

// What an attempt to connect needs from around it. `resolver` must outlive the attempt; `wakeUp` is called
// when there is news for its next tick.
struct DialContext {
    Resolver& resolver;
    std::function<void()> wakeUp;
};

// Finds the way to a server: asks DNS, then tries one candidate after the other until a stream is open.
class Dialer
{
public:
    struct Goal {
        ServerAddress address;
        // TLS or nothing.
        bool secure = false;
        // It asks DNS for us, and knows no SRV records.
        ProxyServer proxy;
        // No stream in clear, by whichever way TLS comes.
        bool encryptedOnly = false;
    };
    enum class State { Working, Open, Failed };

    Dialer(Goal goal, const DialContext& context, qint64 nowMs);
    ~Dialer();

    void tick(qint64 nowMs);
    State state() const { return state_; }
    // The link that is tried, or the open one; null while DNS is asked.
    const std::shared_ptr<StreamLink>& link() const { return link_; }
    // Once Failed: why, for a person, and whether every server there turned us away, so that trying again is
    // of no use.
    const QString& reason() const { return reason_; }
    bool wasTurnedAway() const { return turnedAway_; }

private:
    void resolve();
    void tryNext();
    void noteFailure();
    void fail(const QString& reason);

    Goal goal_;
    std::function<void()> wakeUp_;
    State state_ = State::Working;
    std::unique_ptr<SrvLookup> direct_;
    std::unique_ptr<SrvLookup> plain_;
    bool planned_ = false;
    QList<Candidate> plan_;
    std::shared_ptr<StreamLink> link_;
    QString reason_;
    int furthest_ = -1;
    bool turnedAway_ = true;
    qint64 nowMs_;
    qint64 startMs_;
};
