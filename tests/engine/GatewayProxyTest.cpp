#include "support/GatewayRig.h"
#include "support/Table.h"
#include "support/TestRunner.h"

using Kind = ProxyServer::Kind;

// The way to a server through a proxy server: the scripted server plays both.
class GatewayProxyTest : public QObject
{
    Q_OBJECT

    static QByteArray bytes(const char* hex) { return QByteArray::fromHex(hex); }
    static void useProxy(GatewayRig& rig, Kind kind)
    {
        rig.gateway->setProxy({kind, "127.0.0.1", rig.server.serverPort(), "us", "pw"});
    }
    // SOCKS 5 with the answer to the password.
    static void greetSocks5(GatewayRig& rig, const QByteArray& answer)
    {
        rig.server.on(bytes("05"), bytes("0502"));
        rig.server.on(bytes("01") + "\x02us\x02pw", answer);
    }

private slots:
    void theProxyIsAskedForTheServer_data()
    {
        columns<Kind, QString, QByteArray, QByteArray>("kind", "server", "asked", "granted");
        const QByteArray name = "im.example.org";
        const auto granted4 = bytes("005a000000000000");
        const auto granted5 = bytes("05000001000000000000");
        row("4A, a name", Kind::Socks4, "im.example.org", bytes("0401146600000001757300") + name + '\0',
            granted4);
        row("4, an address", Kind::Socks4, "192.0.2.7:5333", bytes("040114d5c0000207757300"), granted4);
        row("5, a name", Kind::Socks5, "im.example.org", bytes("050100030e") + name + bytes("1466"),
            granted5);
        row("5, an address", Kind::Socks5, "192.0.2.7:5333", bytes("05010001c000020714d5"), granted5);
    }
    void theProxyIsAskedForTheServer()
    {
        const auto [kind, server, asked, granted] = fetched<Kind, QString, QByteArray, QByteArray>();
        GatewayRig rig;
        if (kind == Kind::Socks5)
            greetSocks5(rig, bytes("0100"));
        rig.server.on(asked, granted);
        rig.server.onLegacySignIn();
        useProxy(rig, kind);
        rig.connectTo(server);
        TICK_UNTIL(rig, rig.isUp());
        QVERIFY(rig.server.received().contains(asked));
        QCOMPARE(rig.gateway->Server(), server.section(u':', 0, 0));
    }

    void aProxysAnswerMayComeInPieces()
    {
        GatewayRig rig;
        rig.server.on(bytes("04"), bytes("005a00"));
        rig.server.onLegacySignIn();
        useProxy(rig, Kind::Socks4);
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

    void aProxyThatDoesNotHelpIsTold_data()
    {
        columns<Kind, QByteArray, QString>("kind", "answer", "says");
        row("4 refuses", Kind::Socks4, bytes("005b000000000000"), "proxy server refused");
        row("4 says nonsense", Kind::Socks4, QByteArray("HTTP/1.1 400"), "proxy server refused");
        row("4 isn't there", Kind::Socks4, QByteArray(), "proxy server does not answer");
        row("5 refuses the password", Kind::Socks5, bytes("0101"), "cannot be reached");
        row("5 isn't there", Kind::Socks5, QByteArray(), "cannot be reached");
    }
    void aProxyThatDoesNotHelpIsTold()
    {
        const auto [kind, answer, says] = fetched<Kind, QByteArray, QString>();
        GatewayRig rig;
        useProxy(rig, kind);
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
};

BRELO_TEST(GatewayProxyTest)
#include "GatewayProxyTest.moc"
