#pragma once

#include "engine/Safety.h"

#include <functional>

// Sees to it that an account gives up nothing that it had, unless the person agrees. Lives as long as a
// connection, through all attempts at it.
class SafetyGuard
{
public:
    // Asks the person; may run a nested event loop, in which the guard may lose its owner.
    using Ask = std::function<bool(const Safety& before, const Safety& now)>;

    // `before` is what the account had.
    SafetyGuard(const Safety& before, Ask ask) : needed_(before), ask_(std::move(ask)) {}

    // Whether a sign-in may go on like `now`. What was agreed to is not asked for again, and a refusal ends
    // it all.
    bool allows(const Safety& now)
    {
        if (wasRefused_ || !now.isLessThan(needed_))
            return !wasRefused_;
        wasRefused_ = !ask_ || !ask_(needed_, now);
        if (!wasRefused_) {
            needed_.encrypted &= now.encrypted;
            needed_.proof = now.proof == Proof::None ? needed_.proof : now.proof;
        }
        return !wasRefused_;
    }
    bool wasRefused() const { return wasRefused_; }

    // Whether a certificate that doesn't verify is less than there was.
    bool needsVerified() const { return needed_.verified; }
    void acceptUnverified() { needed_.verified = false; }

    // The session stands: from now on nobody is asked, and what it has is what it must have.
    void settle(const Safety& reached)
    {
        needed_ = reached;
        ask_ = {};
    }

private:
    Safety needed_;
    Ask ask_;
    bool wasRefused_ = false;
};
