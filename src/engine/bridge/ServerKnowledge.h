#pragma once

#include "engine/bridge/Disco.h"
#include "engine/bridge/OwnRequests.h"

#include <functional>
#include <vector>

// What kind of server this is, learnt once a session: a server of today answers disco#info (XEP-0030), one
// that speaks the old dialect only answers it with an error, or not at all.
class ServerKnowledge
{
public:
    using Step = std::function<void(BridgeOutput& out)>;

    void clear();
    // Asks the server, the first time that it is called in a session.
    void learn(const QString& server, OwnRequests& requests, BridgeOutput& out);

    bool isOfToday() const { return kind_ == Kind::OfToday; }
    const disco::Info& info() const { return info_; }
    // Runs `step` now, or as soon as the server's kind is known.
    void whenKnown(Step step, BridgeOutput& out);

private:
    enum class Kind { Unknown, Asked, Old, OfToday };

    void learnt(pugi::xml_node answer, BridgeOutput& out);

    Kind kind_ = Kind::Unknown;
    disco::Info info_;
    std::vector<Step> waiting_;
};
