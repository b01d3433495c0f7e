#include "AuthPeer.h"
#include "support/GatewayRig.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <QSslConfiguration>

const QString account = "romeo@127.0.0.1";
constexpr Safety clearPlain{false, false, Proof::Plain};
constexpr Safety clearDigest{false, false, Proof::Digest};
constexpr Safety clearUnknown{false, false, Proof::None};
constexpr Safety tlsPlain{true, false, Proof::Plain};
constexpr Safety tlsScram{true, false, Proof::ScramSha256};
constexpr Safety verifiedPlain{true, true, Proof::Plain};

// What an account had is given up by the person's word alone.
class GatewaySafetyTest : public QObject
{
    Q_OBJECT

    using Script = std::function<void(ScriptedServer&)>;

    static QByteArray fingerprint()
    {
        return testCertificate::certificate().digest(QCryptographicHash::Sha256);
    }
    static void plain(ScriptedServer& server) { server.onSaslSignIn(); }
    static void legacy(ScriptedServer& server) { server.onLegacySignIn(); }
    static void tls(ScriptedServer& server)
    {
        server.on("<stream:stream", ScriptedServer::header() +
                                        "<stream:features><starttls xmlns='urn:ietf:params:xml:ns:xmpp-tls'/>"
                                        "</stream:features>");
        server.on("<starttls", "<proceed xmlns='urn:ietf:params:xml:ns:xmpp-tls'/>",
                  ScriptedServer::Then::StartTls);
        server.onSaslSignIn();
    }
    // The system trusts the server's certificate, which holds for "localhost" alone.
    struct Trusted {
        Trusted()
        {
            auto more = before;
            more.addCaCertificate(testCertificate::certificate());
            QSslConfiguration::setDefaultConfiguration(more);
        }
        ~Trusted() { QSslConfiguration::setDefaultConfiguration(before); }
        QSslConfiguration before = QSslConfiguration::defaultConfiguration();
    };

private slots:
    void lessIsAskedFor_data()
    {
        using Asked = std::optional<Safety>;
        columns<std::optional<Safety>, Script, Asked, Safety>("before", "server", "asked", "reached");
        row("the first time", Asked(), Script(plain), Asked(), clearPlain);
        row("no TLS any more", Asked(tlsPlain), Script(plain), Asked(clearPlain), clearPlain);
        row("no features any more", Asked(Safety{true, false, Proof::Digest}), Script(legacy),
            Asked(clearUnknown), clearDigest);
        row("a digest for SCRAM", Asked(Safety{false, false, Proof::ScramSha1}), Script(legacy),
            Asked(clearDigest), clearDigest);
        row("the password for SCRAM", Asked(tlsScram), Script(tls), Asked(tlsPlain), tlsPlain);
        row("the same", Asked(tlsPlain), Script(tls), Asked(), tlsPlain);
        row("more", Asked(clearPlain), Script(tls), Asked(), tlsPlain);
        row("no more in clear", Asked(clearDigest), Script(legacy), Asked(), clearDigest);
    }
    void lessIsAskedFor()
    {
        const auto [before, script, asked, reached] =
            fetched<std::optional<Safety>, Script, std::optional<Safety>, Safety>();
        for (const bool agreed : {true, false}) {
            GatewayRig rig;
            rig.host.lessAnswer = agreed;
            rig.host.pins["127.0.0.1"] = before && before->encrypted ? fingerprint() : QByteArray();
            rig.host.duringQuestion = [&rig] { rig.now += 600'000; };
            if (before)
                rig.host.safeties[account] = *before;
            rig.host.certificateAnswer = CertificateAnswer::AcceptOnce;
            script(rig.server);
            const bool goesOn = agreed || !asked;
            CONNECT_UNTIL(rig, !asked || !rig.host.lessQuestions.isEmpty());
            rig.tick(); // before the server can have answered
            TICK_UNTIL(rig, goesOn ? rig.isUp() : rig.isClosed());
            QCOMPARE(rig.host.lessQuestions, asked ? QList{*asked} : QList<Safety>());
            QVERIFY(rig.host.safeties.value(account) == (goesOn ? reached : *before));
            // Who agreed to the password in clear isn't asked for it twice.
            QCOMPARE(rig.host.plainQuestions.size(), !before && reached == clearPlain ? 1 : 0);
            if (goesOn)
                continue;
            const auto received = rig.server.received();
            QVERIFY2(!received.contains("</auth>") && !received.contains("<digest>"), received.constData());
            QVERIFY2(rig.host.progress.value(0).contains(u"less safe"),
                     qPrintable(rig.host.progress.value(0)));
        }
    }

    // It was seen under TLS, even if no sign-in came about.
    void aPinnedCertificateDoesNotLetAStreamInClearPass()
    {
        GatewayRig rig;
        rig.host.pins["127.0.0.1"] = fingerprint();
        plain(rig.server);
        CONNECT_UNTIL(rig, rig.isClosed());
        QCOMPARE(rig.host.lessQuestions, QList{clearPlain});
        QVERIFY(!rig.server.received().contains("</auth>"));
    }

    void theCertificateSaysThatItChanged_data()
    {
        using Before = CertificateInfo::Before;
        columns<Safety, QByteArray, Before, bool>("before", "pin", "said", "asks");
        row("verified before", verifiedPlain, QByteArray(), Before::Verified, true);
        row("verified before, though accepted once", verifiedPlain, fingerprint(), Before::Verified, true);
        row("another one accepted", tlsPlain, QByteArray(32, 'x'), Before::Pinned, true);
        row("none before", clearPlain, QByteArray(), Before::Nothing, true);
        row("accepted", tlsPlain, fingerprint(), Before::Nothing, false);
    }
    void theCertificateSaysThatItChanged()
    {
        const auto [before, pin, said, asks] = fetched<Safety, QByteArray, CertificateInfo::Before, bool>();
        GatewayRig rig;
        rig.host.safeties[account] = before;
        rig.host.pins["127.0.0.1"] = pin;
        tls(rig.server);
        CONNECT_UNTIL(rig, rig.isUp());
        QCOMPARE(rig.host.certificates.size(), int(asks));
        QVERIFY(!asks || rig.host.certificates.first().before == said);
        QVERIFY(rig.host.lessQuestions.isEmpty() && rig.host.safeties.value(account) == tlsPlain);
    }

    // Not even when the sign-in comes to nothing.
    void whatWasAcceptedForGoodIsNotAskedForAgain()
    {
        GatewayRig rig;
        rig.host.safeties[account] = verifiedPlain;
        rig.host.certificateAnswer = CertificateAnswer::AcceptAlways;
        tls(rig.server);
        CONNECT_UNTIL(rig, !rig.host.certificates.isEmpty());
        QVERIFY(!rig.isUp() && rig.host.safeties.value(account) == tlsPlain);
    }

    void aVerifiedCertificateIsRemembered()
    {
        const Trusted trusted;
        GatewayRig rig;
        tls(rig.server);
        rig.host.safeties["romeo@localhost"] = {true, true, Proof::ScramSha1};
        rig.host.lessAnswer = true;
        rig.connectTo(QStringLiteral("localhost:%1").arg(rig.server.serverPort()));
        TICK_UNTIL(rig, rig.isUp());
        QVERIFY(rig.host.certificates.isEmpty());
        QCOMPARE(rig.host.lessQuestions, QList{verifiedPlain}); // the certificate is as good as before
        QVERIFY(rig.host.safeties.value("romeo@localhost") == verifiedPlain);
    }

    // Nobody is asked in the middle of a session, or once more after a refusal.
    void aGuardThatIsSettledAsksNobody()
    {
        for (const bool settled : {true, false}) {
            int questions = 0;
            AuthRequest request{"juliet", "r0m30", "capulet.example", "balcony", true};
            request.guard = std::make_shared<SafetyGuard>(tlsScram, [&](const Safety&, const Safety&) {
                ++questions;
                return settled;
            });
            if (settled)
                request.guard->settle(tlsScram);
            AuthPeer peer(request);
            peer.open(mechanisms({"PLAIN", "SCRAM-SHA-1"}) +
                      "<auth xmlns='http://jabber.org/features/iq-auth'/>");
            QCOMPARE(peer.writtenText(), QString());
            QCOMPARE(peer.auth.state(), StreamAuth::State::Failed);
            QVERIFY(peer.auth.error().contains(u"less safe"));
            QCOMPARE(questions, settled ? 0 : 1);
        }
    }
};

BRELO_TEST(GatewaySafetyTest)
#include "GatewaySafetyTest.moc"
