#include "Peer.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class Subscriptions : public QObject
{
    Q_OBJECT
    std::unique_ptr<sandbox::SandboxServer> server_;

private slots:
    void init()
    {
        server_ = std::make_unique<sandbox::SandboxServer>();
        server_->world().addAccount("romeo", "secret");
        server_->world().addAccount("juliet", "secret");
        QVERIFY(server_->listen());
    }

    void twoPeopleBecomeFriendsAndPart()
    {
        OnlinePeer romeo(*server_, "romeo"), juliet(*server_, "juliet");

        QVERIFY(romeo.ask("<presence to='juliet@im.test' type='subscribe'/>")
                    .contains("<item jid=\"juliet@im.test\" subscription=\"none\" ask=\"subscribe\"/>"));
        QCOMPARE(juliet.news(), R"(<presence from="romeo@im.test" to="juliet@im.test" type="subscribe"/>)");

        QVERIFY(juliet.ask("<presence to='romeo@im.test' type='subscribed'/>")
                    .contains(R"(<item jid="romeo@im.test" subscription="from"/>)"));
        const QByteArray granted = romeo.news();
        QVERIFY(granted.contains("type=\"subscribed\""));
        QVERIFY(granted.contains(R"(<item jid="juliet@im.test" subscription="to"/>)"));
        QVERIFY(granted.endsWith("<presence from=\"juliet@im.test/Desk\" to=\"romeo@im.test\"/>"));

        QVERIFY(juliet.ask("<presence to='romeo@im.test' type='unsubscribed'/>")
                    .contains(R"(<item jid="romeo@im.test" subscription="none"/>)"));
        const QByteArray ended = romeo.news();
        QVERIFY(ended.contains(R"(<item jid="juliet@im.test" subscription="none"/>)"));
        QVERIFY(ended.contains("from=\"juliet@im.test/Desk\" to=\"romeo@im.test\" type=\"unavailable\""));
    }

    void requestWaitsForSignInAndIsNoContact()
    {
        OnlinePeer romeo(*server_, "romeo");
        romeo.ask("<presence to='juliet@im.test' type='subscribe'/>");
        Peer juliet(*server_);
        QVERIFY(juliet.signIn("juliet", "secret"));
        QVERIFY(juliet.ask("<iq type=\"get\" id=\"g\"><query xmlns=\"jabber:iq:roster\"/></iq>")
                    .contains("<query xmlns=\"jabber:iq:roster\"/>"));
        QVERIFY(juliet.ask("<presence/>")
                    .contains("from=\"romeo@im.test\" to=\"juliet@im.test\" type=\"subscribe\""));
    }

    void removingAContactEndsBothWays()
    {
        server_->world().addContact("romeo", "juliet");
        server_->world().addContact("juliet", "romeo");
        OnlinePeer romeo(*server_, "romeo"), juliet(*server_, "juliet");
        romeo.ask("<iq type=\"set\" id=\"d\"><query xmlns=\"jabber:iq:roster\">"
                  "<item jid=\"juliet@im.test\" subscription=\"remove\"/></query></iq>");
        const QByteArray got = juliet.news();
        QVERIFY2(got.contains("type=\"unsubscribe\"") && got.contains("type=\"unsubscribed\""), got);
        QVERIFY(got.contains("<item jid=\"romeo@im.test\" name=\"romeo\" subscription=\"none\"/>") ||
                got.contains(R"(<item jid="romeo@im.test" subscription="none"/>)"));
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
        OnlinePeer romeo(*server_, "romeo");
        const QByteArray got = romeo.ask("<presence to=\"paris@verona.example\" type=\"subscribe\"/>");
        QVERIFY2(got.contains(answer), got);
        QCOMPARE(got.contains("<presence from=\"paris@verona.example/Home\""),
                 paris.whenAsked == sandbox::Persona::Asked::Accepts);
    }
};

BRELO_TEST(Subscriptions)
#include "Subscriptions.moc"
