#pragma once

#include "engine/wire/auth/Account.h"
#include "engine/wire/auth/AccountRegistration.h"

#include <functional>
#include <memory>

// The making of an account on a stream of its own, which nobody has signed in on.
class RegistrationRun
{
public:
    // `stanza` is the client's request (UTF-8).
    RegistrationRun(Account account, QByteArray stanza, const DialContext& context,
                    std::function<bool()> askPlain, std::shared_ptr<SafetyGuard> guard, qint64 nowMs);
    // Whether `stanza` is the request to make an account.
    static bool isRequest(const QByteArray& stanza);

    void tick(qint64 nowMs);
    const std::shared_ptr<StreamLink>& link() const { return dialer_.link(); }
    // The outcome, once: an iq with the request's id.
    std::shared_ptr<Stanza> takeResult();

private:
    void begin();
    void converse(qint64 nowMs);
    void fail(const QString& reason);
    void writeOutput();

    Account account_;
    QByteArray stanza_;
    std::function<bool()> askPlain_;
    std::shared_ptr<SafetyGuard> guard_;
    Dialer dialer_;
    std::unique_ptr<AccountRegistration> registration_;
    bool opened_ = false;
};
