#include "Peer.h"
#include "sandbox/Subscription.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <QTest>

using sandbox::RosterItem;
using sandbox::SandboxServer;

class Subscriptions : public QObject
{
    Q_OBJECT
    SandboxServer* server_ = nullptr;

    // "none", "to", "from" or "both", then "+out" and "+in" for open requests.
    static RosterItem itemOf(const QString& state)
    {
        RosterItem item;
        item.setSubscription(state.section('+', 0, 0));
        item.pendingOut = state.contains("+out");
        item.pendingIn = state.contains("+in");
        return item;
    }
    static QString stateOf(const RosterItem& item)
    {
        return item.subscription() + (item.pendingOut ? "+out" : "") + (item.pendingIn ? "+in" : "");
    }

private slots:
    void init()
    {
        server_ = new SandboxServer;
        server_->world().addAccount("romeo", "secret");
        server_->world().addAccount("juliet", "secret");
        QVERIFY(server_->listen());
    }
    void cleanup() { delete server_; }

    void stateFollowsTheTable_data()
    {
        columns<bool, QString, QString, QString, bool>("out", "before", "type", "after", "passedOn");
        const auto row = [](bool out, const char* before, const char* type, const char* after,
                            bool passedOn) {
            QTest::addRow("%s %s %s", out ? "out" : "in", before, type)
                << out << QString(before) << QString(type) << QString(after) << passedOn;
        };
        row(true, "none", "subscribe", "none+out", true);
        row(true, "from+out", "subscribe", "from+out", true);
        row(true, "both", "subscribe", "both", true);
        row(true, "to", "unsubscribe", "none", true);
        row(true, "both", "unsubscribe", "from", true);
        row(true, "none+out+in", "unsubscribe", "none+in", true);
        row(true, "none", "subscribed", "none", false);
        row(true, "none+in", "subscribed", "from", true);
        row(true, "to+in", "subscribed", "both", true);
        row(true, "none+in", "unsubscribed", "none", true);
        row(true, "both", "unsubscribed", "to", true);
        row(true, "to", "unsubscribed", "to", false);
        row(false, "none", "subscribe", "none+in", true);
        row(false, "none+in", "subscribe", "none+in", false);
        row(false, "both", "subscribe", "both", false);
        row(false, "from", "unsubscribe", "none", true);
        row(false, "to", "unsubscribe", "to", false);
        row(false, "none+out", "subscribed", "to", true);
        row(false, "from+out", "subscribed", "both", true);
        row(false, "none", "subscribed", "none", false);
        row(false, "none+out", "unsubscribed", "none", true);
        row(false, "both", "unsubscribed", "from", true);
        row(false, "from", "unsubscribed", "from", false);
    }
    void stateFollowsTheTable()
    {
        QFETCH(bool, out);
        QFETCH(QString, before);
        QFETCH(QString, type);
        RosterItem item = itemOf(before);
        const auto effect =
            out ? sandbox::subscription::outbound(item, type) : sandbox::subscription::inbound(item, type);
        QTEST(stateOf(item), "after");
        QTEST(effect.passOn, "passedOn");
    }

    void twoPeopleBecomeFriendsAndPart()
    {
        Peer romeo(*server_), juliet(*server_);
        QVERIFY(romeo.appear("romeo"));
        QVERIFY(juliet.appear("juliet"));

        QVERIFY(romeo.ask("<presence to=\"juliet@im.test\" type=\"subscribe\"/>")
                    .contains("<item jid=\"juliet@im.test\" subscription=\"none\" ask=\"subscribe\"/>"));
        QCOMPARE(juliet.news(),
                 QByteArray("<presence from=\"romeo@im.test\" to=\"juliet@im.test\" type=\"subscribe\"/>"));

        QVERIFY(juliet.ask("<presence to=\"romeo@im.test\" type=\"subscribed\"/>")
                    .contains("<item jid=\"romeo@im.test\" subscription=\"from\"/>"));
        const QByteArray granted = romeo.news();
        QVERIFY(granted.contains("type=\"subscribed\""));
        QVERIFY(granted.contains("<item jid=\"juliet@im.test\" subscription=\"to\"/>"));
        QVERIFY(granted.endsWith("<presence from=\"juliet@im.test/Desk\" to=\"romeo@im.test\"/>"));

        QVERIFY(juliet.ask("<presence to=\"romeo@im.test\" type=\"unsubscribed\"/>")
                    .contains("<item jid=\"romeo@im.test\" subscription=\"none\"/>"));
        const QByteArray ended = romeo.news();
        QVERIFY(ended.contains("<item jid=\"juliet@im.test\" subscription=\"none\"/>"));
        QVERIFY(ended.contains("from=\"juliet@im.test/Desk\" to=\"romeo@im.test\" type=\"unavailable\""));
    }

    void requestWaitsForSignInAndIsNoContact()
    {
        Peer romeo(*server_);
        QVERIFY(romeo.appear("romeo"));
        romeo.ask("<presence to=\"juliet@im.test\" type=\"subscribe\"/>");
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
        Peer romeo(*server_), juliet(*server_);
        QVERIFY(romeo.appear("romeo"));
        QVERIFY(juliet.appear("juliet"));
        romeo.ask("<iq type=\"set\" id=\"d\"><query xmlns=\"jabber:iq:roster\">"
                  "<item jid=\"juliet@im.test\" subscription=\"remove\"/></query></iq>");
        const QByteArray got = juliet.news();
        QVERIFY2(got.contains("type=\"unsubscribe\"") && got.contains("type=\"unsubscribed\""), got);
        QVERIFY(got.contains("<item jid=\"romeo@im.test\" name=\"romeo\" subscription=\"none\"/>") ||
                got.contains("<item jid=\"romeo@im.test\" subscription=\"none\"/>"));
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
        QFETCH(int, asked);
        QFETCH(QByteArray, answer);
        auto& paris = server_->world().addPersona("paris@verona.example", "Paris");
        paris.whenAsked = sandbox::Persona::Asked(asked);
        paris.online = true;
        Peer romeo(*server_);
        QVERIFY(romeo.appear("romeo"));
        const QByteArray got = romeo.ask("<presence to=\"paris@verona.example\" type=\"subscribe\"/>");
        QVERIFY2(got.contains(answer), got);
        QCOMPARE(got.contains("<presence from=\"paris@verona.example/Home\""),
                 paris.whenAsked == sandbox::Persona::Asked::Accepts);
    }
};

BRELO_TEST(Subscriptions)
#include "Subscriptions.moc"
