#include "engine/wire/auth/AuthPhase.h"

void AuthPhase::pass(const QString& boundJid)
{
    outcome_ = Outcome::Passed;
    boundJid_ = boundJid;
}

void AuthPhase::fail(const QString& sentence)
{
    outcome_ = Outcome::Failed;
    error_ = sentence;
}

void AuthPhase::refuse(const QString& sentence, std::shared_ptr<Stanza> stanza)
{
    fail(sentence);
    errorStanza_ = std::move(stanza);
}
