#include "AuthPeer.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include "engine/Xml.h"

#include <QTest>

using State = StreamAuth::State;

namespace
{

QString sasl(const QString& name, const QString& inner = {})
{
    return "<" + name + " xmlns=\"urn:ietf:params:xml:ns:xmpp-sasl\">" + inner + "</" + name + ">";
}

QString challenge(const QByteArray& plain)
{
    return sasl("challenge", plain.toBase64());
}

// Feeds the server's words until it accepts or refuses; what is left to say stands in the result.
QByteArray converse(AuthPeer& peer, SaslServer& server)
{
    for (int round = 0; round < 5; ++round) {
        const auto word = server.step(xml::text(peer.written()).toLatin1());
        if (server.ok() || word.isEmpty())
            return word;
        peer.feed(sasl("challenge", word));
    }
    return {};
}

// The nonce of the client's first SCRAM message.
QByteArray clientNonce(AuthPeer& peer)
{
    const auto first = QByteArray::fromBase64(xml::text(peer.written()).toLatin1());
    return first.mid(first.indexOf(",r=") + 3);
}

} // namespace

class AuthSaslTest : public QObject
{
    Q_OBJECT

private slots:
    void strongestMechanismSignsIn_data()
    {
        columns<QStringList, QString>("offered", "taken");
        row("all", QStringList{"PLAIN", "SCRAM-SHA-1", "SCRAM-SHA-256", "X-OTHER"}, "SCRAM-SHA-256");
        row("with channel binding", QStringList{"SCRAM-SHA-1-PLUS", "SCRAM-SHA-1"}, "SCRAM-SHA-1");
        row("plain only", QStringList{"PLAIN", "DIGEST-MD5"}, "PLAIN");
    }

    void strongestMechanismSignsIn()
    {
        QFETCH(QStringList, offered);
        QFETCH(QString, taken);
        AuthPeer peer;
        peer.open(mechanisms(offered));
        QCOMPARE(peer.auth.state(), State::Working);
        SaslServer server(taken, "juliet", "r0m30");
        if (taken == "PLAIN") {
            const auto auth = peer.written();
            QCOMPARE(xml::attribute(auth, "mechanism"), taken);
            QCOMPARE(QByteArray::fromBase64(xml::text(auth).toLatin1()), QByteArray("\0juliet\0r0m30", 13));
            peer.feed(sasl("success"));
        } else {
            const auto last = converse(peer, server);
            QVERIFY(server.ok());
            QCOMPARE(peer.auth.state(), State::Working);
            peer.feed(sasl("success", last));
        }
        QCOMPARE(peer.auth.state(), State::RestartStream);
        QVERIFY(peer.auth.error().isEmpty());
    }

    void serversProofMayComeBeforeSuccess()
    {
        AuthPeer peer;
        peer.open(mechanisms({"SCRAM-SHA-256"}));
        SaslServer server("SCRAM-SHA-256", "juliet", "r0m30");
        const auto last = converse(peer, server);
        peer.feed(sasl("challenge", last));
        QCOMPARE(peer.writtenText(),
                 QString("<response xmlns=\"urn:ietf:params:xml:ns:xmpp-sasl\"></response>"));
        peer.feed(sasl("success"));
        QCOMPARE(peer.auth.state(), State::RestartStream);
    }

    void serverThatDoesNotProveItselfIsRefused_data()
    {
        columns<QString>("success");
        row("no signature", "");
        row("forged signature", QString::fromLatin1(("v=" + QByteArray(32, 'x').toBase64()).toBase64()));
        row("an error in it", QString::fromLatin1(QByteArray("e=other-error").toBase64()));
        row("no base64", "!!!!");
    }

    void serverThatDoesNotProveItselfIsRefused()
    {
        QFETCH(QString, success);
        AuthPeer peer;
        peer.open(mechanisms({"SCRAM-SHA-256"}));
        SaslServer server("SCRAM-SHA-256", "juliet", "r0m30");
        converse(peer, server);
        QVERIFY(server.ok());
        peer.feed(sasl("success", success));
        QCOMPARE(peer.auth.state(), State::Failed);
        QVERIFY(!peer.auth.takeErrorStanza());
    }

    void badChallengeEndsTheExchange_data()
    {
        columns<QByteArray>("message");
        row("another nonce", QByteArray("r=someoneelse,s=QSXCR+Q6sek8bf92,i=4096"));
        row("endless work", QByteArray("r=NONCEx,s=QSXCR+Q6sek8bf92,i=2000000000"));
        row("no work", QByteArray("r=NONCEx,s=QSXCR+Q6sek8bf92,i=0"));
        row("nonsense", QByteArray("\xff\x00,,,", 5));
        row("nothing", QByteArray());
    }

    void badChallengeEndsTheExchange()
    {
        QFETCH(QByteArray, message);
        AuthPeer peer;
        peer.open(mechanisms({"SCRAM-SHA-1"}));
        peer.feed(challenge(message.replace("NONCE", clientNonce(peer))));
        QCOMPARE(peer.auth.state(), State::Failed);
        QVERIFY(peer.writtenText().startsWith("<abort"));
        QVERIFY(!peer.auth.error().isEmpty());
    }

    void wrongPasswordReachesTheClientOnceAsItsOwnError()
    {
        AuthPeer peer;
        peer.open(mechanisms({"SCRAM-SHA-1"}) + "<auth xmlns=\"http://jabber.org/features/iq-auth\"/>");
        SaslServer server("SCRAM-SHA-1", "juliet", "another");
        converse(peer, server);
        QVERIFY(!server.ok());
        peer.feed(sasl("failure", "<not-authorized/><text>Wrong &lt;word&gt;</text>"));
        QCOMPARE(peer.auth.state(), State::Failed);
        const auto error = peer.auth.takeErrorStanza();
        QVERIFY(error);
        QCOMPARE(error->Xml(),
                 QString("<iq type=\"error\" id=\"brelo-auth\" from=\"capulet.example\"><query "
                         "xmlns=\"jabber:iq:auth\"/><error code=\"401\">Wrong &lt;word&gt;</error>"
                         "</iq>"));
        QVERIFY(!peer.auth.takeErrorStanza());
        // The old way would be a breach of XEP-0078 now.
        QVERIFY(!peer.writtenText().contains("jabber:iq:auth"));
    }

    void failureIsToldApart_data()
    {
        columns<QString, bool>("condition", "refusesAccount");
        row("disabled", "account-disabled", true);
        row("expired", "credentials-expired", true);
        row("for now", "temporary-auth-failure", false);
        row("aborted", "aborted", false);
        row("last mechanism", "invalid-mechanism", false);
    }

    void failureIsToldApart()
    {
        QFETCH(QString, condition);
        QFETCH(bool, refusesAccount);
        AuthPeer peer;
        peer.open(mechanisms({"PLAIN"}));
        peer.feed(sasl("failure", "<" + condition + "/>"));
        QCOMPARE(peer.auth.state(), State::Failed);
        QCOMPARE(bool(peer.auth.takeErrorStanza()), refusesAccount);
        QVERIFY(!peer.auth.error().isEmpty());
    }

    void unwantedMechanismGivesWayToTheNext()
    {
        AuthPeer peer;
        peer.open(mechanisms({"PLAIN", "SCRAM-SHA-1", "SCRAM-SHA-256"}));
        QStringList tried;
        for (int round = 0; round < 3; ++round) {
            tried << xml::attribute(peer.written(), "mechanism");
            peer.feed(sasl("failure", "<invalid-mechanism/>"));
        }
        QCOMPARE(tried, QStringList({"SCRAM-SHA-256", "SCRAM-SHA-1", "PLAIN"}));
        QCOMPARE(peer.auth.state(), State::Failed);
    }

    void passwordCrossesInClearOnlyWhereAllowed_data()
    {
        columns<bool, bool, bool>("encrypted", "plainAllowed", "sent");
        row("open", false, false, false);
        row("open, agreed", false, true, true);
        row("encrypted", true, false, true);
    }

    void passwordCrossesInClearOnlyWhereAllowed()
    {
        QFETCH(bool, encrypted);
        QFETCH(bool, plainAllowed);
        QFETCH(bool, sent);
        auto request = AuthPeer::standardRequest();
        request.encrypted = encrypted;
        request.plainAllowed = plainAllowed;
        AuthPeer peer(request);
        peer.open(mechanisms({"PLAIN"}));
        QCOMPARE(!peer.writtenText().isEmpty(), sent);
        QCOMPARE(peer.auth.state(), sent ? State::Working : State::Failed);
        // Never fall back to it from a stronger mechanism either.
        AuthPeer other(request);
        other.open(mechanisms({"PLAIN", "SCRAM-SHA-1"}));
        other.writtenText();
        other.feed(sasl("failure", "<invalid-mechanism/>"));
        QCOMPARE(!other.writtenText().isEmpty(), sent);
    }

    void unexpectedElementsChangeNothing()
    {
        AuthPeer peer;
        peer.feed("<message/>");
        peer.open(mechanisms({"SCRAM-SHA-1"}));
        peer.writtenText();
        for (const auto* text : {"<success/>", "<iq/>", "<iq type='result' id='brelo-auth1'/>", "<presence/>",
                                 "<challenge xmlns='other'>x</challenge>", "<features/>"})
            peer.feed(text);
        QCOMPARE(peer.auth.state(), State::Working);
        QCOMPARE(peer.writtenText(), QString());
    }
};

BRELO_TEST(AuthSaslTest)
#include "AuthSaslTest.moc"
