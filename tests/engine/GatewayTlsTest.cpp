#include "support/GatewayRig.h"
#include "support/TestCertificate.h"
#include "support/TestRunner.h"

#include <QTest>

namespace
{

const QByteArray offer =
    "<stream:features><starttls xmlns='urn:ietf:params:xml:ns:xmpp-tls'/></stream:features>";
const QByteArray proceed = "<proceed xmlns='urn:ietf:params:xml:ns:xmpp-tls'/>";

QByteArray fingerprint()
{
    return testCertificate::certificate().digest(QCryptographicHash::Sha256);
}

void offerTls(ScriptedServer& server)
{
    server.on("<stream:stream", ScriptedServer::header() + offer);
    server.on("<starttls", proceed, ScriptedServer::Then::StartTls);
}

} // namespace

// The server's certificate is signed by itself and carries another name: a person has to judge it.
class GatewayTlsTest : public QObject
{
    Q_OBJECT

private slots:
    void theQuestionDecides_data();
    void theQuestionDecides();
    void aPinnedCertificateIsNotAskedFor();
    void secureTakesTlsOrNothing_data();
    void secureTakesTlsOrNothing();
    void directTlsIsTriedWhenSecure();
    void whatCameInClearDoesNotPassForTls();
    void leavingWithinTheQuestionSendsNothing();
};

void GatewayTlsTest::theQuestionDecides_data()
{
    QTest::addColumn<CertificateAnswer>("answer");
    QTest::newRow("refuse") << CertificateAnswer::Refuse;
    QTest::newRow("once") << CertificateAnswer::AcceptOnce;
    QTest::newRow("always") << CertificateAnswer::AcceptAlways;
}

void GatewayTlsTest::theQuestionDecides()
{
    QFETCH(CertificateAnswer, answer);
    const bool accepted = answer != CertificateAnswer::Refuse;
    GatewayRig rig;
    rig.host.certificateAnswer = answer;
    QByteArray before;
    rig.host.duringQuestion = [&] { before = rig.server.received(); };
    offerTls(rig.server);
    rig.server.onSaslSignIn();
    rig.connectToServer();
    TICK_UNTIL(rig, accepted ? rig.isUp() : rig.isClosed());
    QCOMPARE(rig.host.certificates.size(), 1);
    const auto info = rig.host.certificates.first();
    QCOMPARE(info.subject, QStringLiteral("server.test"));
    QCOMPARE(info.sha256, fingerprint());
    QVERIFY(info.problems.size() >= 2);
    QVERIFY(info.notAfter > info.notBefore);
    QVERIFY2(!before.contains("</auth>") && before.endsWith("/>"), before.constData());
    QCOMPARE(rig.host.pins.contains("127.0.0.1"), answer == CertificateAnswer::AcceptAlways);
    QCOMPARE(rig.server.received().contains("</auth>"), accepted);
    QVERIFY(rig.host.plainQuestions.isEmpty());
    if (!accepted)
        QVERIFY(rig.host.progress.value(0).contains(u"certificate"));
}

void GatewayTlsTest::aPinnedCertificateIsNotAskedFor()
{
    GatewayRig rig;
    rig.host.pins["127.0.0.1"] = fingerprint();
    offerTls(rig.server);
    rig.server.onSaslSignIn();
    rig.connectToServer();
    TICK_UNTIL(rig, rig.isUp());
    QVERIFY(rig.host.certificates.isEmpty());
    rig.gateway->DoDisconnect();

    rig.host.pins["127.0.0.1"] = QByteArray(32, 'x');
    rig.host.certificateAnswer = CertificateAnswer::Refuse;
    offerTls(rig.server);
    rig.connectToServer();
    TICK_UNTIL(rig, rig.isClosed());
    QCOMPARE(rig.host.certificates.size(), 1);
}

void GatewayTlsTest::secureTakesTlsOrNothing_data()
{
    QTest::addColumn<QByteArray>("features");
    QTest::addColumn<QByteArray>("answer");
    const QByteArray plain =
        "<stream:features><mechanisms xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><mechanism>"
        "PLAIN</mechanism></mechanisms></stream:features>";
    QTest::newRow("not offered") << ScriptedServer::header() + plain << QByteArray();
    QTest::newRow("no features") << ScriptedServer::header(false) << QByteArray();
    QTest::newRow("refused") << ScriptedServer::header() + offer
                             << QByteArray("<failure xmlns='urn:ietf:params:xml:ns:xmpp-tls'/>");
}

void GatewayTlsTest::secureTakesTlsOrNothing()
{
    QFETCH(QByteArray, features);
    QFETCH(QByteArray, answer);
    GatewayRig rig;
    rig.gateway->setSecure(true);
    // Direct TLS is tried first; to a server that waits for it in clear it is a long line of noise.
    rig.server.on(QByteArray("\x16\x03", 2), "nonsense", ScriptedServer::Then::Close);
    rig.server.on("<stream:stream", features);
    rig.server.on("<starttls", answer);
    rig.connectToServer();
    TICK_UNTIL(rig, rig.isClosed());
    QCOMPARE(rig.server.connections(), 2);
    QVERIFY2(rig.host.progress.value(0).contains(u"no secure connection"),
             qPrintable(rig.host.progress.value(0)));
    QVERIFY(!rig.server.received().contains("</auth>") && !rig.server.received().contains("jabber:iq:auth"));
}

void GatewayTlsTest::directTlsIsTriedWhenSecure()
{
    GatewayRig rig;
    rig.gateway->setSecure(true);
    rig.server.setDirectTls();
    rig.server.onLegacySignIn();
    rig.connectToServer();
    TICK_UNTIL(rig, rig.isUp());
    QCOMPARE(rig.server.connections(), 1);
    QCOMPARE(rig.host.certificates.size(), 1);
}

void GatewayTlsTest::whatCameInClearDoesNotPassForTls()
{
    GatewayRig rig;
    rig.server.on("<stream:stream", ScriptedServer::header() + offer);
    rig.server.on("<starttls", proceed + "<stream:features/>");
    rig.connectToServer();
    TICK_UNTIL(rig, rig.isClosed());
    QVERIFY(rig.host.certificates.isEmpty());
}

void GatewayTlsTest::leavingWithinTheQuestionSendsNothing()
{
    for (const bool destroy : {false, true}) {
        GatewayRig rig;
        rig.host.certificateAnswer = CertificateAnswer::AcceptAlways;
        rig.host.duringQuestion = [&] { destroy ? rig.gateway.reset() : rig.gateway->DoDisconnect(); };
        offerTls(rig.server);
        rig.server.onSaslSignIn();
        rig.connectToServer();
        TICK_UNTIL(rig, !rig.host.certificates.isEmpty() && (destroy || rig.isClosed()));
        TICK_UNTIL(rig, !rig.server.isConnected());
        QVERIFY(rig.host.pins.isEmpty());
        QCOMPARE(rig.server.received().count("<stream:stream"), 1);
    }
}

BRELO_TEST(GatewayTlsTest)
#include "GatewayTlsTest.moc"
