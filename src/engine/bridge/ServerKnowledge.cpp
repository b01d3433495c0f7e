#include "engine/bridge/ServerKnowledge.h"

#include <utility>

void ServerKnowledge::clear()
{
    kind_ = Kind::Unknown;
    info_ = {};
    waiting_.clear();
}

void ServerKnowledge::learn(const QString& server, OwnRequests& requests, BridgeOutput& out)
{
    if (kind_ != Kind::Unknown)
        return;
    kind_ = Kind::Asked;
    requests.ask(
        server, disco::infoQuery, [this](pugi::xml_node answer, BridgeOutput& next) { learnt(answer, next); },
        out);
}

void ServerKnowledge::learnt(pugi::xml_node answer, BridgeOutput& out)
{
    info_ = disco::Info::read(answer);
    kind_ = info_.isEmpty() ? Kind::Old : Kind::OfToday;
    for (const auto& step : std::exchange(waiting_, {}))
        step(out);
}

void ServerKnowledge::whenKnown(Step step, BridgeOutput& out)
{
    if (kind_ == Kind::Old || kind_ == Kind::OfToday)
        step(out);
    else
        waiting_.push_back(std::move(step));
}
