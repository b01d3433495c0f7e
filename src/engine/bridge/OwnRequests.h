#pragma once

#include "engine/bridge/BridgeOutput.h"
#include "engine/bridge/Deadline.h"

#include <QHash>
#include <QString>

#include <functional>

// The questions that the bridge asks on its own account, of which the client never hears.
class OwnRequests
{
public:
    // Receives the result's root; a null node for an error, or when no answer came in ten seconds.
    using Answer = std::function<void(pugi::xml_node result, BridgeOutput& out)>;

    // Sends an iq get. `query` is the payload as XML text; `answer` is called once at most.
    void ask(const QString& to, const QString& query, Answer answer, BridgeOutput& out);
    // True when `iq` answers one of the questions, also one that was given up.
    bool take(const Stanza& iq, BridgeOutput& out);
    void tick(qint64 nowMs, BridgeOutput& out);
    // Forgets all questions; their answers aren't called.
    void clear() { open_.clear(); }

private:
    struct Request {
        Answer answer;
        Deadline deadline;
    };

    QHash<QString, Request> open_;
    quint64 nextId_ = 0;
};
