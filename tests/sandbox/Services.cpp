#include "Peer.h"
#include "sandbox/Address.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <QTest>

using sandbox::SandboxServer;

class Services : public QObject
{
    Q_OBJECT
    SandboxServer* server_ = nullptr;

    static QByteArray iq(const QByteArray& to, const QByteArray& xmlns, const QByteArray& content = {})
    {
        const QByteArray type = content.isEmpty() ? "get" : "set";
        return "<iq type=\"" + type + "\" id=\"q\"" + (to.isEmpty() ? QByteArray() : " to=\"" + to + '"') +
               "><query xmlns=\"" + xmlns + "\">" + content + "</query></iq>";
    }

private slots:
    void init()
    {
        server_ = new SandboxServer;
        auto& world = server_->world();
        world.addAccount("romeo", "secret", true);
        world.addAccount("paris", "secret");
        world.addGateway("msn", "MSN & more", "msn");
        world.addRoom("garden", "The Garden");
        world.addPersona("juliet", "Juliet Capulet").email = "juliet@post.example";
        world.addPersona("nurse", "The Nurse");
        QVERIFY(server_->listen());
    }
    void cleanup() { delete server_; }

    void answersAsAsked_data()
    {
        columns<QByteArray, QByteArray>("request", "part");
        const auto row = [](const char* name, const QByteArray& request, const char* part) {
            QTest::newRow(name) << request << QByteArray(part);
        };
        row("agents", iq("", "jabber:iq:agents"),
            "<agent jid=\"msn.im.test\"><name>MSN &amp; more</name><service>msn</service><transport>");
        row("agents: directory", iq("", "jabber:iq:agents"),
            "<agent jid=\"users.im.test\"><name>User Directory</name>");
        row("administrator's namespaces", iq("im.test", "jabber:iq:browse"), "<ns>jabber:iq:admin</ns>");
        row("directories", iq("im.test", "jabber:iq:browse"),
            "<service type=\"jud\" jid=\"users.im.test\" name=");
        row("room services", iq("im.test", "jabber:iq:browse"),
            "<conference type=\"public\" jid=\"conference.im.test\" name=");
        row("rooms", iq("conference.im.test", "jabber:iq:browse"),
            "<query xmlns=\"jabber:iq:browse\"><conference jid=\"garden@conference.im.test\" name=\"The "
            "Garden\"/></query>");
        row("no rooms elsewhere", iq("private.im.test", "jabber:iq:browse"),
            "<query xmlns=\"jabber:iq:browse\"/>");
        row("directory", iq("users.im.test", "jabber:iq:browse"),
            "<service type=\"jud\" jid=\"users.im.test\"");
        row("who is online", iq("im.test/admin", "jabber:iq:browse"),
            "<user jid=\"romeo@im.test\" name=\"romeo (1)\"/>");
        row("another server", iq("other.example", "jabber:iq:browse"), "<error code=\"502\">");
        row("a missing service", iq("icq.im.test", "jabber:iq:register"), "<error code=\"404\">");
        row("search form", iq("users.im.test", "jabber:iq:search"), "<first/><last/><nick/><email/>");
        row("found by part and case", iq("users.im.test", "jabber:iq:search", "<last>CAPU</last>"),
            "<query xmlns=\"jabber:iq:search\"><item "
            "jid=\"juliet@im.test\"><first>Juliet</first><last>Capulet</last>"
            "<nick>juliet</nick><email>juliet@post.example</email></item></query>");
        row("nobody found", iq("users.im.test", "jabber:iq:search", "<nick>tybalt</nick>"),
            "<query xmlns=\"jabber:iq:search\"/>");
        row("a modern question", iq("im.test", "http://jabber.org/protocol/disco#info"),
            "<error code=\"501\">");
        row("one to oneself", iq("romeo@im.test", "http://jabber.org/protocol/disco#info"),
            "<error code=\"501\">");
        row("one to a room", iq("garden@conference.im.test", "http://jabber.org/protocol/disco#info"),
            "<error code=\"501\">");
        row("to somebody's absent resource", iq("paris@im.test/Desk", "jabber:iq:oob", "<url/>"),
            "<error code=\"404\">");
    }
    void answersAsAsked()
    {
        QFETCH(QByteArray, request);
        QFETCH(QByteArray, part);
        Peer peer(*server_);
        QVERIFY(peer.signIn("romeo", "secret"));
        const QByteArray got = peer.ask(request);
        QVERIFY2(got.contains(part), got);
        QVERIFY2(got.contains("id=\"q\"") && got.count("<iq ") == 1, got);
    }

    void onlyAdministratorsAdminister()
    {
        Peer peer(*server_);
        QVERIFY(peer.signIn("paris", "secret"));
        QVERIFY(!peer.ask(iq("im.test", "jabber:iq:browse")).contains("jabber:iq:admin"));
        QVERIFY(peer.ask(iq("im.test/admin", "jabber:iq:browse")).contains("code=\"403\""));
        QVERIFY(peer.ask("<message to=\"im.test/announce/online\"><body>x</body></message>")
                    .contains("code=\"403\""));
    }

    void gatewayIsRegisteredAndLeft()
    {
        Peer peer(*server_);
        QVERIFY(peer.appear("romeo"));
        const QByteArray key = server_->world().gateway("msn." + sandbox::Host)->key.toUtf8();
        const QByteArray fields = "<username>r&lt;m</username><password>p</password><key>" + key + "</key>";
        QVERIFY(peer.ask(iq("msn.im.test", "jabber:iq:register")).contains("<username/><password/></query>"));
        QVERIFY(peer.ask("<presence to=\"msn.im.test\"/>").contains("code=\"407\""));
        QVERIFY(peer.ask(iq("msn.im.test", "jabber:iq:register", "<username>x</username><key>no</key>"))
                    .contains("code=\"406\""));

        const QByteArray entered = peer.ask(iq("msn.im.test", "jabber:iq:register", fields));
        QVERIFY2(entered.contains("<registered/><username>r&lt;m</username><password/>"), entered);
        QVERIFY(entered.contains("<presence from=\"msn.im.test\" to=\"romeo@im.test\" type=\"subscribe\"/>"));
        QVERIFY(entered.endsWith("<presence from=\"msn.im.test/registered\" to=\"romeo@im.test/Desk\"/>"));
        QVERIFY(peer.ask("<presence to=\"msn.im.test\" type=\"subscribed\"/><presence to=\"msn.im.test\" "
                         "type=\"subscribe\"/>")
                    .contains("<item jid=\"msn.im.test\" subscription=\"both\"/>"));

        Peer later(*server_);
        QVERIFY(later.signIn("romeo", "secret", "Phone"));
        QVERIFY(later.ask("<presence/>").contains("<presence from=\"msn.im.test/registered\""));
        const QByteArray left =
            peer.ask(iq("msn.im.test", "jabber:iq:register", "<remove/><key>" + key + "</key>"));
        QVERIFY(left.contains("<iq type=\"result\" id=\"q\" from=\"msn.im.test\""));
        QVERIFY(left.contains("type=\"unavailable\""));
        QVERIFY(!peer.ask(iq("msn.im.test", "jabber:iq:register")).contains("<registered/>"));
    }

    void cardsAreKeptAndRead()
    {
        Peer romeo(*server_), paris(*server_);
        QVERIFY(romeo.signIn("romeo", "secret"));
        QVERIFY(paris.signIn("paris", "secret"));
        const QByteArray get =
            "<iq type=\"get\" id=\"v\" to=\"romeo@im.test\"><VCARD xmlns=\"vcard-temp\"/></iq>";
        QVERIFY(romeo.ask(get).contains("<VCARD xmlns=\"vcard-temp\"/>"));
        const QByteArray card =
            "<VCARD version=\"3.0\" xmlns=\"vcard-temp\"><FN>R &amp; M</FN><N><MIDDLE/></N></VCARD>";
        QVERIFY(romeo.ask("<iq type=\"set\" id=\"s\">" + card + "</iq>")
                    .contains("<iq type=\"result\" id=\"s\""));
        QVERIFY(paris.ask(get).contains(card));
        QVERIFY(paris.ask("<iq type=\"set\" id=\"s\" to=\"romeo@im.test\">" + card + "</iq>")
                    .contains("code=\"403\""));
        QVERIFY(
            paris.ask("<iq type=\"get\" id=\"v\" to=\"juliet@im.test/x\"><VCARD xmlns=\"vcard-temp\"/></iq>")
                .contains("<GIVEN>Juliet</GIVEN><FAMILY>Capulet</FAMILY>"));
        QVERIFY(paris.ask("<iq type=\"get\" id=\"v\" to=\"ghost@im.test\"><VCARD xmlns=\"vcard-temp\"/></iq>")
                    .contains("code=\"404\""));
    }

    void announcementsReachAllAndTheDaysMessageLaterOnesOnce()
    {
        Peer romeo(*server_), paris(*server_);
        QVERIFY(romeo.appear("romeo"));
        QVERIFY(paris.appear("paris"));
        romeo.ask(
            "<message to=\"im.test/announce/online\"><subject>S</subject><body>a &amp; b</body></message>");
        QCOMPARE(paris.news(),
                 QByteArray("<message from=\"im.test\" to=\"paris@im.test/Desk\"><subject>S</subject>"
                            "<body>a &amp; b</body></message>"));
        paris.socket.abort();
        QTRY_COMPARE(server_->connectionCount(), 1);
        romeo.ask("<message to=\"im.test/announce/motd\"><body>Today</body></message>");
        for (const int times : {1, 0}) {
            Peer again(*server_);
            QVERIFY(again.signIn("paris", "secret"));
            QCOMPARE(again.ask("<presence/>").count("<body>Today</body>"), times);
        }
    }
};

BRELO_TEST(Services)
#include "Services.moc"
