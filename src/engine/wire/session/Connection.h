#pragma once

#include "engine/wire/auth/RegistrationRun.h"
#include "engine/wire/session/AskingClock.h"
#include "engine/wire/session/LiveSession.h"
#include "engine/wire/session/SignIn.h"

#include <QElapsedTimer>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class ConnectionHost;

// What the gateway is doing: signing in, holding a session, taking it up again after a loss, making an
// account, leaving. Questions to the person are asked from trigger() alone, and may run a nested event loop
// in which anything is called, the destructor included.
class Connection
{
public:
    using Clock = std::function<qint64()>;

    Connection(ConnectionHost& host, std::unique_ptr<Resolver> resolver, Clock clock);

    void setQueue(std::shared_ptr<StanzaQueue> queue);
    void connectTo(const Account& account);
    void leave();
    bool isOnline() const { return phase_ == Phase::Online || phase_ == Phase::Resuming; }
    bool isEncrypted() const { return isOnline() && session_->link().isEncrypted(); }
    void trigger();

private:
    enum class Phase { Idle, SigningIn, Refused, Registering, Online, Resuming };

    void step();
    void dial();
    void dialAgain();
    DialContext dialContext() const;
    std::shared_ptr<SignIn> tickedSignIn();
    void signIn();
    void signInEnded();
    void online();
    void resuming();
    void awaitRegistration();
    void registering();
    void judge(const std::shared_ptr<StreamLink>& link);
    void waitForLeaving();
    void dropQueued();
    void finish(const QString& reason);
    void beat();
    std::function<bool()> askPlain() const;
    std::shared_ptr<SafetyGuard> makeGuard() const;
    bool isKnown(const CertificateInfo& info) const;

    ConnectionHost& host_;
    std::unique_ptr<Resolver> resolver_;
    std::shared_ptr<AskingClock> clock_;
    std::shared_ptr<StanzaQueue> queue_;
    Phase phase_ = Phase::Idle;
    Account account_;
    std::shared_ptr<SignIn> signIn_;
    std::shared_ptr<RegistrationRun> registration_;
    std::unique_ptr<LiveSession> session_;
    // What the person said for this connection. An answer may take longer than the server waits.
    std::shared_ptr<bool> asked_ = std::make_shared<bool>();
    QByteArray acceptedCertificate_;
    bool accountMade_ = false; // its sign-in goes on where the person agreed to go
    std::shared_ptr<std::optional<bool>> plainAnswer_ = std::make_shared<std::optional<bool>>();
    std::shared_ptr<SafetyGuard> guard_;
    qint64 lostMs_ = 0;
    qint64 retryMs_ = 0;
    std::shared_ptr<StreamLink> leaving_;
    bool closeIsDue_ = false;
    bool busy_ = false;
    // Ends with this object.
    std::shared_ptr<char> life_ = std::make_shared<char>();
    QTimer heart_;
    QElapsedTimer sinceTrigger_;
};
