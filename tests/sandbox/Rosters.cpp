#include "Peer.h"
#include "support/TestRunner.h"

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
        server_->world().addAccount("romeo", "secret");
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
};

BRELO_TEST(Rosters)
#include "Rosters.moc"
