#pragma once

#include "engine/Safety.h"
#include "engine/Stanza.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>

// One stage on the way to a bound session. It writes its first texts when it is made, then lives on what is
// fed.
class AuthPhase
{
public:
    enum class Outcome { Working, Passed, Failed };

    virtual ~AuthPhase() = default;
    // An element that this stage doesn't wait for changes nothing.
    virtual void feed(const Stanza& element) = 0;

    QList<QByteArray> takeOutput() { return std::exchange(output_, {}); }
    Outcome outcome() const { return outcome_; }
    // The full JID, when this stage was the one that yields it.
    const QString& boundJid() const { return boundJid_; }
    const QString& error() const { return error_; }
    // How the password was proven last.
    Proof proof() const { return proof_; }
    // The error for the client when the server refused the account; else null.
    std::shared_ptr<Stanza> errorStanza() const { return errorStanza_; }

protected:
    void write(const QString& text) { output_ << text.toUtf8(); }
    void pass(const QString& boundJid = {})
    {
        outcome_ = Outcome::Passed;
        boundJid_ = boundJid;
    }
    void proveBy(Proof proof) { proof_ = proof; }
    void fail(const QString& sentence)
    {
        outcome_ = Outcome::Failed;
        error_ = sentence;
    }
    // The server refuses the account: the client gets `stanza`, the person its text.
    void refuse(const QString& sentence, std::shared_ptr<Stanza> stanza)
    {
        fail(sentence);
        errorStanza_ = std::move(stanza);
    }

private:
    Outcome outcome_ = Outcome::Working;
    QString boundJid_;
    QString error_;
    Proof proof_ = Proof::None;
    std::shared_ptr<Stanza> errorStanza_;
    QList<QByteArray> output_;
};
