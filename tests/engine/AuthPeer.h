#pragma once

#include "engine/wire/auth/StreamAuth.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <pugixml.hpp>

#include <memory>

// The server's side of a sign-in: it reads what StreamAuth wrote, and feeds answers as text.
class AuthPeer
{
public:
    explicit AuthPeer(AuthRequest request = standardRequest()) : auth(std::move(request)) {}
    // juliet of capulet.example with the password "r0m30", over an encrypted stream.
    static AuthRequest standardRequest();

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

// <mechanisms/> with these names.
QString mechanisms(const QStringList& names);

// A SASL server that knows one account's password.
class SaslServer
{
public:
    SaslServer(const QString& mechanism, const QByteArray& user, const QByteArray& password);
    ~SaslServer();

    // The server's next word to the client's `base64`, in base64. `ok` tells that it accepts the client.
    QByteArray step(const QByteArray& base64);
    bool ok() const { return ok_; }

private:
    class Private;
    std::unique_ptr<Private> d_;
    bool ok_ = false;
};
