#pragma once

#include <QProcess>
#include <QSslCertificate>
#include <QTemporaryDir>

// Debian's Prosody on loopback, in a folder of its own and with a certificate that it signed itself. It is
// set up as it is shipped, save that it makes accounts for whoever asks and takes passwords by SCRAM alone.
class ProsodyServer
{
public:
    ~ProsodyServer();

    // Waits until the server takes connections. False when it doesn't; then `problem` says why.
    bool start();
    const QString& problem() const { return problem_; }
    // Ends it at once, as the loss of its machine would. What it stored is there at the next start.
    void kill();

    quint16 port() const { return port_; }
    QString address() const { return QStringLiteral("localhost:%1").arg(port_); }
    QString certificateFile() const { return path("server.crt"); }
    QByteArray fingerprint() const; // SHA-256

    // For accounts that aren't signed in: makes one, and puts two on each other's list, both seeing the
    // other.
    bool addAccount(const QString& name, const QString& password);
    bool befriend(const QString& one, const QString& other, const QString& group);
    bool forgetContacts(); // of all accounts
    bool hasAccount(const QString& name) const;

private:
    QString path(const char* name) const { return folder_.filePath(QLatin1String(name)); }
    QString accountFile(const QString& name) const;
    bool makeCertificate();
    bool writeConfiguration();
    bool fail(const QString& problem);

    QTemporaryDir folder_;
    QProcess process_;
    QString problem_;
    quint16 port_ = 0;
};
