#include "support/GatewayRig.h"
#include "support/Table.h"
#include "support/TestRunner.h"

// The way to a session, and the many ways in which it ends before there is one.
class GatewayConnectTest : public QObject
{
    Q_OBJECT

private slots:
    void signsInAndAsksForTheLists()
    {
        GatewayRig rig;
        rig.server.onLegacySignIn();
        rig.connectToServer();
        QVERIFY(!rig.gateway->isconnected());
        QCOMPARE(rig.gateway->Server(), "127.0.0.1");
        TICK_UNTIL(rig, rig.isUp());
        QVERIFY(rig.gateway->isconnected());
        QCOMPARE(rig.queue->ownFullJid(), "romeo@127.0.0.1/garden");
        TICK_UNTIL(rig, rig.server.received().contains("jabber:iq:roster") &&
                            rig.server.received().contains("jabber:iq:agents"));
        QVERIFY(!rig.server.received().contains("s3cret"));
        QCOMPARE(rig.up.first(), "<presence type=\"connect\"/>");
        QVERIFY(rig.host.progress.isEmpty());
    }

    void failuresAreToldInWords_data()
    {
        columns<QByteArray, bool, QString>("answer", "hangsUp", "says");
        const auto stream = ScriptedServer::header();
        row("no XML", QByteArray("HTTP/1.1 400 Bad Request\r\n\r\n"), false, "not a Jabber server");
        row("another XML", QByteArray("<html/>"), false, "not a Jabber server");
        row("hangs up", QByteArray(), true, "closed the connection");
        row("hangs up in the header", stream.first(30), true, "closed the connection");
        row("closes the stream", stream + "</stream:stream>", false, "closed the connection");
        const QByteArray streams = " xmlns='urn:ietf:params:xml:ns:xmpp-streams'",
                         error = stream + "<stream:error><";
        row("does not serve the domain", error + "host-unknown" + streams + "/></stream:error>", false,
            "does not serve the domain");
        row("error with a text",
            error + "policy-violation" + streams + "/><text" + streams +
                ">Come back later</text></stream:error>",
            false, "Come back later");
        row("document type", QByteArray("<!DOCTYPE a>") + stream, false, "not a Jabber server");
        row("breach in the features", stream + "<stream:features><!-- --></stream:features>", false,
            "not allowed");
        row("no way to sign in", stream + "<stream:features/>", false, "no way to sign in");
        row("no known way",
            stream + "<stream:features><mechanisms xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>"
                     "<mechanism>X-OTHER</mechanism></mechanisms></stream:features>",
            false, "no way to sign in");
    }
    void failuresAreToldInWords()
    {
        const auto [answer, hangsUp, says] = fetched<QByteArray, bool, QString>();
        GatewayRig rig;
        rig.server.on("<stream:stream", answer,
                      hangsUp ? ScriptedServer::Then::Close : ScriptedServer::Then::Stay);
        CONNECT_UNTIL(rig, rig.isClosed());
        QCOMPARE(rig.host.progress.size(), 1);
        QVERIFY2(rig.host.progress.first().contains(says), qPrintable(rig.host.progress.first()));
        QCOMPARE(rig.up.size(), 1);
        TICK_UNTIL(rig, !rig.server.isConnected());
    }

    void aSilentServerTimesOut()
    {
        const auto opening = ScriptedServer::header(false);
        for (const auto& answer :
             {QByteArray(), QByteArray("<stream:stream "), ScriptedServer::header(), opening}) {
            GatewayRig rig;
            rig.server.on("<stream:stream", answer);
            CONNECT_UNTIL(rig, rig.server.scriptIsDone());
            if (answer == opening)
                TICK_UNTIL(rig, rig.server.received().contains("jabber:iq:auth"));
            rig.now += 29'000;
            rig.tick();
            QVERIFY(!rig.isClosed());
            rig.now += 31'000;
            TICK_UNTIL(rig, rig.isClosed());
            QVERIFY2(rig.host.progress.value(0).contains(u"timed out"),
                     qPrintable(rig.host.progress.value(0)));
        }
    }

    void aWrongPasswordGoesUpOnceAndLeadsToAnAccount()
    {
        GatewayRig rig;
        rig.server.on("<stream:stream", ScriptedServer::header(false));
        rig.server.on("</iq>", "<iq type='result' id='$id'><query xmlns='jabber:iq:auth'><username/><digest/>"
                               "<resource/></query></iq>");
        rig.server.on("</iq>", "<iq type='error' id='$id'><error code='401'>Unauthorized</error></iq>");
        CONNECT_UNTIL(rig, !rig.up.isEmpty());
        QVERIFY2(rig.up.first().contains(u"jabber:iq:auth") && rig.up.first().contains(u"type=\"error\""),
                 qPrintable(rig.up.first()));
        QVERIFY(!rig.gateway->isconnected());
        rig.send("<message to=\"x\"/>");
        rig.send("<iq type=\"set\" id=\"VRX_new\"><query xmlns=\"jabber:iq:register\"><username>romeo"
                 "</username><password>s3cret</password><resource></resource></query></iq>");
        rig.server.on("<stream:stream", ScriptedServer::header(false));
        rig.server.on("</iq>", "<iq type='result' id='$id'><query "
                               "xmlns='jabber:iq:register'><username/><password/></query></iq>");
        rig.server.on("</iq>", "<iq type='result' id='$id'/>");
        TICK_UNTIL(rig, rig.up.size() == 2);
        QVERIFY2(rig.up.last().contains(u"id=\"VRX_new\"") && rig.up.last().contains(u"type=\"result\""),
                 qPrintable(rig.up.last()));
        QVERIFY(rig.server.received().contains("<username>romeo</username>"));
        QVERIFY(!rig.server.received().contains("<message"));
        // As the client does on a result: out, and in again at once.
        rig.server.onLegacySignIn();
        rig.gateway->DoDisconnect();
        CONNECT_UNTIL(rig, rig.isUp());
        QVERIFY(!rig.isClosed());
    }

    void thePasswordCrossesInClearOnlyIfAllowed()
    {
        for (const bool allowed : {true, false}) {
            GatewayRig rig;
            rig.host.plainAnswer = allowed;
            rig.server.onSaslSignIn();
            CONNECT_UNTIL(rig, allowed ? rig.isUp() : rig.isClosed());
            QCOMPARE(rig.host.plainQuestions, QStringList{"127.0.0.1"});
            QCOMPARE(rig.host.progress.isEmpty(), allowed);
            QCOMPARE(rig.server.received().contains("<auth"), allowed);
        }
    }

    void cancelWorksAtAnyTime()
    {
        for (const auto& answer : {QByteArray(), ScriptedServer::header(), ScriptedServer::header(false)}) {
            GatewayRig rig;
            rig.gateway->DoDisconnect(); // safe when nothing is there
            rig.server.on("<stream:stream", answer);
            CONNECT_UNTIL(rig, rig.server.scriptIsDone());
            rig.gateway->DoDisconnect();
            rig.gateway->DoDisconnect();
            TICK_UNTIL(rig, rig.server.received().contains("</stream:stream>"));
            rig.server.hangUp();
            TICK_UNTIL(rig, rig.isClosed());
            QVERIFY(rig.host.progress.isEmpty());
            rig.server.onLegacySignIn();
            CONNECT_UNTIL(rig, rig.isUp());
            QCOMPARE(rig.count("<presence type=\"close\"/>"), 1);
        }
    }

    void leavingWithinAQuestionIsHarmless()
    {
        for (const QString what : {"disconnect", "connect anew", "destroy", "tick"}) {
            GatewayRig rig;
            bool asked = false;
            rig.server.onSaslSignIn();
            rig.host.duringQuestion = [&] {
                if (std::exchange(asked, true))
                    return;
                if (what == "disconnect")
                    rig.gateway->DoDisconnect();
                else if (what == "connect anew")
                    rig.connectTo("bad server");
                else if (what == "destroy")
                    rig.gateway.reset();
                else
                    rig.tick();
            };
            CONNECT_UNTIL(rig, asked);
            if (what == "tick")
                TICK_UNTIL(rig, rig.isUp());
            else if (what != "destroy")
                TICK_UNTIL(rig, (rig.now += 1'000) && rig.isClosed() && !rig.gateway->isconnected());
        }
    }
};

BRELO_TEST(GatewayConnectTest)
#include "GatewayConnectTest.moc"
