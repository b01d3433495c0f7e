#pragma once

#include <QString>

#include <functional>

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

    bool mayShowPassword() const { return encrypted || plainAllowed || (askPlain && askPlain()); }
};
