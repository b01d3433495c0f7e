#include "support/ProsodyServer.h"

#include "support/ChildProcess.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

namespace
{

constexpr int patienceMs = 20'000;

constexpr const char* configuration = R"(
run_as_root = true
daemonize = false
pidfile = "@DIR@/prosody.pid"
data_path = "@DIR@/data"
interfaces = { "127.0.0.1" }
c2s_ports = { @PORT@ }
c2s_direct_tls_ports = {}
s2s_ports = {}
modules_enabled = {
    "roster", "saslauth", "tls", "disco", "private", "vcard_legacy", "vcard4", "pep", "register", "ping", "time",
    "version", "blocklist", "carbons", "smacks", "bookmarks"
}
modules_disabled = { "s2s" }
allow_registration = true
c2s_require_encryption = true
disable_sasl_mechanisms = { "DIGEST-MD5", "PLAIN" }
authentication = "internal_hashed"
storage = "internal"
log = { info = "@DIR@/prosody.log" }
ssl = { key = "@DIR@/server.key", certificate = "@DIR@/server.crt" }
VirtualHost "localhost"
Component "conference.localhost" "muc"
)";

quint16 freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

bool writeFile(const QString& name, const QString& text)
{
    QFile file(name);
    return QDir().mkpath(QFileInfo(name).path()) && file.open(QIODevice::WriteOnly) &&
           file.write(text.toUtf8()) > 0;
}

QByteArray readFile(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool takesConnections(quint16 port)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, port);
    return socket.waitForConnected(1000);
}

} // namespace

ProsodyServer::~ProsodyServer()
{
    kill();
}

bool ProsodyServer::start()
{
    if (port_ == 0) {
        port_ = freePort();
        if (!makeCertificate() || !writeConfiguration())
            return false;
    }
    child::endsWithUs(process_);
    process_.setProcessChannelMode(QProcess::MergedChannels);
    process_.start("prosody", {"-F", "--config", path("prosody.cfg.lua")});
    if (!process_.waitForStarted())
        return fail(QStringLiteral("prosody: ") + process_.errorString());
    const bool ready = QTest::qWaitFor(
        [this] { return process_.state() == QProcess::NotRunning || takesConnections(port_); }, patienceMs);
    if (ready && process_.state() == QProcess::Running)
        return true;
    return fail(QStringLiteral("prosody doesn't run: ") +
                QString::fromUtf8(process_.readAll() + readFile(path("prosody.log"))));
}

void ProsodyServer::kill()
{
    process_.kill();
    process_.waitForFinished();
}

QByteArray ProsodyServer::fingerprint() const
{
    return QSslCertificate(readFile(certificateFile())).digest(QCryptographicHash::Sha256);
}

bool ProsodyServer::addAccount(const QString& name, const QString& password)
{
    return writeFile(accountFile(name),
                     QStringLiteral("return { [\"password\"] = \"%1\"; };\n").arg(password));
}

bool ProsodyServer::hasAccount(const QString& name) const
{
    return QFileInfo::exists(accountFile(name));
}

bool ProsodyServer::befriend(const QString& one, const QString& other, const QString& group)
{
    const auto list = [this, &group](const QString& owner, const QString& contact) {
        return writeFile(
            path("data/localhost/roster/") + owner + QStringLiteral(".dat"),
            QStringLiteral("return { [false] = { version = 1; }; [\"%1@localhost\"] = "
                           "{ subscription = \"both\"; groups = { [\"%2\"] = true; }; name = \"%3\"; }; };\n")
                .arg(contact, group, contact.left(1).toUpper() + contact.mid(1)));
    };
    return list(one, other) && list(other, one);
}

bool ProsodyServer::forgetContacts()
{
    return QDir(path("data/localhost/roster")).removeRecursively();
}

QString ProsodyServer::accountFile(const QString& name) const
{
    return path("data/localhost/accounts/") + name + QStringLiteral(".dat");
}

bool ProsodyServer::makeCertificate()
{
    QProcess openssl;
    openssl.setProcessChannelMode(QProcess::MergedChannels);
    openssl.start("openssl",
                  {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                   "-days", "2", "-subj", "/CN=localhost", "-addext", "subjectAltName=DNS:localhost",
                   "-keyout", path("server.key"), "-out", certificateFile()});
    const bool made = openssl.waitForFinished(patienceMs) && openssl.exitCode() == 0;
    return made ||
           fail(QStringLiteral("openssl: ") + openssl.errorString() + QString::fromUtf8(openssl.readAll()));
}

bool ProsodyServer::writeConfiguration()
{
    const QString text = QString::fromLatin1(configuration)
                             .replace("@DIR@", folder_.path())
                             .replace("@PORT@", QString::number(port_));
    return writeFile(path("prosody.cfg.lua"), text) || fail("The server's folder can't be written.");
}

bool ProsodyServer::fail(const QString& problem)
{
    problem_ = problem;
    return false;
}
