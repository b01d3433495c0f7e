#pragma once

#include "engine/Safety.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

// A certificate that could not be verified, as it is shown to the person.
struct CertificateInfo {
    QString server;
    QString subject;
    QString issuer;
    QDateTime notBefore;
    QDateTime notAfter;
    QByteArray sha256; // 32 bytes
    QStringList problems;
    // What the person may rely on until now.
    enum class Before { Nothing, Verified, Pinned } before = Before::Nothing;
};

enum class CertificateAnswer { Refuse, AcceptOnce, AcceptAlways };

// What the engine tells and asks the person while a connection is made. Every call comes from inside Trigger;
// an answer may run a nested event loop.
class ConnectionHost
{
public:
    virtual ~ConnectionHost() = default;
    // A sentence for the sign-in progress window: what goes on, or what went wrong.
    virtual void connectionProgress(const QString& text) = 0;
    virtual CertificateAnswer askCertificate(const CertificateInfo& info) = 0;
    // Whether the password may cross an unencrypted stream in clear to this server.
    virtual bool allowPlainPassword(const QString& server) = 0;
    // SHA-256 of the certificate that the person accepted for good for this server; empty for none.
    virtual QByteArray pinnedCertificate(const QString& server) = 0;
    virtual void pinCertificate(const QString& server, const QByteArray& sha256) = 0;
    // How an account, a bare JID, signed in the last time; null when it never did.
    virtual std::optional<Safety> lastSafety(const QString& account) = 0;
    virtual void keepSafety(const QString& account, const Safety& reached) = 0;
    // Whether the account may sign in with less than it had.
    virtual bool allowLess(const QString& account, const Safety& before, const Safety& now) = 0;
};
