#include "support/ProsodyServer.h"

#include "support/ChildProcess.h"

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

bool takesConnections(quint16 port)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, port);
    return socket.waitForConnected(1000);
}

} // namespace

bool ProsodyServer::start()
{
    if (port_ == 0) {
        port_ = freePort();
        const auto text = QByteArray(configuration).replace("@DIR@", folder_.path().toUtf8());
        files::write(path("prosody.cfg.lua"), QByteArray(text).replace("@PORT@", QByteArray::number(port_)));
        if (!makeCertificate())
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
                QString::fromUtf8(process_.readAll() + files::read(path("prosody.log"))));
}

void ProsodyServer::befriend(const QString& one, const QString& other, const QString& group)
{
    const QString list = "return { [false] = { version = 1; }; [\"%1@localhost\"] = "
                         "{ subscription = \"both\"; groups = { [\"%2\"] = true; }; name = \"%3\"; }; };\n";
    for (const auto& [owner, contact] : {std::pair(one, other), {other, one}})
        files::write(path("data/localhost/roster/") + owner + ".dat",
                     list.arg(contact, group, contact.left(1).toUpper() + contact.mid(1)).toUtf8());
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
