#include "engine/wire/auth/StreamAuth.h"

#include "engine/Xml.h"
#include "engine/wire/auth/LegacyAuth.h"
#include "engine/wire/auth/ResourceBinding.h"
#include "engine/wire/auth/SaslNegotiation.h"

StreamAuth::StreamAuth(AuthRequest request) : request_(std::move(request)) {}
StreamAuth::~StreamAuth() = default;

bool StreamAuth::offersStreamManagement(pugi::xml_node features)
{
    for (const auto sm : features.children("sm")) {
        if (xml::xmlns(sm) == "urn:xmpp:sm:3")
            return true;
    }
    return false;
}

void StreamAuth::streamOpened(pugi::xml_node features, const QString& streamId)
{
    if (state_ == State::Bound || state_ == State::Failed)
        return;
    state_ = State::Working;
    streamManagement_ = offersStreamManagement(features);
    if (authenticated_)
        enter(std::make_unique<ResourceBinding>(request_.resource, features));
    else
        authenticate(features, streamId);
}

void StreamAuth::authenticate(pugi::xml_node features, const QString& streamId)
{
    const auto mechanisms = SaslNegotiation::offered(features);
    const bool offersLegacy = !features || LegacyAuth::isOffered(features);
    // A digest goes before a word in clear: jabber:iq:auth may have one.
    const bool isInClear = !request_.encrypted && SaslClient::choose(mechanisms, false).isEmpty();
    if (!(isInClear && offersLegacy) && !SaslClient::choose(mechanisms, request_).isEmpty())
        return enter(std::make_unique<SaslNegotiation>(request_, mechanisms));
    if (offersLegacy && request_.mayUse(Proof::None))
        return enter(std::make_unique<LegacyAuth>(request_, streamId));
    failed(SaslClient::choose(mechanisms, true).isEmpty()
               ? tr("The server offers no way to sign in that this program knows.")
               : tr("The server takes the password only in clear, and the connection is not encrypted."));
}

// Whatever ended it, what the person decided is the reason to tell.
void StreamAuth::failed(const QString& reason)
{
    state_ = State::Failed;
    error_ = request_.wasGivenUp() ? tr("You were not signed in, because the connection is less safe than "
                                        "it was the last time.")
                                   : reason;
}

void StreamAuth::enter(std::unique_ptr<AuthPhase> phase)
{
    phase_ = std::move(phase);
    adopt();
}

void StreamAuth::feed(const Stanza& element)
{
    if (!phase_ || state_ != State::Working)
        return;
    phase_->feed(element);
    adopt();
}

void StreamAuth::adopt()
{
    output_ << phase_->takeOutput();
    if (phase_->proof() != Proof::None)
        proof_ = phase_->proof();
    if (phase_->outcome() == AuthPhase::Outcome::Failed) {
        failed(phase_->error());
        errorStanza_ = phase_->errorStanza();
    } else if (phase_->outcome() == AuthPhase::Outcome::Passed) {
        boundJid_ = phase_->boundJid();
        authenticated_ = true;
        state_ = boundJid_.isEmpty() ? State::RestartStream : State::Bound;
    }
}
