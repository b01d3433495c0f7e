#include "support/GatewayRig.h"
#include "support/TestRunner.h"

#include <QTest>

// The way to a server through a proxy server: the scripted server plays both.
class GatewayProxyTest : public QObject
{
    Q_OBJECT

private slots:
    void theProxyIsAskedForTheServer_data();
    void theProxyIsAskedForTheServer();
    void aProxysAnswerMayComeInPieces();
    void aProxyThatDoesNotHelpIsTold_data();
    void aProxyThatDoesNotHelpIsTold();

private:
    using Kind = ProxyServer::Kind;
    static ProxyServer proxyAt(const GatewayRig& rig, Kind kind);
    // SOCKS 5 with the answer to the password.
    static void greetSocks5(GatewayRig& rig, const QByteArray& answer);
};

namespace
{

QByteArray bytes(const char* hex)
{
    return QByteArray::fromHex(hex);
}

} // namespace

ProxyServer GatewayProxyTest::proxyAt(const GatewayRig& rig, Kind kind)
{
    return {kind, "127.0.0.1", rig.server.serverPort(), "us", "pw"};
}

void GatewayProxyTest::greetSocks5(GatewayRig& rig, const QByteArray& answer)
{
    rig.server.on(bytes("05"), bytes("0502"));
    rig.server.on(bytes("01") + "\x02us\x02pw", answer);
}

void GatewayProxyTest::theProxyIsAskedForTheServer_data()
{
    QTest::addColumn<ProxyServer::Kind>("kind");
    QTest::addColumn<QString>("server");
    QTest::addColumn<QByteArray>("asked");
    QTest::addColumn<QByteArray>("granted");
    const auto name = QByteArray("im.example.org");
    const auto granted5 = bytes("05000001000000000000");
    QTest::newRow("4A, a name") << Kind::Socks4 << "im.example.org"
                                << bytes("0401146600000001757300") + name + '\0' << bytes("005a000000000000");
    QTest::newRow("4, an address") << Kind::Socks4 << "192.0.2.7:5333" << bytes("040114d5c0000207757300")
                                   << bytes("005a000000000000");
    QTest::newRow("5, a name") << Kind::Socks5 << "im.example.org"
                               << bytes("050100030e") + name + bytes("1466") << granted5;
    QTest::newRow("5, an address") << Kind::Socks5 << "192.0.2.7:5333" << bytes("05010001c000020714d5")
                                   << granted5;
}

void GatewayProxyTest::theProxyIsAskedForTheServer()
{
    QFETCH(ProxyServer::Kind, kind);
    QFETCH(QString, server);
    QFETCH(QByteArray, asked);
    QFETCH(QByteArray, granted);
    GatewayRig rig;
    if (kind == Kind::Socks5)
        greetSocks5(rig, bytes("0100"));
    rig.server.on(asked, granted);
    rig.server.onLegacySignIn();
    rig.gateway->setProxy(proxyAt(rig, kind));
    rig.connectTo(server);
    TICK_UNTIL(rig, rig.isUp());
    QVERIFY(rig.server.received().contains(asked));
    QCOMPARE(rig.gateway->Server(), server.section(u':', 0, 0));
}

void GatewayProxyTest::aProxysAnswerMayComeInPieces()
{
    GatewayRig rig;
    rig.server.on(bytes("04"), bytes("005a00"));
    rig.server.onLegacySignIn();
    rig.gateway->setProxy(proxyAt(rig, Kind::Socks4));
    rig.connectTo("im.example.org");
    TICK_UNTIL(rig, rig.server.received().contains("im.example.org"));
    for (int turn = 0; turn < 50; ++turn) {
        QCoreApplication::processEvents();
        rig.tick();
    }
    rig.server.say(bytes("0000000000"));
    TICK_UNTIL(rig, rig.isUp() || rig.isClosed());
    QVERIFY2(rig.isUp(), qPrintable(rig.host.progress.value(0)));
}

void GatewayProxyTest::aProxyThatDoesNotHelpIsTold_data()
{
    QTest::addColumn<ProxyServer::Kind>("kind");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("says");
    QTest::newRow("4 refuses") << Kind::Socks4 << bytes("005b000000000000") << "proxy server refused";
    QTest::newRow("4 says nonsense") << Kind::Socks4 << QByteArray("HTTP/1.1 400") << "proxy server refused";
    QTest::newRow("4 isn't there") << Kind::Socks4 << QByteArray() << "proxy server does not answer";
    QTest::newRow("5 refuses the password") << Kind::Socks5 << bytes("0101") << "cannot be reached";
    QTest::newRow("5 isn't there") << Kind::Socks5 << QByteArray() << "cannot be reached";
}

void GatewayProxyTest::aProxyThatDoesNotHelpIsTold()
{
    QFETCH(ProxyServer::Kind, kind);
    QFETCH(QByteArray, answer);
    QFETCH(QString, says);
    GatewayRig rig;
    rig.gateway->setProxy(proxyAt(rig, kind));
    if (answer.isEmpty())
        rig.server.refuse();
    else if (kind == Kind::Socks5)
        greetSocks5(rig, answer);
    else
        rig.server.on(bytes("04"), answer);
    rig.connectTo("im.example.org");
    TICK_UNTIL(rig, rig.isClosed());
    QCOMPARE(rig.host.progress.size(), 1);
    QVERIFY2(rig.host.progress.first().contains(says), qPrintable(rig.host.progress.first()));
}

BRELO_TEST(GatewayProxyTest)
#include "GatewayProxyTest.moc"
