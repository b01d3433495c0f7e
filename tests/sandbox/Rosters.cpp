#include "Peer.h"
#include "support/Table.h"
#include "support/TestRunner.h"

// Contact lists, and who may see whom.
class Rosters : public QObject
{
    Q_OBJECT
    std::unique_ptr<sandbox::SandboxServer> server_;

    static QByteArray set(const QByteArray& item)
    {
        return "<iq id=\"s\" type=\"set\"><query xmlns=\"jabber:iq:roster\">" + item + "</query></iq>";
    }
    static constexpr const char* Get = "<iq id=\"g\" type=\"get\"><query xmlns=\"jabber:iq:roster\"/></iq>";

private slots:
    void init()
    {
        server_ = std::make_unique<sandbox::SandboxServer>();
        for (const char* name : {"romeo", "mercutio", "helena"})
            server_->world().addAccount(name, "secret");
        server_->world().addContact("romeo", "juliet", "Juliet", "Friends");
        server_->world().addContact("romeo", "nurse@capulet.example", "The \"Nurse\" & Co", "", "to");
        QVERIFY(server_->listen());
    }

    void listComesInOrderAndEscaped()
    {
        OnlinePeer peer(*server_, "romeo");
        QCOMPARE(
            peer.ask(Get),
            R"(<iq type="result" id="g" to="romeo@im.test/Desk"><query xmlns="jabber:iq:roster"><item )"
            R"(jid="juliet@im.test" name="Juliet" subscription="both"><group>Friends</group></item><item )"
            R"(jid="nurse@capulet.example" name="The &quot;Nurse&quot; &amp; Co" subscription="to"/>)"
            "</query></iq>");
    }

    void contactsAtTheClientsHostBelongToTheServer()
    {
        OnlinePeer peer(*server_, "romeo", "capulet.example");
        server_->world().setOnline("nurse@capulet.example", "dnd", "Busy <now>");
        QCOMPARE(peer.news(),
                 R"(<presence from="nurse@capulet.example/Home" to="romeo@capulet.example/Desk">)"
                 "<show>dnd</show><status>Busy &lt;now&gt;</status></presence>");
        server_->world().setOffline("nurse@capulet.example");
        QVERIFY(peer.news().contains("type=\"unavailable\""));
    }

    void changeIsPushedToEveryResource()
    {
        Peer desk(*server_), phone(*server_);
        QVERIFY(desk.signIn("romeo", "secret"));
        QVERIFY(phone.signIn("romeo", "secret", "Phone"));
        const QByteArray item = "<item jid=\"juliet@im.test\" name=\"J &amp; R\" subscription=\"both\">"
                                "<group>&lt;Verona&gt;</group></item>";
        const QByteArray own =
            desk.ask(set("<item jid='juliet@im.test' name='J &amp; R'><group>&lt;Verona&gt;</group></item>"));
        QVERIFY2(own.contains(item) && own.contains("type=\"result\" id=\"s\""), own);
        QVERIFY(phone.news().contains(item));
        QVERIFY(phone.ask(Get).contains(item));
    }

    void removalIsPushedAndStays()
    {
        OnlinePeer peer(*server_, "romeo");
        const QByteArray got =
            peer.ask(set("<item jid='juliet@im.test' subscription='remove'><group/></item>"));
        QVERIFY2(got.contains("<item jid=\"juliet@im.test\" subscription=\"remove\"/>"), got);
        QVERIFY(!peer.ask(Get).contains("juliet"));
    }

    void badChangeIsRefused()
    {
        OnlinePeer peer(*server_, "romeo");
        const QByteArray before = peer.ask(Get);
        QVERIFY(peer.ask(set("<item name='x'/>")).contains("<error code=\"400\""));
        QVERIFY(
            peer.ask(set("<item jid='x@y.example' subscription='remove'/>")).contains("<error code=\"404\""));
        QCOMPARE(peer.ask(Get), before);
    }

    void presenceReachesThoseWhoMaySeeIt()
    {
        server_->world().addAccount("juliet", "secret");
        server_->world().addContact("juliet", "romeo", "Romeo", "", "to");
        OnlinePeer juliet(*server_, "juliet"), romeo(*server_, "romeo");
        QCOMPARE(juliet.news(), "<presence from=\"romeo@im.test/Desk\" to=\"juliet@im.test\"/>");
        romeo.ask("<presence><show>away</show><status>Out</status></presence>");
        QVERIFY(juliet.news().contains("<show>away</show><status>Out</status>"));
        romeo.socket.abort();
        QVERIFY(juliet.sees(
            "<presence from=\"romeo@im.test/Desk\" to=\"juliet@im.test\" type=\"unavailable\"/>"));
    }

    void twoPeopleBecomeFriendsAndPart()
    {
        OnlinePeer mercutio(*server_, "mercutio"), helena(*server_, "helena");
        QVERIFY(mercutio.ask("<presence to='helena@im.test' type='subscribe'/>")
                    .contains("<item jid=\"helena@im.test\" subscription=\"none\" ask=\"subscribe\"/>"));
        QCOMPARE(helena.news(),
                 R"(<presence from="mercutio@im.test" to="helena@im.test" type="subscribe"/>)");
        QVERIFY(helena.ask("<presence to='mercutio@im.test' type='subscribed'/>")
                    .contains(R"(<item jid="mercutio@im.test" subscription="from"/>)"));
        const QByteArray granted = mercutio.news();
        QVERIFY(granted.contains("type=\"subscribed\""));
        QVERIFY(granted.contains(R"(<item jid="helena@im.test" subscription="to"/>)"));
        QVERIFY(granted.endsWith("<presence from=\"helena@im.test/Desk\" to=\"mercutio@im.test\"/>"));
        QVERIFY(helena.ask("<presence to='mercutio@im.test' type='unsubscribed'/>")
                    .contains(R"(<item jid="mercutio@im.test" subscription="none"/>)"));
        const QByteArray ended = mercutio.news();
        QVERIFY(ended.contains(R"(<item jid="helena@im.test" subscription="none"/>)"));
        QVERIFY(ended.contains("from=\"helena@im.test/Desk\" to=\"mercutio@im.test\" type=\"unavailable\""));
    }

    void requestWaitsForSignInAndIsNoContact()
    {
        OnlinePeer mercutio(*server_, "mercutio");
        mercutio.ask("<presence to='helena@im.test' type='subscribe'/>");
        Peer helena(*server_);
        QVERIFY(helena.signIn("helena", "secret"));
        QVERIFY(helena.ask("<iq type=\"get\" id=\"g\"><query xmlns=\"jabber:iq:roster\"/></iq>")
                    .contains("<query xmlns=\"jabber:iq:roster\"/>"));
        QVERIFY(helena.ask("<presence/>")
                    .contains("from=\"mercutio@im.test\" to=\"helena@im.test\" type=\"subscribe\""));
    }

    void removingAContactEndsBothWays()
    {
        server_->world().addContact("mercutio", "helena");
        server_->world().addContact("helena", "mercutio");
        OnlinePeer mercutio(*server_, "mercutio"), helena(*server_, "helena");
        mercutio.ask("<iq type=\"set\" id=\"d\"><query xmlns=\"jabber:iq:roster\">"
                     "<item jid=\"helena@im.test\" subscription=\"remove\"/></query></iq>");
        const QByteArray got = helena.news();
        QVERIFY2(got.contains("type=\"unsubscribe\"") && got.contains("type=\"unsubscribed\""), got);
        QVERIFY(got.contains("<item jid=\"mercutio@im.test\" name=\"mercutio\" subscription=\"none\"/>") ||
                got.contains(R"(<item jid="mercutio@im.test" subscription="none"/>)"));
    }

    void personaAnswersAsTold_data()
    {
        columns<int, QByteArray>("asked", "answer");
        row("accepts", int(sandbox::Persona::Asked::Accepts), QByteArray("subscription=\"to\""));
        row("refuses", int(sandbox::Persona::Asked::Refuses), QByteArray("type=\"unsubscribed\""));
        row("is silent", int(sandbox::Persona::Asked::StaysSilent), QByteArray("ask=\"subscribe\""));
    }
    void personaAnswersAsTold()
    {
        const auto [asked, answer] = fetched<int, QByteArray>();
        auto& paris = server_->world().addPersona("paris@verona.example", "Paris");
        paris.whenAsked = sandbox::Persona::Asked(asked);
        paris.online = true;
        OnlinePeer mercutio(*server_, "mercutio");
        const QByteArray got = mercutio.ask("<presence to=\"paris@verona.example\" type=\"subscribe\"/>");
        QVERIFY2(got.contains(answer), got);
        QCOMPARE(got.contains("<presence from=\"paris@verona.example/Home\""),
                 paris.whenAsked == sandbox::Persona::Asked::Accepts);
    }
};

BRELO_TEST(Rosters)
#include "Rosters.moc"
