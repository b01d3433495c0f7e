#include "engine/wire/session/SignIn.h"

#include "engine/Xml.h"
#include "engine/wire/socket/LinkWords.h"

namespace
{

constexpr qint64 silenceTimeoutMs = 30'000;

} // namespace

SignIn::SignIn(Account account, const DialContext& context, std::function<bool()> askPlain,
               std::shared_ptr<SafetyGuard> guard, qint64 nowMs)
    : account_(std::move(account)), askPlain_(std::move(askPlain)), guard_(std::move(guard)),
      dialer_(account_.goal, context, nowMs)
{
}

void SignIn::resume(const StreamManagement& management)
{
    resumeRequest_ = management.resumeRequest();
}

void SignIn::tick(qint64 nowMs)
{
    if (state_ != State::Working)
        return;
    dialer_.tick(nowMs);
    if (dialer_.state() == Dialer::State::Failed)
        fail(dialer_.reason());
    else if (dialer_.state() == Dialer::State::Open)
        negotiate(nowMs);
}

void SignIn::negotiate(qint64 nowMs)
{
    auto& link = *dialer_.link();
    link.tick(nowMs);
    while (state_ == State::Working && link.state() == StreamLink::State::Open) {
        if (!std::exchange(opened_, true)) {
            opened();
            continue;
        }
        const auto element = link.takeElement();
        if (!element)
            break;
        feed(*element);
    }
    if (state_ != State::Working)
        return;
    if (link.state() == StreamLink::State::Closed)
        return fail(link.reason());
    if (link.state() == StreamLink::State::Open && nowMs - link.lastHeardMs() > silenceTimeoutMs) {
        link.drop(linkWords::stalled(account_.domain()));
        fail(link.reason());
    }
}

void SignIn::opened()
{
    auto& link = *dialer_.link();
    if (authenticated_ && !resumeRequest_.isEmpty())
        return link.write(resumeRequest_);
    if (!auth_) {
        AuthRequest request{account_.user, account_.password, account_.domain(), account_.resource};
        request.encrypted = link.isEncrypted();
        request.verified = link.isVerified();
        request.askPlain = askPlain_;
        request.guard = guard_;
        auth_ = std::make_unique<StreamAuth>(std::move(request));
    }
    auth_->streamOpened(link.features(), link.header().id);
    adopt();
}

void SignIn::feed(const Stanza& element)
{
    if (authenticated_ && !resumeRequest_.isEmpty())
        return feedResumption(element);
    auth_->feed(element);
    adopt();
}

void SignIn::feedResumption(const Stanza& element)
{
    const std::string_view name = element.root().name();
    if (xml::xmlns(element.root()) != "urn:xmpp:sm:3")
        return;
    if (name == "failed" || name == "resumed")
        resumption_ = std::make_shared<Stanza>(xml::parsed(element.Xml()));
    if (name == "failed") {
        dialer_.link()->close();
        return fail(linkWords::sessionGone(account_.domain()));
    }
    if (name == "resumed")
        state_ = State::Resumed;
}

void SignIn::adopt()
{
    auto& link = *dialer_.link();
    // The connection was left while the person was asked.
    if (link.state() != StreamLink::State::Open)
        return;
    const auto texts = auth_->takeOutput();
    for (const auto& text : texts)
        link.write(text);
    switch (auth_->state()) {
    case StreamAuth::State::Working:
        return;
    case StreamAuth::State::RestartStream:
        authenticated_ = true;
        opened_ = false;
        return link.restartStream();
    case StreamAuth::State::Bound:
        state_ = State::Bound;
        return;
    case StreamAuth::State::Failed:
        break;
    }
    refusal_ = auth_->takeErrorStanza();
    link.close();
    fail(auth_->error());
    if (refusal_)
        state_ = State::Refused;
}

void SignIn::fail(const QString& reason)
{
    state_ = State::Failed;
    reason_ = reason;
}

bool SignIn::isFinal() const
{
    if (dialer_.state() == Dialer::State::Failed)
        return dialer_.wasTurnedAway();
    const auto end = link()->end();
    // A server that is starting or going closes streams, too.
    return end != StreamLink::End::Lost && end != StreamLink::End::NotReached &&
           end != StreamLink::End::ByServer;
}
