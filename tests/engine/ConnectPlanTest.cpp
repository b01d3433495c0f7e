#include "engine/wire/socket/ConnectPlan.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class ConnectPlanTest : public QObject
{
    Q_OBJECT

private slots:
    void readsServerTexts_data()
    {
        columns<QString, QString, int, bool>("text", "host", "port", "asksDns");
        row("host", "capulet.example", "capulet.example", 0, true);
        row("host and port", "capulet.example:5269", "capulet.example", 5269, false);
        row("blanks around", "  capulet.example \n", "capulet.example", 0, true);
        row("one label", "localhost", "localhost", 0, false);
        row("IPv4", "127.0.0.1", "127.0.0.1", 0, false);
        row("IPv4 and port", "127.0.0.1:1", "127.0.0.1", 1, false);
        row("IPv6", "::1", "::1", 0, false);
        row("IPv6 in brackets", "[fe80::1]", "fe80::1", 0, false);
        row("IPv6 and port", "[::1]:65535", "::1", 65535, false);
        row("other letters", "münchen.example", "münchen.example", 0, true);
    }
    void readsServerTexts()
    {
        QFETCH(QString, text);
        const auto address = ServerAddress::parsed(text);
        QVERIFY2(address.isValid(), qPrintable(address.error()));
        QTEST(address.host(), "host");
        QTEST(static_cast<int>(address.port()), "port");
        QTEST(address.asksDns(), "asksDns");
    }

    void saysWhatIsWrongWithAServerText()
    {
        const std::pair<QString, QString> groups[] = {
            {"No server is given", "| \t "},
            {"has blanks", "capulet example|capulet\nexample"},
            {"before the port", ":5222"},
            {"is not a port", "a.b:|a.b:xmpp|a.b:0|a.b:65536|a.b:99999999999|a.b:-1"},
            {"IPv6 address in brackets", "[::1|[capulet.example]:5222"},
            {"only a colon and a port", "[::1]5222"},
            {"not the name of a server", "1:2:3|romeo@capulet.example"},
            {"", "http://capulet.example/"}};
        for (const auto& [says, texts] : groups) {
            for (const auto& text : texts.split('|')) {
                const auto address = ServerAddress::parsed(text);
                QVERIFY2(!address.isValid() && address.error().contains(says),
                         qPrintable(text + ": " + address.error()));
            }
        }
    }

    void plansTheWays_data()
    {
        // direct: "priority host port" each, by commas
        // plan: "host:port" with "!" for direct TLS
        columns<QString, bool, QString, QString, QString>("server", "secure", "direct", "plain", "plan");
        row("no DNS", "a.example", false, "", "", "a.example:5222");
        row("no DNS, secure", "a.example", true, "", "", "a.example:5223!,a.example:5222");
        row("port", "a.example:80", false, "", "", "a.example:80");
        row("port, secure", "a.example:80", true, "", "", "a.example:80!,a.example:80");
        row("5222, secure", "a.example:5222", true, "", "", "a.example:5222,a.example:5222!");
        row("5223", "a.example:5223", false, "", "", "a.example:5223!,a.example:5223");
        row("DNS", "a.example", false, "", "1 x 5222,2 y 5222", "x:5222,y:5222");
        row("both services share one order", "a.example", true, "5 d 443,1 e 443", "1 x 5222,3 y 1",
            "e:443!,x:5222,y:1,d:443!");
        row("not offered", "a.example", false, "", "0 . 0", "");
        row("direct not offered", "a.example", false, "0 . 1", "0 x 5222", "x:5222");
        row("never more than a handful", "a.example", false, "", "1 a 1,1 b 1,1 c 1,1 d 1,1 e 1,1 f 1,1 g 1",
            "a:1,b:1,c:1,d:1,e:1,f:1");
    }
    void plansTheWays()
    {
        const auto [server, secure, direct, plain] = fetched<QString, bool, QString, QString>();
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
            plan += way.host + u':' + QString::number(way.port) +
                    (way.directTls ? QStringLiteral("!") : QString());
        QTEST(plan.join(u','), "plan");
    }
};

BRELO_TEST(ConnectPlanTest)
#include "ConnectPlanTest.moc"
