#pragma once

#include "engine/wire/auth/Account.h"
#include "engine/wire/auth/StreamAuth.h"
#include "engine/wire/session/StreamManagement.h"

#include <functional>
#include <memory>

// One attempt to sign in: from the server's address to a bound stream, or to the session that stood before.
class SignIn
{
public:
    enum class State {
        Working,
        Bound,
        Resumed,
        Refused, // the account or its password: takeRefusal()
        Failed,
    };

    // `askPlain` tells whether the password may cross an unencrypted stream; it is asked only when needed.
    // `guard` watches over what the account had.
    SignIn(Account account, const DialContext& context, std::function<bool()> askPlain,
           std::shared_ptr<SafetyGuard> guard, qint64 nowMs);
    // Takes up the session that `management` knows of instead of beginning one.
    void resume(const StreamManagement& management);

    void tick(qint64 nowMs);
    State state() const { return state_; }
    // The link under way, or the one that stands; null before there is one.
    const std::shared_ptr<StreamLink>& link() const { return dialer_.link(); }
    // Of the sign-in that has come about.
    Safety safety() const { return {link()->isEncrypted(), link()->isVerified(), auth_->proof()}; }
    QString boundJid() const { return auth_->boundJid(); }
    bool offersStreamManagement() const { return auth_->offersStreamManagement(); }
    // The server's answer to the request to resume; null before it, and without one.
    const std::shared_ptr<Stanza>& resumption() const { return resumption_; }
    std::shared_ptr<Stanza> takeRefusal() { return std::exchange(refusal_, nullptr); }
    const QString& reason() const { return reason_; }
    // Failed in a way that another attempt won't mend.
    bool isFinal() const;

private:
    void negotiate(qint64 nowMs);
    void opened();
    void feed(const Stanza& element);
    void feedResumption(const Stanza& element);
    void adopt();
    void fail(const QString& reason);

    Account account_;
    std::function<bool()> askPlain_;
    std::shared_ptr<SafetyGuard> guard_;
    Dialer dialer_;
    std::unique_ptr<StreamAuth> auth_;
    QByteArray resumeRequest_;
    std::shared_ptr<Stanza> resumption_;
    std::shared_ptr<Stanza> refusal_;
    State state_ = State::Working;
    QString reason_;
    // The stream's opening has been passed on.
    bool opened_ = false;
    bool authenticated_ = false;
};
