#include "engine/bridge/StanzaText.h"
#include "engine/bridge/queries/AgentsAnswer.h"
#include "engine/bridge/queries/Queries.h"

namespace
{

constexpr const char* agentsNamespace = "jabber:iq:agents";

struct Job {
    Job(const QString& id, const QString& askedAddress) : address(askedAddress), answer(id, askedAddress) {}

    QString address;
    AgentsAnswer answer;
    bool answered = false;
};
using JobPtr = std::shared_ptr<Job>;

// jabber:iq:agents. The old request goes out as it is; where it is refused the answer is made from service
// discovery. The client's sign-in waits for an answer, so one comes in ten seconds whatever the server does.
class Agents : public Translator
{
public:
    bool down(const ClientStanza& stanza, BridgeContext& context) override;

private:
    static void oldAnswered(const JobPtr& job, const Exchange::Answer& answer, BridgeContext& context);
    static void discover(const JobPtr& job, BridgeContext& context);
    static void describeAll(const JobPtr& job, BridgeContext& context);
    static void finish(const JobPtr& job, BridgeContext& context);
};

bool Agents::down(const ClientStanza& stanza, BridgeContext& context)
{
    const auto iq = stanza.root();
    if (!stanza::isType(iq, "get"))
        return false;
    const auto to = xml::attribute(iq, "to");
    const auto job =
        std::make_shared<Job>(xml::attribute(iq, "id"), to.isEmpty() ? context.home.server() : to);
    context.timers.after(Exchange::patienceMs, [job, &context] { finish(job, context); });
    if (context.knowledge.isRefused(job->address, agentsNamespace)) {
        discover(job, context);
        return true;
    }
    // Waited for as long as the session lasts: a late answer must not reach the client as a second one.
    const auto answered = [job, &context](const Exchange::Answer& answer) {
        oldAnswered(job, answer, context);
    };
    context.exchange.forward(stanza.text, iq, answered, std::nullopt);
    return true;
}

void Agents::oldAnswered(const JobPtr& job, const Exchange::Answer& answer, BridgeContext& context)
{
    if (job->answered)
        return;
    if (stanza::child(answer.result(), agentsNamespace)) {
        job->answered = true;
        context.out.up << answer.stanza;
    } else {
        context.knowledge.refuse(job->address, agentsNamespace);
        discover(job, context);
    }
}

void Agents::discover(const JobPtr& job, BridgeContext& context)
{
    context.exchange.ask({.to = job->address, .payload = disco::itemsQuery},
                         [job, &context](const Exchange::Answer& answer) {
                             job->answer.setItems(disco::items(answer.result()));
                             describeAll(job, context);
                         });
}

void Agents::describeAll(const JobPtr& job, BridgeContext& context)
{
    if (job->answered)
        return;
    for (std::size_t index = 0; index < job->answer.count(); ++index) {
        context.exchange.ask({.to = job->answer.jid(index), .payload = disco::infoQuery},
                             [job, index, &context](const Exchange::Answer& answer) {
                                 job->answer.describe(index, disco::Info::read(answer.result()));
                                 if (job->answer.isComplete())
                                     finish(job, context);
                             });
    }
    if (job->answer.isComplete())
        finish(job, context);
}

void Agents::finish(const JobPtr& job, BridgeContext& context)
{
    if (!std::exchange(job->answered, true))
        context.out.up << job->answer.stanza();
}

} // namespace

std::shared_ptr<Translator> queries::agents()
{
    return std::make_shared<Agents>();
}
