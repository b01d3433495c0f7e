#include "AuthPeer.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <gsasl.h>

using State = StreamAuth::State;

class AuthSaslTest : public QObject
{
    Q_OBJECT

    static QString sasl(const QString& name, const QString& inner = {})
    {
        return "<" + name + " xmlns=\"urn:ietf:params:xml:ns:xmpp-sasl\">" + inner + "</" + name + ">";
    }

    // A SASL server that knows one account's password.
    struct SaslServer {
        SaslServer(const QString& mechanism, const QByteArray& user, const QByteArray& password,
                   const QByteArray& rounds = "4096")
            : user(user), password(password), rounds(rounds)
        {
            gsasl_init(&context);
            gsasl_callback_hook_set(context, this);
            gsasl_callback_set(context, [](Gsasl* gsasl, Gsasl_session* asking, Gsasl_property property) {
                return static_cast<SaslServer*>(gsasl_callback_hook_get(gsasl))->provide(asking, property);
            });
            gsasl_server_start(context, mechanism.toLatin1().constData(), &session);
        }
        ~SaslServer()
        {
            gsasl_finish(session);
            gsasl_done(context);
        }
        Q_DISABLE_COPY(SaslServer)

        int provide(Gsasl_session* asking, Gsasl_property property) const
        {
            if (property == GSASL_PASSWORD && user == gsasl_property_fast(asking, GSASL_AUTHID))
                return gsasl_property_set(asking, GSASL_PASSWORD, password.constData());
            if (property == GSASL_SCRAM_ITER)
                return gsasl_property_set(asking, GSASL_SCRAM_ITER, rounds.constData());
            return GSASL_NO_CALLBACK;
        }
        // The server's next word to the client's `base64`, in base64. `ok` tells that it accepts the client.
        QByteArray step(const QByteArray& base64)
        {
            char* text = nullptr;
            const int code = gsasl_step64(session, base64.constData(), &text);
            ok = code == GSASL_OK;
            const QByteArray answer(text);
            gsasl_free(text);
            return ok || code == GSASL_NEEDS_MORE ? answer : QByteArray();
        }

        QByteArray user;
        QByteArray password;
        QByteArray rounds;
        Gsasl* context = nullptr;
        Gsasl_session* session = nullptr;
        bool ok = false;
    };

    // Feeds the server's words until it accepts or refuses; what is left to say stands in the result.
    static QByteArray converse(AuthPeer& peer, SaslServer& server)
    {
        for (int round = 0; round < 5; ++round) {
            const auto word = server.step(xml::text(peer.written()).toLatin1());
            if (server.ok || word.isEmpty())
                return word;
            peer.feed(sasl("challenge", word));
        }
        return {};
    }

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
        const auto [offered, taken] = fetched<QStringList, QString>();
        AuthPeer peer(offered);
        QCOMPARE(peer.auth.state(), State::Working);
        SaslServer server(taken, "juliet", "r0m30");
        if (taken == "PLAIN") {
            const auto auth = peer.written();
            QCOMPARE(xml::attribute(auth, "mechanism"), taken);
            QCOMPARE(QByteArray::fromBase64(xml::text(auth).toLatin1()), QByteArray("\0juliet\0r0m30", 13));
            peer.feed(sasl("success"));
        } else {
            const auto last = converse(peer, server);
            QVERIFY(server.ok);
            QCOMPARE(peer.auth.state(), State::Working);
            peer.feed(sasl("success", last));
        }
        QCOMPARE(peer.auth.state(), State::RestartStream);
        QVERIFY(peer.auth.error().isEmpty());
    }

    void serversProofMayComeBeforeSuccess()
    {
        AuthPeer peer(QStringList{"SCRAM-SHA-256"});
        SaslServer server("SCRAM-SHA-256", "juliet", "r0m30");
        const auto last = converse(peer, server);
        peer.feed(sasl("challenge", last));
        QCOMPARE(peer.writtenText(), sasl("response"));
        peer.feed(sasl("success"));
        QCOMPARE(peer.auth.state(), State::RestartStream);
    }

    void serverThatDoesNotProveItselfIsRefused()
    {
        const QByteArray forged = "v=" + QByteArray(32, 'x').toBase64();
        for (const QByteArray& success :
             {QByteArray(), forged.toBase64(), QByteArray("e=other-error").toBase64(), QByteArray("!!!!")}) {
            AuthPeer peer(QStringList{"SCRAM-SHA-256"});
            SaslServer server("SCRAM-SHA-256", "juliet", "r0m30");
            converse(peer, server);
            QVERIFY(server.ok);
            peer.feed(sasl("success", success));
            QCOMPARE(peer.auth.state(), State::Failed);
            QVERIFY(!peer.auth.takeErrorStanza());
        }
    }

    void badChallengeEndsTheExchange()
    {
        for (QByteArray message : std::initializer_list<QByteArray>{
                 "r=someoneelse,s=QSXCR+Q6sek8bf92,i=4096", "r=NONCEx,s=QSXCR+Q6sek8bf92,i=2000000000",
                 "r=NONCEx,s=QSXCR+Q6sek8bf92,i=0", QByteArray("\xff\x00,,,", 5), QByteArray()}) {
            AuthPeer peer(QStringList{"SCRAM-SHA-1"});
            const auto first = QByteArray::fromBase64(xml::text(peer.written()).toLatin1());
            message.replace("NONCE", first.mid(first.indexOf(",r=") + 3));
            peer.feed(sasl("challenge", message.toBase64()));
            QCOMPARE(peer.auth.state(), State::Failed);
            QVERIFY(peer.writtenText().startsWith("<abort"));
            QVERIFY(!peer.auth.error().isEmpty());
        }
    }

    void wrongPasswordReachesTheClientOnceAsItsOwnError()
    {
        AuthPeer peer;
        peer.open(mechanisms({"SCRAM-SHA-1"}) + "<auth xmlns=\"http://jabber.org/features/iq-auth\"/>");
        SaslServer server("SCRAM-SHA-1", "juliet", "another");
        converse(peer, server);
        QVERIFY(!server.ok);
        peer.feed(sasl("failure", "<not-authorized/><text>Wrong &lt;word&gt;</text>"));
        QCOMPARE(peer.auth.state(), State::Failed);
        const auto error = peer.auth.takeErrorStanza();
        QVERIFY(error);
        QCOMPARE(error->Xml(),
                 R"(<iq type="error" id="brelo-auth" from="capulet.example">)"
                 R"(<query xmlns="jabber:iq:auth"/><error code="401">Wrong &lt;word&gt;</error></iq>)");
        QVERIFY(!peer.auth.takeErrorStanza());
        // The old way would be a breach of XEP-0078 now.
        QVERIFY(!peer.writtenText().contains("jabber:iq:auth"));
    }

    void failureIsToldApart()
    {
        const QStringList ofTheAccount{"account-disabled", "credentials-expired"};
        for (const auto& condition :
             ofTheAccount + QStringList{"temporary-auth-failure", "aborted", "invalid-mechanism"}) {
            AuthPeer peer(QStringList{"PLAIN"});
            peer.feed(sasl("failure", "<" + condition + "/>"));
            QCOMPARE(peer.auth.state(), State::Failed);
            QVERIFY2(bool(peer.auth.takeErrorStanza()) == ofTheAccount.contains(condition),
                     qPrintable(condition));
            QVERIFY(!peer.auth.error().isEmpty());
        }
    }

    // So few rounds give the password away to whoever tries words.
    void fewRoundsAreNotAnswered()
    {
        for (const auto& [rounds, answered] : {std::pair("1", false), {"999", false}, {"1000", true}}) {
            AuthPeer peer(QStringList{"SCRAM-SHA-1"});
            SaslServer server("SCRAM-SHA-1", "juliet", "r0m30", rounds);
            converse(peer, server);
            QCOMPARE(server.ok, answered);
            QCOMPARE(peer.auth.state(), answered ? State::Working : State::Failed);
            QCOMPARE(peer.auth.error().contains(u"too weakly"), !answered);
        }
    }

    void unwantedMechanismGivesWayToTheNext()
    {
        AuthPeer peer(QStringList{"PLAIN", "SCRAM-SHA-1", "SCRAM-SHA-256"});
        QStringList tried;
        for (int round = 0; round < 3; ++round) {
            tried << xml::attribute(peer.written(), "mechanism");
            peer.feed(sasl("failure", "<invalid-mechanism/>"));
        }
        QCOMPARE(tried, QStringList({"SCRAM-SHA-256", "SCRAM-SHA-1", "PLAIN"}));
        QCOMPARE(peer.auth.state(), State::Failed);
    }

    void passwordCrossesInClearOnlyWhereAllowed()
    {
        for (const auto& [encrypted, plainAllowed] :
             {std::pair(false, false), {false, true}, {true, false}}) {
            const bool sent = encrypted || plainAllowed;
            const AuthRequest request{"juliet",  "r0m30",   "capulet.example",
                                      "balcony", encrypted, plainAllowed};
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
