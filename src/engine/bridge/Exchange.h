#pragma once

#include "engine/StanzaError.h"
#include "engine/bridge/BridgeTraffic.h"
#include "engine/bridge/HomeAddresses.h"
#include "engine/bridge/Timers.h"

#include <QHash>
#include <QString>

#include <deque>
#include <functional>
#include <optional>

// The iq requests whose answers the bridge takes itself: its own, and those that it sends for the client. An
// answer belongs to the oldest open request of its id to its address. One that comes after its request was
// given up is swallowed.
class Exchange
{
public:
    // How long a person should have to wait for somebody who says nothing.
    static constexpr qint64 patienceMs = 10'000;
    // None: as long as the session lasts.
    using Deadline = std::optional<qint64>;

    struct Request {
        // Empty: the own account.
        QString to;
        // XML text.
        QString payload;
        const char* type = "get";
        // Empty: one is made. A request for the client's may keep the client's.
        QString id = {};
        Deadline deadlineMs = patienceMs;
    };

    struct Answer {
        // As it came; null when none came in time.
        std::shared_ptr<Stanza> stanza;
        // Code 0 for a result, 504 when the time ran out.
        StanzaError error;

        bool isResult() const { return error.code == 0; }
        // The root of a result, else null.
        pugi::xml_node result() const { return isResult() ? stanza->root() : pugi::xml_node(); }
    };
    // Called once at most, and never from within the call that sends.
    using Step = std::function<void(const Answer&)>;

    Exchange(const HomeAddresses& home, Timers& timers, BridgeOutput& out)
        : home_(home), timers_(timers), out_(out)
    {
    }

    void ask(const Request& request, Step answered);
    // Sends `text`, a request of the id and the address of `iq`.
    void forward(const QByteArray& text, pugi::xml_node iq, Step answered, Deadline deadlineMs = patienceMs);
    // A result or an error from the wire. True when it is taken, or was given up.
    bool take(const std::shared_ptr<Stanza>& iq);
    // A session begins: forgets all requests; nobody is called.
    void begin() { open_.clear(); }

private:
    struct Open {
        quint64 number;
        // Null for a request that was given up.
        Step answered;
    };

    void send(const QByteArray& text, const RequestKey& key, Step answered, Deadline deadlineMs);
    void giveUp(const RequestKey& key, quint64 number);
    void forget(const RequestKey& key, quint64 number);

    const HomeAddresses& home_;
    Timers& timers_;
    BridgeOutput& out_;
    QHash<RequestKey, std::deque<Open>> open_;
    quint64 count_ = 0;
};
