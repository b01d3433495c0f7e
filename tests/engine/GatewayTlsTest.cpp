#include "support/GatewayRig.h"
#include "support/Table.h"
#include "support/TestCertificate.h"
#include "support/TestRunner.h"

const QByteArray offer =
    "<stream:features><starttls xmlns='urn:ietf:params:xml:ns:xmpp-tls'/></stream:features>";
const QByteArray proceed = "<proceed xmlns='urn:ietf:params:xml:ns:xmpp-tls'/>";
const QByteArray plain = ScriptedServer::header() +
                         "<stream:features><mechanisms xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>"
                         "<mechanism>PLAIN</mechanism></mechanisms></stream:features>";

// The server's certificate is signed by itself and carries another name: a person has to judge it.
class GatewayTlsTest : public QObject
{
    Q_OBJECT

    static QByteArray fingerprint()
    {
        return testCertificate::certificate().digest(QCryptographicHash::Sha256);
    }
    static void offerTls(ScriptedServer& server)
    {
        server.on("<stream:stream", ScriptedServer::header() + offer);
        server.on("<starttls", proceed, ScriptedServer::Then::StartTls);
    }

private slots:
    void theQuestionDecides()
    {
        using enum CertificateAnswer;
        for (const auto answer : {Refuse, AcceptOnce, AcceptAlways}) {
            const bool accepted = answer != CertificateAnswer::Refuse;
            GatewayRig rig;
            rig.host.certificateAnswer = answer;
            QByteArray before;
            rig.host.duringQuestion = [&] { before = rig.server.received(); };
            offerTls(rig.server);
            rig.server.onSaslSignIn();
            CONNECT_UNTIL(rig, accepted ? rig.isUp() : rig.isClosed());
            QCOMPARE(rig.host.certificates.size(), 1);
            const auto info = rig.host.certificates.first();
            QCOMPARE(info.subject, "server.test");
            QCOMPARE(info.sha256, fingerprint());
            QVERIFY(info.problems.size() >= 2);
            QVERIFY(info.notAfter > info.notBefore);
            QVERIFY2(!before.contains("</auth>") && before.endsWith("/>"), before.constData());
            QCOMPARE(rig.host.pins.contains("127.0.0.1"), answer == CertificateAnswer::AcceptAlways);
            QCOMPARE(rig.server.received().contains("</auth>"), accepted);
            QVERIFY(rig.host.plainQuestions.isEmpty());
            QCOMPARE(rig.gateway->isEncrypted(), accepted);
            if (!accepted)
                QVERIFY(rig.host.progress.value(0).contains(u"certificate"));
        }
    }

    // The clocks stand while the person thinks; a server that has gone meanwhile is called again.
    void anAnswerMayTakeLong()
    {
        for (const bool tls : {true, false}) {
            for (const bool serverWaits : {true, false}) {
                GatewayRig rig;
                const auto prepare = [&] {
                    if (tls)
                        offerTls(rig.server);
                    rig.server.onSaslSignIn();
                };
                rig.host.duringQuestion = [&] {
                    rig.now += 600'000;
                    if (serverWaits)
                        return;
                    rig.server.hangUp();
                    rig.server.forget();
                    prepare();
                };
                prepare();
                CONNECT_UNTIL(rig, !rig.host.certificates.isEmpty() || !rig.host.plainQuestions.isEmpty());
                rig.tick(); // before the server can have answered
                TICK_UNTIL(rig, rig.isUp() || rig.isClosed());
                QVERIFY2(rig.isUp(), qPrintable(rig.host.progress.value(0)));
                QCOMPARE(rig.host.certificates.size() + rig.host.plainQuestions.size(), 1);
                QCOMPARE(rig.server.connections(), serverWaits ? 1 : 2);
            }
        }
    }

    void aPinnedCertificateIsNotAskedFor()
    {
        GatewayRig rig;
        rig.host.pins["127.0.0.1"] = fingerprint();
        offerTls(rig.server);
        rig.server.onSaslSignIn();
        CONNECT_UNTIL(rig, rig.isUp());
        QVERIFY(rig.host.certificates.isEmpty());
        rig.gateway->DoDisconnect();
        rig.host.pins["127.0.0.1"] = QByteArray(32, 'x');
        rig.host.certificateAnswer = CertificateAnswer::Refuse;
        offerTls(rig.server);
        CONNECT_UNTIL(rig, rig.isClosed());
        QCOMPARE(rig.host.certificates.size(), 1);
    }

    // Nobody is asked in the middle of a session, and nothing is said to the stranger, or in clear.
    void aSessionIsTakenUpAsSafelyAsItWas()
    {
        for (const QString now : {"another certificate", "no TLS", "no features"}) {
            GatewayRig rig;
            rig.host.pins["127.0.0.1"] = fingerprint();
            offerTls(rig.server);
            rig.server.onSaslSignIn("<sm xmlns='urn:xmpp:sm:3'/>");
            rig.server.on("<enable", "<enabled xmlns='urn:xmpp:sm:3' id='session-1' resume='true'/>");
            CONNECT_UNTIL(rig, rig.isUp() && rig.server.scriptIsDone());
            rig.server.say("<message from='a@b'><body>first</body></message>");
            TICK_UNTIL(rig, rig.up.last().contains(u"first"));
            rig.host.pins["127.0.0.1"] = QByteArray(32, 'x');
            if (now == "another certificate")
                offerTls(rig.server);
            if (now == "no features")
                rig.server.onLegacySignIn();
            rig.server.onSasl();
            rig.server.hangUp();
            TICK_UNTIL(rig, rig.isClosed());
            QCOMPARE(rig.server.connections(), 2);
            QVERIFY(rig.host.certificates.isEmpty() && rig.host.plainQuestions.isEmpty());
            QVERIFY(!rig.server.received().contains("</auth>") && !rig.server.received().contains("iq:auth"));
        }
    }

    void theAnswerHoldsForTheAccountJustMade()
    {
        GatewayRig rig;
        offerTls(rig.server);
        rig.server.on("<stream:stream", plain);
        rig.server.on("</auth>",
                      "<failure xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><not-authorized/></failure>");
        CONNECT_UNTIL(rig, !rig.up.isEmpty());
        offerTls(rig.server);
        rig.server.on("<stream:stream", ScriptedServer::header() + "<stream:features/>");
        rig.server.on("</iq>", "<iq type='result' id='$id'><query "
                               "xmlns='jabber:iq:register'><username/><password/></query></iq>");
        rig.server.on("</iq>", "<iq type='result' id='$id'/>");
        rig.send("<iq type=\"set\" id=\"VRX_new\"><query xmlns=\"jabber:iq:register\"><username>romeo"
                 "</username><password>secret</password></query></iq>");
        TICK_UNTIL(rig, rig.up.last().contains(u"VRX_new"));
        // The sign-in that follows is part of the same answer, a later one isn't.
        for (const int questions : {1, 2}) {
            rig.up.clear();
            offerTls(rig.server);
            rig.server.onSaslSignIn();
            CONNECT_UNTIL(rig, rig.isUp());
            QCOMPARE(rig.host.certificates.size(), questions);
        }
    }

    void secureTakesTlsOrNothing()
    {
        const std::pair<QByteArray, QByteArray> words[] = {
            {plain, {}},
            {ScriptedServer::header(false), {}},
            {ScriptedServer::header() + offer, "<failure xmlns='urn:ietf:params:xml:ns:xmpp-tls'/>"}};
        for (const auto& [features, answer] : words) {
            GatewayRig rig;
            rig.gateway->setSecure(true);
            // Direct TLS is tried first; to a server that waits for it in clear it is a long line of noise.
            rig.server.on(QByteArray("\x16\x03", 2), "nonsense", ScriptedServer::Then::Close);
            rig.server.on("<stream:stream", features);
            rig.server.on("<starttls", answer);
            CONNECT_UNTIL(rig, rig.isClosed());
            QCOMPARE(rig.server.connections(), 2);
            QVERIFY2(rig.host.progress.value(0).contains(u"no secure connection"),
                     qPrintable(rig.host.progress.value(0)));
            QVERIFY(!rig.server.received().contains("</auth>") &&
                    !rig.server.received().contains("jabber:iq:auth"));
        }
    }

    void directTlsIsTriedWhenSecure()
    {
        GatewayRig rig;
        rig.gateway->setSecure(true);
        rig.server.setDirectTls();
        rig.server.onLegacySignIn();
        CONNECT_UNTIL(rig, rig.isUp());
        QCOMPARE(rig.server.connections(), 1);
        QCOMPARE(rig.host.certificates.size(), 1);
    }

    void whatCameInClearDoesNotPassForTls()
    {
        GatewayRig rig;
        rig.server.on("<stream:stream", ScriptedServer::header() + offer);
        rig.server.on("<starttls", proceed + "<stream:features/>");
        CONNECT_UNTIL(rig, rig.isClosed());
        QVERIFY(rig.host.certificates.isEmpty());
    }

    void leavingWithinTheQuestionSendsNothing()
    {
        for (const bool destroy : {false, true}) {
            GatewayRig rig;
            rig.host.certificateAnswer = CertificateAnswer::AcceptAlways;
            rig.host.duringQuestion = [&] { destroy ? rig.gateway.reset() : rig.gateway->DoDisconnect(); };
            offerTls(rig.server);
            rig.server.onSaslSignIn();
            CONNECT_UNTIL(rig, !rig.host.certificates.isEmpty() && (destroy || rig.isClosed()));
            TICK_UNTIL(rig, !rig.server.isConnected());
            QVERIFY(rig.host.pins.isEmpty());
            QCOMPARE(rig.server.received().count("<stream:stream"), 1);
        }
    }
};

BRELO_TEST(GatewayTlsTest)
#include "GatewayTlsTest.moc"
