#include "engine/wire/ConnectPlan.h"
#include "support/TestRunner.h"

#include <QTest>

class ConnectPlanTest : public QObject
{
    Q_OBJECT

private slots:
    void readsServerTexts_data();
    void readsServerTexts();
    void saysWhatIsWrongWithAServerText_data();
    void saysWhatIsWrongWithAServerText();
    void plansTheWays_data();
    void plansTheWays();
};

void ConnectPlanTest::readsServerTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("host");
    QTest::addColumn<int>("port");
    QTest::addColumn<bool>("asksDns");
    QTest::newRow("host") << "capulet.example"
                          << "capulet.example" << 0 << true;
    QTest::newRow("host and port") << "capulet.example:5269"
                                   << "capulet.example" << 5269 << false;
    QTest::newRow("blanks around") << "  capulet.example \n"
                                   << "capulet.example" << 0 << true;
    QTest::newRow("one label") << "localhost"
                               << "localhost" << 0 << false;
    QTest::newRow("IPv4") << "127.0.0.1"
                          << "127.0.0.1" << 0 << false;
    QTest::newRow("IPv4 and port") << "127.0.0.1:1"
                                   << "127.0.0.1" << 1 << false;
    QTest::newRow("IPv6") << "::1"
                          << "::1" << 0 << false;
    QTest::newRow("IPv6 in brackets") << "[fe80::1]"
                                      << "fe80::1" << 0 << false;
    QTest::newRow("IPv6 and port") << "[::1]:65535"
                                   << "::1" << 65535 << false;
    QTest::newRow("other letters") << "münchen.example"
                                   << "münchen.example" << 0 << true;
}

void ConnectPlanTest::readsServerTexts()
{
    QFETCH(QString, text);
    const auto address = ServerAddress::parsed(text);
    QVERIFY2(address.isValid(), qPrintable(address.error()));
    QTEST(address.host(), "host");
    QTEST(static_cast<int>(address.port()), "port");
    QTEST(address.asksDns(), "asksDns");
}

void ConnectPlanTest::saysWhatIsWrongWithAServerText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("says");
    QTest::newRow("empty") << ""
                           << "No server is given";
    QTest::newRow("only blanks") << " \t "
                                 << "No server is given";
    QTest::newRow("blanks inside") << "capulet example"
                                   << "has blanks";
    QTest::newRow("line end inside") << "capulet\nexample"
                                     << "has blanks";
    QTest::newRow("no host") << ":5222"
                             << "before the port";
    QTest::newRow("empty port") << "capulet.example:"
                                << "is not a port";
    QTest::newRow("port in letters") << "capulet.example:xmpp"
                                     << "is not a port";
    QTest::newRow("port 0") << "capulet.example:0"
                            << "is not a port";
    QTest::newRow("port too large") << "capulet.example:65536"
                                    << "is not a port";
    QTest::newRow("port far too large") << "capulet.example:99999999999"
                                        << "is not a port";
    QTest::newRow("negative port") << "capulet.example:-1"
                                   << "is not a port";
    QTest::newRow("open bracket") << "[::1"
                                  << "IPv6 address in brackets";
    QTest::newRow("name in brackets") << "[capulet.example]:5222"
                                      << "IPv6 address in brackets";
    QTest::newRow("after the bracket") << "[::1]5222"
                                       << "only a colon and a port";
    QTest::newRow("no IPv6 address") << "1:2:3"
                                     << "not the name of a server";
    QTest::newRow("an address of the web") << "http://capulet.example/"
                                           << "";
    QTest::newRow("a JID") << "romeo@capulet.example"
                           << "not the name of a server";
}

void ConnectPlanTest::saysWhatIsWrongWithAServerText()
{
    QFETCH(QString, text);
    QFETCH(QString, says);
    const auto address = ServerAddress::parsed(text);
    QVERIFY(!address.isValid());
    QVERIFY2(address.error().contains(says), qPrintable(address.error()));
}

void ConnectPlanTest::plansTheWays_data()
{
    QTest::addColumn<QString>("server");
    QTest::addColumn<bool>("secure");
    QTest::addColumn<QString>("direct"); // "priority host port" each, by commas
    QTest::addColumn<QString>("plain");
    QTest::addColumn<QString>("plan"); // "host:port" with "!" for direct TLS
    QTest::newRow("no DNS") << "a.example" << false << ""
                            << ""
                            << "a.example:5222";
    QTest::newRow("no DNS, secure") << "a.example" << true << ""
                                    << ""
                                    << "a.example:5223!,a.example:5222";
    QTest::newRow("port") << "a.example:80" << false << ""
                          << ""
                          << "a.example:80";
    QTest::newRow("port, secure") << "a.example:80" << true << ""
                                  << ""
                                  << "a.example:80!,a.example:80";
    QTest::newRow("5222, secure") << "a.example:5222" << true << ""
                                  << ""
                                  << "a.example:5222,a.example:5222!";
    QTest::newRow("5223") << "a.example:5223" << false << ""
                          << ""
                          << "a.example:5223!,a.example:5223";
    QTest::newRow("DNS") << "a.example" << false << ""
                         << "1 x 5222,2 y 5222"
                         << "x:5222,y:5222";
    QTest::newRow("both services share one order") << "a.example" << true << "5 d 443,1 e 443"
                                                   << "1 x 5222,3 y 1"
                                                   << "e:443!,x:5222,y:1,d:443!";
    QTest::newRow("not offered") << "a.example" << false << ""
                                 << "0 . 0"
                                 << "";
    QTest::newRow("direct not offered") << "a.example" << false << "0 . 1"
                                        << "0 x 5222"
                                        << "x:5222";
    QTest::newRow("never more than a handful") << "a.example" << false << ""
                                               << "1 a 1,1 b 1,1 c 1,1 d 1,1 e 1,1 f 1,1 g 1"
                                               << "a:1,b:1,c:1,d:1,e:1,f:1";
}

void ConnectPlanTest::plansTheWays()
{
    QFETCH(QString, server);
    QFETCH(bool, secure);
    QFETCH(QString, direct);
    QFETCH(QString, plain);
    const auto records = [](const QString& text) {
        QList<SrvRecord> list;
        for (const auto& entry : text.split(u',', Qt::SkipEmptyParts)) {
            const auto words = entry.split(u' ');
            list.append({words[1], words[2].toUShort(), words[0].toUShort()});
        }
        return list;
    };
    QStringList plan;
    for (const auto& way :
         connectPlan(ServerAddress::parsed(server), secure, {records(direct), records(plain)}))
        plan +=
            way.host + u':' + QString::number(way.port) + (way.directTls ? QStringLiteral("!") : QString());
    QTEST(plan.join(u','), "plan");
}

BRELO_TEST(ConnectPlanTest)
#include "ConnectPlanTest.moc"
