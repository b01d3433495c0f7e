#pragma once

#include "support/Files.h"

#include <QCryptographicHash>
#include <QProcess>
#include <QSslCertificate>
#include <QTemporaryDir>

// Debian's Prosody on loopback, in a folder of its own and with a certificate that it signed itself. It is
// set up as it is shipped, save that it makes accounts for whoever asks and takes passwords by SCRAM alone.
class ProsodyServer
{
public:
    ~ProsodyServer() { kill(); }

    // Waits until the server takes connections. False when it doesn't; then `problem` says why.
    bool start();
    const QString& problem() const { return problem_; }
    // Ends it at once, as the loss of its machine would. What it stored is there at the next start.
    void kill()
    {
        process_.kill();
        process_.waitForFinished();
    }

    quint16 port() const { return port_; }
    QString address() const { return QStringLiteral("localhost:%1").arg(port_); }
    QString certificateFile() const { return path("server.crt"); }
    QByteArray fingerprint() const
    {
        return QSslCertificate(files::read(certificateFile())).digest(QCryptographicHash::Sha256);
    }

    // For accounts that aren't signed in: makes one, and puts two on each other's list, both seeing the
    // other.
    void addAccount(const QString& name, const QString& password)
    {
        files::write(accountFile(name), "return { [\"password\"] = \"" + password.toUtf8() + "\"; };\n");
    }
    void befriend(const QString& one, const QString& other, const QString& group);
    bool forgetContacts()
    {
        return QDir(path("data/localhost/roster")).removeRecursively();
    } // of all accounts
    bool hasAccount(const QString& name) const { return QFile::exists(accountFile(name)); }

private:
    QString path(const char* name) const { return folder_.filePath(QLatin1String(name)); }
    QString accountFile(const QString& name) const
    {
        return path("data/localhost/accounts/") + name + ".dat";
    }
    bool makeCertificate();
    bool fail(const QString& problem)
    {
        problem_ = problem;
        return false;
    }

    QTemporaryDir folder_;
    QProcess process_;
    QString problem_;
    quint16 port_ = 0;
};
