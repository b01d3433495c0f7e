#include "BridgeRig.h"
#include "support/Table.h"
#include "support/TestRunner.h"

const QString request =
    R"(<iq type="get" id="agents" to="montague.example"><query xmlns="jabber:iq:agents"/></iq>)";
const QString refusal = "<iq type='error' id='agents' from='montague.example'><error type='cancel'>"
                        "<service-unavailable xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'/></error></iq>";
const QString result = R"(<iq type="result" id="agents" from="montague.example">%1</iq>)";
const QString emptyAnswer = result.arg("<query xmlns=\"jabber:iq:agents\"/>");

class BridgeAgentsTest : public QObject
{
    Q_OBJECT

    static QString answerOf(const QString& agents)
    {
        return result.arg("<query xmlns=\"jabber:iq:agents\">" + agents + "</query>");
    }
    static bool disco(BridgeRig& rig, const QString& of, const QString& what, const QString& inner,
                      const QString& type = "result")
    {
        return rig.answer(
            of, "disco#" + what,
            "<query xmlns='http://jabber.org/protocol/disco#" + what + "'>" + inner + "</query>", type);
    }
    // A rig with the old request refused, and discovery begun.
    struct RefusedRig : TodaysRig {
        RefusedRig()
        {
            down(request);
            QCOMPARE(takeWire(), QStringList{request});
            up(refusal);
            QCOMPARE(takeUp(), QStringList());
        }
    };

private slots:
    void answerOfAServerThatKnowsTheRequestPassesUntouched()
    {
        TodaysRig rig;
        rig.down(request);
        const QString answer = answerOf("<agent jid=\"icq.montague.example\"/>");
        rig.up(answer);
        QCOMPARE(rig.takeUp(), QStringList{answer});
        rig.tick(0);
        rig.tick(60'000);
        QCOMPARE(rig.takeUp(), QStringList());
    }

    void refusedRequestIsAnsweredFromDiscovery_data()
    {
        columns<QString, QString, QString>("service", "info", "agent");
        row("gateway", "icq.x",
            "<identity category='gateway' type='icq' name='ICQ'/><feature var='jabber:iq:register'/>",
            "<agent jid=\"icq.x\"><name>ICQ</name><service>icq</service><register/><transport/></agent>");
        row("rooms", "rooms.x",
            "<identity category='conference' type='text' name='Chat &amp; Co'/>"
            "<feature var='http://jabber.org/protocol/muc'/>",
            "<agent jid=\"rooms.x\"><name>Chat &amp; Co</name><service>public</service><groupchat/></agent>");
        row("directory", "users.x",
            "<identity category='directory' type='user'/><feature var='jabber:iq:search'/>",
            "<agent jid=\"users.x\"><name>Listed</name><service>jud</service><search/></agent>");
        row("no gateway, but called one", "p.x",
            "<identity category='proxy' type='bytestreams' name='file transport'/>",
            "<agent jid=\"p.x\"><name>file Transport</name><service>bytestreams</service></agent>");
        row("no gateway, with such an address", "transport.x", "<identity category='proxy' type='a'/>", "");
        row("silent", "s.x", "", "<agent jid=\"s.x\"><name>Listed</name><service/></agent>");
    }
    void refusedRequestIsAnsweredFromDiscovery()
    {
        const auto [service, info, agent] = fetched<QString, QString, QString>();
        RefusedRig rig;
        QVERIFY(disco(rig, rig.server, "items",
                      "<item jid='" + service + "' name='Listed'/><item jid='a.x' node='n'/>"));
        QVERIFY(disco(rig, service, "info", info, info.isEmpty() ? "error" : "result"));
        QCOMPARE(rig.takeUp(), QStringList{agent.isEmpty() ? emptyAnswer : answerOf(agent)});
    }

    void servicesKeepTheirOrderAndAreAskedOnceEach()
    {
        RefusedRig rig;
        rig.takeWire();
        QVERIFY(
            disco(rig, rig.server, "items", "<item jid='a.x'/><item jid='b.x'/><item jid='a.x'/><item/>"));
        QCOMPARE(rig.takeWire().size(), 2);
        QVERIFY(disco(rig, "b.x", "info", {}));
        QVERIFY(rig.takeUp().isEmpty());
        QVERIFY(disco(rig, "a.x", "info", {}));
        // A service that nobody gave a name is called by its address.
        const QString agent = "<agent jid=\"%1\"><name>%1</name><service/></agent>";
        QCOMPARE(rig.takeUp(), QStringList{answerOf(agent.arg("a.x") + agent.arg("b.x"))});
    }

    void anAnswerComesWhateverTheServerDoes_data()
    {
        columns<QString>("reply");
        row("silence", "");
        row("refusal, then silence", refusal);
        row("result without a list", result.arg(""));
        row("another error", "<iq type='error' id='agents' from='montague.example'><error code='400'/></iq>");
    }
    void anAnswerComesWhateverTheServerDoes()
    {
        QFETCH(QString, reply);
        BridgeRig rig;
        rig.meetSilentServer();
        rig.down(request);
        if (!reply.isEmpty())
            rig.up(reply);
        rig.tick(5'000'000);
        rig.tick(5'009'999);
        QCOMPARE(rig.takeUp(), QStringList());
        rig.tick(5'010'000);
        QCOMPARE(rig.takeUp(), QStringList{emptyAnswer});
        // What comes later is too late, however much later.
        rig.tick(5'020'000);
        rig.tick(9'000'000);
        rig.up(emptyAnswer);
        rig.tick(9'100'000);
        QCOMPARE(rig.takeUp(), reply.isEmpty() ? QStringList() : QStringList{emptyAnswer});
    }

    void discoveryThatFailsYieldsAnEmptyList()
    {
        RefusedRig rig;
        QVERIFY(rig.answer(rig.server, "disco#items", "<error code='503'/>", "error"));
        QCOMPARE(rig.takeUp(), QStringList{emptyAnswer});
    }

    void silentServiceDoesNotHoldUpTheOthers()
    {
        RefusedRig rig;
        rig.tick(0);
        QVERIFY(disco(rig, rig.server, "items", "<item jid='a.x'/><item jid='b.x'/>"));
        QVERIFY(disco(rig, "a.x", "info", "<identity category='gateway' type='msn' name='MSN'/>"));
        rig.tick(10'000);
        const auto up = rig.takeUp();
        QCOMPARE(up.size(), 1);
        QVERIFY(up[0].contains("<name>MSN</name>") && up[0].contains("jid=\"b.x\""));
        rig.tick(30'000);
        QCOMPARE(rig.takeUp(), QStringList());
    }

    void refusalIsRememberedForTheSession()
    {
        RefusedRig rig;
        QVERIFY(disco(rig, rig.server, "items", {}));
        rig.takeWire();
        rig.down(request);
        const auto wire = rig.takeWire();
        QCOMPARE(wire.size(), 1);
        QVERIFY(wire[0].contains("disco#items"));
    }
};

BRELO_TEST(BridgeAgentsTest)
#include "BridgeAgentsTest.moc"
