#pragma once

#include "engine/ConnectionHost.h"
#include "engine/wire/socket/StreamParser.h"
#include "engine/wire/socket/Transport.h"

#include <QCoreApplication>

#include <functional>

// One connection to a server with a stream on it: TCP, TLS as wanted and offered, the opening tags, the
// features. Driven by tick(); nothing blocks.
class StreamLink
{
    Q_DECLARE_TR_FUNCTIONS(StreamLink)

public:
    struct Target {
        Candidate candidate;
        QString domain;
        bool tlsRequired = false;
        ProxyServer proxy;
    };
    enum class State {
        Connecting,
        Judging, // the certificate has problems: trustCertificate() or refuseCertificate() goes on
        Opening,
        Open,
        Closing,
        Closed,
    };
    // Who ended it, and how far it had come. A refused connection is one that wasn't reached: servers
    // restart.
    enum class End { None, NotReached, Refused, Lost, ByServer, Breach, Distrust, Wanted };

    // `wakeUp` is called when there is news for the next tick().
    StreamLink(Target target, const std::function<void()>& wakeUp, qint64 nowMs);

    void tick(qint64 nowMs);
    State state() const { return state_; }
    // A sentence for a person, once it is Closed.
    const QString& reason() const { return reason_; }
    End end() const { return end_; }
    // How far it came; of several failures the furthest is the one to tell.
    int stage() const { return stage_; }

    CertificateInfo certificate() const;
    void trustCertificate();
    void refuseCertificate();

    bool isEncrypted() const { return transport_.isEncrypted(); }
    // Encrypted, with a certificate that nobody had to judge.
    bool isVerified() const { return isEncrypted() && transport_.certificateErrors().isEmpty(); }
    const StreamHeader& header() const { return parser_.header(); }
    // Null on a stream without version 1.0.
    pugi::xml_node features() const { return features_ ? features_->root() : pugi::xml_node(); }
    // How many top-level elements were left out since the last call.
    int takeSkipped() { return parser_.takeSkipped(); }
    // The next top-level element while Open; null when nothing whole has arrived.
    std::shared_ptr<Stanza> takeElement();
    void write(const QByteArray& bytes) { transport_.write(bytes); }
    // The other end takes nothing in: whoever writes should wait, and read no more that wants an answer.
    bool isClogged() const { return transport_.unsent() > mostUnsent; }
    // A new stream on the same connection, as after SASL: Opening until it stands.
    void restartStream();
    // When bytes last arrived.
    qint64 lastHeardMs() const { return heardMs_; }

    // Ends the stream politely: what is written is sent, the server's own end is awaited for a while.
    void close();
    // The connection is taken for lost.
    void drop(const QString& reason);

private:
    enum class Step { Header, Features, Proceed, Handshake };
    static constexpr qint64 mostUnsent = 1024 * 1024;

    void connecting();
    void opening();
    void handle(const Stanza& element);
    void handleFeatures(const Stanza& element);
    void startHandshake();
    void judge();
    void openStream();
    StreamParser::Event nextEvent();
    void endedByServer(const Stanza* error);
    void lost();
    void breach();
    void fail(End end, const QString& reason);

    Target target_;
    Transport transport_;
    StreamParser parser_;
    std::shared_ptr<Stanza> element_;
    std::shared_ptr<Stanza> features_;
    State state_ = State::Connecting;
    Step step_ = Step::Header;
    End end_ = End::None;
    QString reason_;
    int stage_ = 0;
    qint64 nowMs_;
    qint64 startMs_;
    qint64 heardMs_;
};
