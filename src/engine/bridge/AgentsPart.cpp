#include "engine/bridge/AgentsPart.h"

#include "engine/bridge/StanzaText.h"

#include <algorithm>

namespace
{

constexpr std::string_view agentsNamespace = "jabber:iq:agents";

}

void AgentsPart::begin()
{
    jobs_.clear();
    refused_.clear();
}

bool AgentsPart::down(const ClientStanza& stanza, BridgeState& state, BridgeOutput& out)
{
    const auto iq = stanza.root;
    if (!stanza::is(iq, "iq") || !stanza::isType(iq, "get") || !stanza::child(iq, agentsNamespace))
        return false;
    const auto to = xml::attribute(iq, "to");
    const auto job = std::make_shared<Job>(xml::attribute(iq, "id"), to.isEmpty() ? state.server : to);
    jobs_.push_back(job);
    if (!refused_.contains(state.home.key(job->address)))
        return false;
    job->oldIsOut = false;
    discover(job, state, out);
    return true;
}

bool AgentsPart::up(std::shared_ptr<Stanza>& stanza, BridgeState& state, BridgeOutput& out)
{
    const auto iq = stanza->root();
    const bool isResult = stanza::isType(iq, "result");
    if (!isResult && !stanza::isType(iq, "error"))
        return false;
    const auto id = xml::attribute(iq, "id");
    const auto from = state.home.key(stanza->From());
    const auto found = std::find_if(jobs_.begin(), jobs_.end(), [&](const JobPtr& job) {
        return job->oldIsOut && job->id == id && state.home.key(job->address) == from;
    });
    if (found == jobs_.end())
        return false;
    const auto job = *found;
    job->oldIsOut = false;
    const bool isTooLate = job->answered;
    if (!isTooLate && isResult && stanza::child(iq, agentsNamespace))
        job->answered = true;
    else if (!isTooLate)
        refused_.insert(from);
    const bool isTheAnswer = job->answered && !isTooLate;
    if (!job->answered)
        discover(job, state, out);
    dropFinished();
    return !isTheAnswer;
}

void AgentsPart::discover(const JobPtr& job, BridgeState& state, BridgeOutput& out)
{
    state.requests.ask(
        job->address, disco::itemsQuery,
        [job, &state](pugi::xml_node answer, BridgeOutput& next) {
            job->answer.setItems(disco::items(answer));
            describeAll(job, state, next);
        },
        out);
}

void AgentsPart::describeAll(const JobPtr& job, BridgeState& state, BridgeOutput& out)
{
    if (job->answered)
        return;
    for (std::size_t index = 0; index < job->answer.count(); ++index) {
        state.requests.ask(
            job->answer.jid(index), disco::infoQuery,
            [job, index](pugi::xml_node answer, BridgeOutput& next) {
                job->answer.describe(index, disco::Info::read(answer));
                if (job->answer.isComplete())
                    finish(job, next);
            },
            out);
    }
    if (job->answer.isComplete())
        finish(job, out);
}

void AgentsPart::finish(const JobPtr& job, BridgeOutput& out)
{
    if (!std::exchange(job->answered, true))
        out.up << job->answer.stanza();
}

void AgentsPart::tick(qint64 nowMs, BridgeState&, BridgeOutput& out)
{
    for (const auto& job : jobs_) {
        if (!job->answered && job->deadline.hasPassed(nowMs))
            finish(job, out);
    }
    dropFinished();
}

void AgentsPart::dropFinished()
{
    std::erase_if(jobs_, [](const JobPtr& job) { return job->answered && !job->oldIsOut; });
}
