#pragma once

#include "sandbox/Connection.h"
#include "sandbox/World.h"

namespace sandbox
{

// One stanza on its way through the handlers: who sent it, and how it is answered.
struct Call {
    World& world;
    Connection& client;
    const Stanza& stanza;
    const Script& script;

    // The account that is signed in; it exists as long as the connection is bound.
    Account& owner() const { return *world.account(client.user()); }

    // A result, from the address asked; with content where one is given.
    void result() const;
    void result(const Element& content) const { result(content.xml()); }
    void result(const QString& xml) const;
    // `<error code="404">text</error>`, as old servers wrote it, behind the request's own element.
    void error(int code, const QString& text) const;
    void notImplemented() const { error(501, QStringLiteral("Not Implemented")); }
    void notFound() const { error(404, QStringLiteral("Not Found")); }

    // The stanza as it goes on to another client.
    Element forwarded(const QString& from, const QString& to) const;

private:
    Element answer(const char* type) const;
};

using Handler = void (*)(const Call&);

} // namespace sandbox
