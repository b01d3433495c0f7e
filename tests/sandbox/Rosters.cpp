#include "Peer.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <QTest>

using sandbox::SandboxServer;

class Rosters : public QObject
{
    Q_OBJECT
    SandboxServer* server_ = nullptr;

    static QByteArray set(const QByteArray& item)
    {
        return "<iq id=\"s\" type=\"set\"><query xmlns=\"jabber:iq:roster\">" + item + "</query></iq>";
    }
    static constexpr const char* Get = "<iq id=\"g\" type=\"get\"><query xmlns=\"jabber:iq:roster\"/></iq>";

private slots:
    void init()
    {
        server_ = new SandboxServer;
        server_->world().addAccount("romeo", "secret");
        server_->world().addContact("romeo", "juliet", "Juliet", "Friends");
        server_->world().addContact("romeo", "nurse@capulet.example", "The \"Nurse\" & Co", "", "to");
        QVERIFY(server_->listen());
    }
    void cleanup() { delete server_; }

    void listComesInOrderAndEscaped()
    {
        Peer peer(*server_);
        QVERIFY(peer.signIn("romeo", "secret"));
        QCOMPARE(
            peer.ask(Get),
            QByteArray(
                "<iq type=\"result\" id=\"g\" to=\"romeo@im.test/Desk\"><query xmlns=\"jabber:iq:roster\">"
                "<item jid=\"juliet@im.test\" name=\"Juliet\" subscription=\"both\"><group>Friends</group>"
                "</item><item jid=\"nurse@capulet.example\" name=\"The &quot;Nurse&quot; &amp; Co\" "
                "subscription=\"to\"/></query></iq>"));
    }

    void contactsAtTheClientsHostBelongToTheServer()
    {
        Peer peer(*server_, "capulet.example");
        QVERIFY(peer.appear("romeo"));
        server_->world().setOnline("nurse@capulet.example", "dnd", "Busy <now>");
        QCOMPARE(peer.news(),
                 QByteArray("<presence from=\"nurse@capulet.example/Home\" to=\"romeo@capulet.example/Desk\">"
                            "<show>dnd</show><status>Busy &lt;now&gt;</status></presence>"));
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
        Peer peer(*server_);
        QVERIFY(peer.appear("romeo"));
        const QByteArray got =
            peer.ask(set("<item jid='juliet@im.test' subscription='remove'><group/></item>"));
        QVERIFY2(got.contains("<item jid=\"juliet@im.test\" subscription=\"remove\"/>"), got);
        QVERIFY(!peer.ask(Get).contains("juliet"));
    }

    void badChangeIsRefused_data()
    {
        columns<QByteArray, QByteArray>("item", "code");
        row("no address", QByteArray("<item name='x'/>"), QByteArray("400"));
        row("unknown to remove", QByteArray("<item jid='x@y.example' subscription='remove'/>"),
            QByteArray("404"));
    }
    void badChangeIsRefused()
    {
        QFETCH(QByteArray, item);
        QFETCH(QByteArray, code);
        Peer peer(*server_);
        QVERIFY(peer.signIn("romeo", "secret"));
        const QByteArray before = peer.ask(Get);
        QVERIFY(peer.ask(set(item)).contains("<error code=\"" + code + '"'));
        QCOMPARE(peer.ask(Get), before);
    }

    void presenceReachesThoseWhoMaySeeIt()
    {
        server_->world().addAccount("juliet", "secret");
        server_->world().addContact("juliet", "romeo", "Romeo", "", "to");
        Peer juliet(*server_), romeo(*server_);
        QVERIFY(juliet.appear("juliet"));
        QVERIFY(romeo.appear("romeo"));
        QCOMPARE(juliet.news(), QByteArray("<presence from=\"romeo@im.test/Desk\" to=\"juliet@im.test\"/>"));
        romeo.ask("<presence><show>away</show><status>Out</status></presence>");
        QVERIFY(juliet.news().contains("<show>away</show><status>Out</status>"));
        romeo.socket.abort();
        QVERIFY(juliet.sees(
            "<presence from=\"romeo@im.test/Desk\" to=\"juliet@im.test\" type=\"unavailable\"/>"));
    }
};

BRELO_TEST(Rosters)
#include "Rosters.moc"
