#include "engine/wire/session/Connection.h"

#include "engine/ConnectionHost.h"
#include "engine/Diagnostics.h"
#include "engine/wire/socket/LinkWords.h"

namespace
{

// How long a lost session is tried for, and how often.
constexpr qint64 resumeForMs = 60'000;
constexpr qint64 retryAfterMs = 3'000;
// While a modal box keeps trigger() from being called, the session lives on at this pace.
constexpr int beatMs = 1'000;

} // namespace

Connection::Connection(ConnectionHost& host, std::unique_ptr<Resolver> resolver, Clock clock)
    : host_(host), resolver_(std::move(resolver)), clock_(std::make_shared<AskingClock>(std::move(clock)))
{
    sinceTrigger_.start();
    heart_.setInterval(beatMs);
    QObject::connect(&heart_, &QTimer::timeout, &heart_, [this] { beat(); });
}

void Connection::setQueue(std::shared_ptr<StanzaQueue> queue)
{
    queue_ = std::move(queue);
    session_ = std::make_unique<LiveSession>(queue_);
}

void Connection::connectTo(const Account& account)
{
    leave();
    // What is left of the connection before says nothing about this one.
    closeIsDue_ = false;
    queue_->clearInbound();
    const bool goesOn = std::exchange(accountMade_, false) && account.user == account_.user &&
                        account.domain() == account_.domain();
    account_ = account;
    if (!goesOn)
        acceptedCertificate_.clear();
    plainAnswer_ = std::make_shared<std::optional<bool>>();
    asked_ = std::make_shared<bool>();
    guard_ = makeGuard();
    phase_ = Phase::SigningIn;
    dial();
    queue_->wakeUp();
}

void Connection::dial()
{
    signIn_ = std::make_shared<SignIn>(account_, dialContext(), askPlain(), guard_, clock_->now());
}

// Nobody is asked in the middle of a session.
void Connection::dialAgain()
{
    const auto agreed = [answer = plainAnswer_] { return answer->value_or(false); };
    signIn_ = std::make_shared<SignIn>(account_, dialContext(), agreed, guard_, clock_->now());
    signIn_->resume(session_->management());
}

// A link may live longer than this object's interest in it, so it holds the queue alone.
DialContext Connection::dialContext() const
{
    return {*resolver_, [queue = queue_] { queue->wakeUp(); }};
}

// Asks once a connection, and not before it matters.
std::function<bool()> Connection::askPlain() const
{
    return
        [&host = host_, clock = clock_, server = account_.domain(), answer = plainAnswer_, asked = asked_] {
            if (!*answer) {
                *answer = clock->during([&] { return host.allowPlainPassword(server); });
                *asked = true;
            }
            return **answer;
        };
}

// A certificate that was accepted for good was seen under TLS, even if no sign-in came about.
std::shared_ptr<SafetyGuard> Connection::makeGuard() const
{
    const auto before = host_.lastSafety(account_.bareJid())
                            .value_or(Safety{!host_.pinnedCertificate(account_.domain()).isEmpty()});
    return std::make_shared<SafetyGuard>(before, [&host = host_, clock = clock_, account = account_.bareJid(),
                                                  plain = plainAnswer_,
                                                  asked = asked_](const Safety& had, const Safety& now) {
        const bool agreed = clock->during([&] { return host.allowLess(account, had, now); });
        *asked |= agreed;
        // Who agreed to that isn't asked about the password in clear once more.
        if (agreed && !now.encrypted && now.proof == Proof::Plain)
            *plain = true;
        return agreed;
    });
}

void Connection::leave()
{
    if (phase_ == Phase::Idle)
        return;
    const bool wasOnline = isOnline();
    if (phase_ == Phase::Online && session_->link().state() == StreamLink::State::Open)
        leaving_ = session_->leave();
    else if (registration_)
        leaving_ = registration_->link();
    else if (signIn_)
        leaving_ = signIn_->link();
    if (leaving_)
        leaving_->close();
    signIn_.reset();
    registration_.reset();
    queue_->clearInbound();
    if (wasOnline)
        session_->giveBack();
    queue_->clearOutbound();
    phase_ = Phase::Idle;
    closeIsDue_ = true;
    heart_.stop();
    queue_->wakeUp();
}

void Connection::trigger()
{
    if (busy_ || !queue_)
        return;
    const std::weak_ptr<char> life = life_;
    busy_ = true;
    sinceTrigger_.restart();
    const auto before = phase_;
    step();
    if (life.expired())
        return;
    busy_ = false;
    // What follows need not wait for the timer.
    if (phase_ != before || (phase_ == Phase::Online && session_->isBehind()))
        queue_->wakeUp();
}

void Connection::step()
{
    waitForLeaving();
    switch (phase_) {
    case Phase::Idle:
        return dropQueued();
    case Phase::SigningIn:
        dropQueued();
        return signIn();
    case Phase::Refused:
        return awaitRegistration();
    case Phase::Registering:
        dropQueued();
        return registering();
    case Phase::Online:
        return online();
    case Phase::Resuming:
        return resuming();
    }
}

void Connection::waitForLeaving()
{
    if (leaving_) {
        leaving_->tick(clock_->now());
        if (leaving_->state() != StreamLink::State::Closed)
            return;
        leaving_.reset();
    }
    if (std::exchange(closeIsDue_, false))
        queue_->deliver(Stanza::notice("close"));
}

// Null when a question has ended in a new attempt, or in no connection at all.
std::shared_ptr<SignIn> Connection::tickedSignIn()
{
    const auto attempt = signIn_;
    const std::weak_ptr<char> life = life_;
    attempt->tick(clock_->now());
    return life.expired() || signIn_ != attempt ? nullptr : attempt;
}

void Connection::signIn()
{
    const auto attempt = tickedSignIn();
    if (!attempt)
        return;
    if (attempt->state() != SignIn::State::Working)
        signInEnded();
    else if (attempt->link() && attempt->link()->state() == StreamLink::State::Judging)
        judge(attempt->link());
}

void Connection::signInEnded()
{
    const auto attempt = std::exchange(signIn_, nullptr);
    switch (attempt->state()) {
    case SignIn::State::Bound:
        phase_ = Phase::Online;
        heart_.start();
        // What the session has is not given up when it is taken up again.
        account_.goal.encryptedOnly = attempt->link()->isEncrypted();
        guard_->settle(attempt->safety());
        host_.keepSafety(account_.bareJid(), attempt->safety());
        return session_->begin(attempt->link(), {account_.fullJid(), attempt->boundJid(), account_.domain()},
                               attempt->offersStreamManagement());
    case SignIn::State::Refused:
        // The client may answer with a registration, or another attempt.
        phase_ = Phase::Refused;
        queue_->deliver(attempt->takeRefusal());
        return host_.connectionProgress(attempt->reason());
    default:
        // The server may have gone while the person thought; what they said holds.
        if (std::exchange(*asked_, false) && !attempt->isFinal())
            return dial();
        return finish(attempt->reason());
    }
}

void Connection::judge(const std::shared_ptr<StreamLink>& link)
{
    const auto held = link;
    auto info = held->certificate();
    if (isKnown(info))
        return held->trustCertificate();
    using Before = CertificateInfo::Before;
    info.before = guard_->needsVerified()                           ? Before::Verified
                  : !host_.pinnedCertificate(info.server).isEmpty() ? Before::Pinned
                                                                    : Before::Nothing;
    if (info.sha256.isEmpty())
        return held->refuseCertificate();
    const std::weak_ptr<char> life = life_;
    const auto clock = clock_;
    const auto answer = clock->during([&] { return host_.askCertificate(info); });
    if (life.expired() || held->state() != StreamLink::State::Judging)
        return;
    if (answer == CertificateAnswer::Refuse)
        return held->refuseCertificate();
    *asked_ = true;
    guard_->acceptUnverified();
    acceptedCertificate_ = info.sha256;
    held->trustCertificate();
    if (answer != CertificateAnswer::AcceptAlways)
        return;
    host_.pinCertificate(info.server, info.sha256);
    // It need not be asked for again, whatever comes of the sign-in.
    if (auto had = host_.lastSafety(account_.bareJid()); had && std::exchange(had->verified, false))
        host_.keepSafety(account_.bareJid(), *had);
}

bool Connection::isKnown(const CertificateInfo& info) const
{
    const bool pinWillDo = !guard_->needsVerified();
    return !info.sha256.isEmpty() && (info.sha256 == acceptedCertificate_ ||
                                      (pinWillDo && info.sha256 == host_.pinnedCertificate(info.server)));
}

void Connection::online()
{
    session_->pump(clock_->now());
    const auto& link = session_->link();
    if (link.state() != StreamLink::State::Closed)
        return;
    heart_.stop();
    if (!session_->canResume())
        return finish(link.reason());
    qCInfo(lcEngine) << "connection lost, taking up the session again";
    phase_ = Phase::Resuming;
    lostMs_ = clock_->now();
    dialAgain();
}

void Connection::resuming()
{
    const qint64 now = clock_->now();
    if (!signIn_) {
        if (now >= retryMs_)
            dialAgain();
        return;
    }
    const auto attempt = tickedSignIn();
    if (!attempt)
        return;
    const auto link = attempt->link();
    if (link && link->state() == StreamLink::State::Judging) {
        // Nobody is asked in the middle of a session: a certificate that is not the one known ends it.
        return isKnown(link->certificate()) ? link->trustCertificate() : link->refuseCertificate();
    }
    if (attempt->state() == SignIn::State::Working)
        return;
    signIn_.reset();
    if (attempt->state() == SignIn::State::Resumed) {
        phase_ = Phase::Online;
        heart_.start();
        return session_->resume(attempt->link(), *attempt->resumption());
    }
    if (attempt->resumption())
        session_->notResumed(*attempt->resumption());
    retryMs_ = now + retryAfterMs;
    if (attempt->isFinal() || now - lostMs_ > resumeForMs)
        finish(attempt->reason());
}

void Connection::awaitRegistration()
{
    for (const auto& stanza : queue_->takeOutbound()) {
        if (!RegistrationRun::isRequest(stanza)) {
            qCWarning(lcEngine).noquote() << "not connected, dropped:" << masked(QString::fromUtf8(stanza));
            continue;
        }
        registration_ = std::make_shared<RegistrationRun>(account_, stanza, dialContext(), askPlain(), guard_,
                                                          clock_->now());
        phase_ = Phase::Registering;
    }
}

void Connection::registering()
{
    const auto run = registration_;
    const std::weak_ptr<char> life = life_;
    run->tick(clock_->now());
    if (life.expired() || registration_ != run)
        return;
    if (run->link() && run->link()->state() == StreamLink::State::Judging)
        return judge(run->link());
    auto result = run->takeResult();
    if (!result)
        return;
    accountMade_ = result->IqFields().Type() == u"result";
    queue_->deliver(std::move(result));
    leaving_ = run->link();
    registration_.reset();
    phase_ = Phase::Refused;
}

void Connection::dropQueued()
{
    if (!queue_->hasOutbound())
        return;
    for (const auto& stanza : queue_->takeOutbound())
        qCWarning(lcEngine).noquote() << "not connected, dropped:" << masked(QString::fromUtf8(stanza));
}

void Connection::finish(const QString& reason)
{
    if (isOnline())
        session_->giveBack();
    phase_ = Phase::Idle;
    queue_->clearOutbound();
    queue_->deliver(Stanza::notice("close"));
    if (!reason.isEmpty())
        host_.connectionProgress(reason);
}

void Connection::beat()
{
    if (!busy_ && phase_ == Phase::Online && sinceTrigger_.elapsed() >= beatMs)
        session_->pump(clock_->now());
}
