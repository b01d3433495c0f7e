#pragma once

#include "engine/Stanza.h"
#include "engine/wire/auth/AuthRequest.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QList>
#include <QString>

#include <memory>

class AuthPhase;

// From the stream's opening to a bound session, without a socket: elements in, texts out. SASL (RFC 6120, 6)
// comes first, then resource binding and, where a server insists, the session of RFC 3921; jabber:iq:auth
// (XEP-0078) only on a server that offers it or that speaks no features at all. There it comes before a
// password in clear.
class StreamAuth
{
    Q_DECLARE_TR_FUNCTIONS(StreamAuth)

public:
    enum class State { Working, RestartStream, Bound, Failed };

    explicit StreamAuth(AuthRequest request);
    ~StreamAuth();

    // The stream is open. `features` is <features/>, or a null node on a stream without version 1.0.
    // `streamId` is the id of the stream's header, which the digest of jabber:iq:auth needs. To be called
    // again after each restart that was asked for; STARTTLS has been dealt with before.
    void streamOpened(pugi::xml_node features, const QString& streamId = {});
    // Every top-level element until Bound or Failed. An element that fits nothing is ignored.
    void feed(const Stanza& element);
    // Texts to write to the stream, each one whole element.
    QList<QByteArray> takeOutput() { return std::exchange(output_, {}); }

    State state() const { return state_; }
    // The full JID that the server gave; empty before Bound.
    QString boundJid() const { return boundJid_; }
    // Whether the last features held stream management (XEP-0198, urn:xmpp:sm:3).
    bool offersStreamManagement() const { return streamManagement_; }
    static bool offersStreamManagement(pugi::xml_node features);
    // How the password was proven.
    Proof proof() const { return proof_; }
    // Why it failed: a sentence for a person.
    QString error() const { return error_; }
    // After a refusal of the account, once: the jabber:iq:auth error that the client expects. Else null: then
    // the failure is the server's or the connection's, and asking to register an account would lead nowhere.
    std::shared_ptr<Stanza> takeErrorStanza() { return std::exchange(errorStanza_, nullptr); }

private:
    void authenticate(pugi::xml_node features, const QString& streamId);
    void enter(std::unique_ptr<AuthPhase> phase);
    void adopt();
    void failed(const QString& reason);

    AuthRequest request_;
    std::unique_ptr<AuthPhase> phase_;
    State state_ = State::Working;
    bool authenticated_ = false;
    bool streamManagement_ = false;
    QString boundJid_;
    Proof proof_ = Proof::None;
    QString error_;
    std::shared_ptr<Stanza> errorStanza_;
    QList<QByteArray> output_;
};
