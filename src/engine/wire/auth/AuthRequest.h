#pragma once

#include "engine/wire/auth/SafetyGuard.h"

#include <QString>

#include <functional>
#include <memory>

// Whom to sign in, where, and what the connection allows.
struct AuthRequest {
    QString user;
    QString password;
    QString domain;
    // What the person asked for; the server may give another one.
    QString resource;
    bool encrypted = false;
    // The person agreed that the password may cross an unencrypted stream.
    bool plainAllowed = false;
    // Asks the person; called only when nothing but the password in clear is left. May run a nested event
    // loop.
    std::function<bool()> askPlain = {};
    // The stream's certificate was verified by name.
    bool verified = false;
    // What the account had must be there, or agreed to; null where nothing was.
    std::shared_ptr<SafetyGuard> guard = {};

    // Whether the sign-in may go on with this proof; nobody is asked before that matters.
    bool mayUse(Proof proof) const
    {
        return (!guard || guard->allows({encrypted, verified, proof})) &&
               (proof != Proof::Plain || mayShowPassword());
    }
    bool wasGivenUp() const { return guard && guard->wasRefused(); }
    bool mayShowPassword() const { return encrypted || plainAllowed || (askPlain && askPlain()); }
};
