#include "engine/wire/socket/Dialer.h"

#include "engine/wire/socket/LinkWords.h"

namespace
{

constexpr qint64 dnsTimeoutMs = 5'000;

} // namespace

Dialer::Dialer(Goal goal, const DialContext& context, qint64 nowMs)
    : goal_(std::move(goal)), wakeUp_(context.wakeUp), nowMs_(nowMs), startMs_(nowMs)
{
    if (!goal_.address.isValid()) {
        fail(goal_.address.error());
    } else if (goal_.address.asksDns() && goal_.proxy.kind == ProxyServer::Kind::None) {
        const QString& host = goal_.address.host();
        direct_ = context.resolver.lookUp(QStringLiteral("_xmpps-client._tcp.") + host, wakeUp_);
        plain_ = context.resolver.lookUp(QStringLiteral("_xmpp-client._tcp.") + host, wakeUp_);
    }
}

Dialer::~Dialer() = default;

void Dialer::tick(qint64 nowMs)
{
    nowMs_ = nowMs;
    if (state_ != State::Working)
        return;
    if (!planned_)
        return resolve();
    link_->tick(nowMs);
    if (link_->state() == StreamLink::State::Open) {
        state_ = State::Open;
    } else if (link_->state() == StreamLink::State::Closed) {
        noteFailure();
        tryNext();
    }
}

void Dialer::resolve()
{
    const bool answered = !direct_ || (direct_->isFinished() && plain_->isFinished());
    if (!answered && nowMs_ - startMs_ < dnsTimeoutMs)
        return;
    SrvAnswers answers;
    if (direct_ && direct_->isFinished())
        answers.direct = direct_->records();
    if (plain_ && plain_->isFinished())
        answers.plain = plain_->records();
    direct_.reset();
    plain_.reset();
    planned_ = true;
    plan_ = connectPlan(goal_.address, goal_.secure, answers);
    if (plan_.isEmpty())
        reason_ = linkWords::noService(goal_.address.host());
    tryNext();
}

void Dialer::tryNext()
{
    if (plan_.isEmpty())
        return fail(reason_);
    const auto candidate = plan_.takeFirst();
    link_ = std::make_shared<StreamLink>(
        StreamLink::Target{candidate, goal_.address.host(), goal_.secure || goal_.encryptedOnly, goal_.proxy},
        wakeUp_, nowMs_);
}

void Dialer::noteFailure()
{
    const auto end = link_->end();
    turnedAway_ &= end != StreamLink::End::NotReached && end != StreamLink::End::Lost &&
                   end != StreamLink::End::ByServer;
    if (end == StreamLink::End::Distrust)
        plan_.clear(); // The person said no to this server, not to one of its ports.
    if (link_->stage() < furthest_)
        return;
    furthest_ = link_->stage();
    reason_ = link_->reason();
}

void Dialer::fail(const QString& reason)
{
    reason_ = reason;
    state_ = State::Failed;
}
