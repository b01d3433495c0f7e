#include "Peer.h"
#include "sandbox/Address.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class Services : public QObject
{
    Q_OBJECT
    std::unique_ptr<sandbox::SandboxServer> server_;

    static QByteArray iq(const QByteArray& to, const QByteArray& xmlns, const QByteArray& content = {})
    {
        const QByteArray type = content.isEmpty() ? "get" : "set";
        return "<iq type=\"" + type + "\" id=\"q\"" + (to.isEmpty() ? QByteArray() : " to=\"" + to + '"') +
               "><query xmlns=\"" + xmlns + "\">" + content + "</query></iq>";
    }
    static QByteArray msn(const QByteArray& content = {})
    {
        return iq("msn.im.test", "jabber:iq:register", content);
    }
    static QByteArray card(const QByteArray& of)
    {
        return "<iq type='get' id='v' to='" + of + "'><VCARD xmlns='vcard-temp'/></iq>";
    }

private slots:
    void init()
    {
        server_ = std::make_unique<sandbox::SandboxServer>();
        auto& world = server_->world();
        world.addAccount("romeo", "secret", true);
        world.addAccount("paris", "secret");
        world.addGateway("msn", "MSN & more", "msn");
        world.addPersona("laurence@msn." + sandbox::Host, "Laurence").online = true;
        world.addRoom("garden", "The Garden");
        world.addPersona("juliet", "Juliet Capulet").email = "juliet@post.example";
        world.addPersona("nurse", "Angelica").online = true;
        world.addPersona("nurse", "The Nurse");
        QVERIFY(server_->listen());
    }

    void answersAsAsked_data()
    {
        columns<QByteArray, QString>("request", "part");
        const QByteArray info = "http://jabber.org/protocol/disco#info";
        row("agents", iq("", "jabber:iq:agents"),
            "<agent jid=\"msn.im.test\"><name>MSN &amp; more</name><service>msn</service><transport>");
        row("agents: users", iq("", "jabber:iq:agents"),
            R"(<agent jid="users.im.test"><name>User Directory</name>)");
        row("administrator's namespaces", iq("im.test", "jabber:iq:browse"), "<ns>jabber:iq:admin</ns>");
        row("directories", iq("im.test", "jabber:iq:browse"),
            R"(<service type="jud" jid="users.im.test" name=)");
        row("room services", iq("im.test", "jabber:iq:browse"),
            "<conference type=\"public\" jid=\"conference.im.test\" name=");
        row("rooms", iq("conference.im.test", "jabber:iq:browse"),
            R"(<query xmlns="jabber:iq:browse"><conference jid="garden@conference.im.test" )"
            R"(name="The Garden"/></query>)");
        row("no rooms elsewhere", iq("private.im.test", "jabber:iq:browse"),
            R"(<query xmlns="jabber:iq:browse"/>)");
        row("directory", iq("users.im.test", "jabber:iq:browse"),
            "<service type=\"jud\" jid=\"users.im.test\"");
        row("who is online", iq("im.test/admin", "jabber:iq:browse"),
            "<user jid=\"romeo@im.test\" name=\"romeo (1)\"/>");
        row("another server", iq("other.example", "jabber:iq:browse"), "<error code=\"502\">");
        row("a missing service", iq("icq.im.test", "jabber:iq:register"), "<error code=\"404\">");
        row("search form", iq("users.im.test", "jabber:iq:search"), "<first/><last/><nick/><email/>");
        row("found by part and case", iq("users.im.test", "jabber:iq:search", "<last>CAPU</last>"),
            R"(<query xmlns="jabber:iq:search"><item jid="juliet@im.test"><first>Juliet</first><last>)"
            R"(Capulet</last><nick>juliet</nick><email>juliet@post.example</email></item></query>)");
        row("nobody found", iq("users.im.test", "jabber:iq:search", "<nick>tybalt</nick>"),
            "<query xmlns=\"jabber:iq:search\"/>");
        row("a modern question", iq("im.test", info), "<error code=\"501\">");
        row("one to oneself", iq("romeo@im.test", info), "<error code=\"501\">");
        row("one to a room", iq("garden@conference.im.test", info), "<error code=\"501\">");
        row("a call to somebody who is there", iq("nurse@im.test", "jabber:iq:oob", "<url/>"),
            "type=\"result\"");
        row("to somebody's absent resource", iq("paris@im.test/Desk", "jabber:iq:oob", "<url/>"),
            "<error code=\"404\">");
    }
    void answersAsAsked()
    {
        const auto [request, part] = fetched<QByteArray, QString>();
        OnlinePeer peer(*server_, "romeo");
        const QByteArray got = peer.ask(request);
        QVERIFY2(got.contains(part.toUtf8()), got);
        QVERIFY2(got.contains("id=\"q\"") && got.count("<iq ") == 1, got);
    }

    void onlyAdministratorsAdminister()
    {
        OnlinePeer peer(*server_, "paris");
        QVERIFY(!peer.ask(iq("im.test", "jabber:iq:browse")).contains("jabber:iq:admin"));
        QVERIFY(peer.ask(iq("im.test/admin", "jabber:iq:browse")).contains("code=\"403\""));
        QVERIFY(peer.ask("<message to='im.test/announce/online'/>").contains("code=\"403\""));
    }

    void gatewayIsRegisteredAndLeft()
    {
        OnlinePeer peer(*server_, "romeo");
        const QByteArray key = server_->world().gateway("msn." + sandbox::Host)->key.toUtf8();
        const QByteArray fields = "<username>r&lt;m</username><password>p</password><key>" + key + "</key>";
        QVERIFY(peer.ask(msn()).contains("<username/><password/></query>"));
        QVERIFY(peer.ask("<presence to=\"msn.im.test\"/>").contains("code=\"407\""));
        QVERIFY(peer.ask(msn("<username>x</username><key>no</key>")).contains("code=\"406\""));
        const QByteArray entered = peer.ask(msn(fields));
        QVERIFY2(entered.contains("<registered/><username>r&lt;m</username><password/>"), entered);
        QVERIFY(entered.contains("<presence from=\"msn.im.test\" to=\"romeo@im.test\" type=\"subscribe\"/>"));
        QVERIFY(entered.contains("<presence from=\"msn.im.test/registered\" to=\"romeo@im.test/Desk\"/>"));
        const QByteArray laurence = "<item jid=\"laurence@msn.im.test\" ";
        QVERIFY(entered.contains(laurence + "name=\"Laurence\" subscription=\"both\"><group>msn</group>"));
        QVERIFY(entered.contains("<presence from=\"laurence@msn.im.test/Home\""));
        QVERIFY(peer.ask("<presence to='msn.im.test' type='unavailable'/>")
                    .contains("<presence from=\"laurence@msn.im.test/Home\" to=\"romeo@im.test/Desk\" "
                              "type=\"unavailable\""));
        peer.ask("<presence to='msn.im.test' type='subscribed'/>");
        QVERIFY(peer.ask("<presence to='msn.im.test' type='subscribe'/>")
                    .contains("<item jid=\"msn.im.test\" subscription=\"both\"/>"));
        Peer later(*server_);
        QVERIFY(later.signIn("romeo", "secret", "Phone"));
        QVERIFY(later.ask("<presence/>").contains("<presence from=\"msn.im.test/registered\""));
        const QByteArray left = peer.ask(msn("<remove/><key>" + key + "</key>"));
        QVERIFY(left.contains("<iq type=\"result\" id=\"q\" from=\"msn.im.test\""));
        QVERIFY(left.contains("type=\"unavailable\"") && left.contains(laurence + "subscription=\"remove\""));
        QVERIFY(!peer.ask(msn()).contains("<registered/>"));
    }

    void cardsAreKeptAndRead()
    {
        OnlinePeer romeo(*server_, "romeo"), paris(*server_, "paris");
        QVERIFY(romeo.ask(card("romeo@im.test")).contains("<VCARD xmlns=\"vcard-temp\"/>"));
        const QByteArray his =
            R"(<VCARD version="3.0" xmlns="vcard-temp"><FN>R &amp; M</FN><N><MIDDLE/></N></VCARD>)";
        QVERIFY(romeo.ask("<iq type='set' id='s'>" + his + "</iq>").contains("<iq type=\"result\" id=\"s\""));
        QVERIFY(paris.ask(card("romeo@im.test")).contains(his));
        QVERIFY(
            paris.ask("<iq type='set' id='s' to='romeo@im.test'>" + his + "</iq>").contains("code=\"403\""));
        QVERIFY(
            paris.ask(card("juliet@im.test/x")).contains("<GIVEN>Juliet</GIVEN><FAMILY>Capulet</FAMILY>"));
        QVERIFY(paris.ask(card("ghost@im.test")).contains("code=\"404\""));
    }

    void announcementsReachAllAndTheDaysMessageLaterOnesOnce()
    {
        OnlinePeer romeo(*server_, "romeo"), paris(*server_, "paris");
        const QByteArray text = "<subject>S</subject><body>a &amp; b</body></message>";
        romeo.ask("<message to='im.test/announce/online'>" + text);
        QCOMPARE(paris.news(), R"(<message from="im.test" to="paris@im.test/Desk">)" + text);
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
