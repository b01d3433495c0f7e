#pragma once

#include "engine/wire/auth/AuthRequest.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

struct Gsasl;
struct Gsasl_session;

// One SASL exchange (RFC 4422) as the client's side of it. Knows bytes, no XML.
class SaslClient
{
public:
    // The strongest of `offered` that may be used, or empty. PLAIN is left out unless `plainAllowed`.
    static QString choose(const QStringList& offered, bool plainAllowed);
    // The strongest, where the request lets it be used; it isn't asked before that matters.
    static QString choose(const QStringList& offered, const AuthRequest& request);

    static Proof proofOf(const QString& mechanism);

    SaslClient(const QString& mechanism, const QString& user, const QString& password);
    ~SaslClient();

    // The answer to a challenge; to be called first with nothing, for the initial response. None when the
    // exchange has failed: the server couldn't prove itself, or what it sent makes no sense.
    std::optional<QByteArray> step(const QByteArray& challenge);
    // The server keeps the password so weakly that answering would give it away.
    bool isTooWeak() const { return tooWeak_; }
    // Both sides are satisfied. For SCRAM (RFC 5802) that includes the server's signature.
    bool isComplete() const { return complete_; }

private:
    struct ContextDeleter {
        void operator()(Gsasl* context) const;
    };
    struct SessionDeleter {
        void operator()(Gsasl_session* session) const;
    };

    std::unique_ptr<Gsasl, ContextDeleter> context_;
    std::unique_ptr<Gsasl_session, SessionDeleter> session_;
    bool complete_ = false;
    bool tooWeak_ = false;
};
