#pragma once

#include "engine/wire/auth/StreamAuth.h"

#include <QStringList>
#include <gsasl.h>

// <mechanisms/> with these names.
QString mechanisms(const QStringList& names);

// The server's side of a sign-in: it reads what StreamAuth wrote, and feeds answers as text.
class AuthPeer
{
public:
    // By default of juliet of capulet.example with the password "r0m30", over an encrypted stream.
    explicit AuthPeer(AuthRequest request = {"juliet", "r0m30", "capulet.example", "balcony", true, false})
        : auth(std::move(request))
    {
    }
    // The same, with a stream open that offers these mechanisms.
    explicit AuthPeer(const QStringList& offered) : AuthPeer() { open(mechanisms(offered)); }

    // Opens a stream with these children of <features/>; a null text opens one without features.
    void open(const QString& features, const QString& streamId = {});
    void feed(const QString& xml);
    // What was written since the last call, parsed; a null node for nothing. Lives until the next call.
    pugi::xml_node written();
    QString writtenText();

    StreamAuth auth;

private:
    std::unique_ptr<pugi::xml_document> features_;
    std::unique_ptr<pugi::xml_document> written_;
};

// A SASL server that knows one account's password.
class SaslServer
{
public:
    SaslServer(const QString& mechanism, const QByteArray& user, const QByteArray& password);
    ~SaslServer();
    Q_DISABLE_COPY(SaslServer)

    // The server's next word to the client's `base64`, in base64. `ok` tells that it accepts the client.
    QByteArray step(const QByteArray& base64);
    bool ok() const { return ok_; }

private:
    int provide(Gsasl_session* asking, Gsasl_property property) const;

    QByteArray user_;
    QByteArray password_;
    Gsasl* context_ = nullptr;
    Gsasl_session* session_ = nullptr;
    bool ok_ = false;
};
