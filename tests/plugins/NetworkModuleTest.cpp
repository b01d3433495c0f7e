#include "desktop/Http.h"
#include "engine/ApplicationPlugIn.h"
#include "engine/TempVRXCore.h"
#include "session/LateNetwork.h"
#include "support/RecordingHost.h"
#include "support/ScriptedServer.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <optional>

using Outcome = HttpAnswer::Outcome;
using Then = ScriptedServer::Then;

// The module `network`, loaded as a program that knows nothing of Qt Network loads it.
class NetworkModuleTest : public QObject
{
    Q_OBJECT

    // Asks through the module as the program loads it, and waits for the answer.
    static HttpAnswer ask(const HttpQuestion& question)
    {
        LateNetwork network;
        std::optional<HttpAnswer> answer;
        const auto call = network.ask(question, [&answer](const HttpAnswer& came) { answer = came; });
        if (!QTest::qWaitFor([&answer] { return answer.has_value(); }, 20'000))
            qFatal("no answer came");
        return *answer;
    }
    static HttpQuestion questionTo(const ScriptedServer& server, const char* scheme = "http")
    {
        return {"POLL", QUrl(QLatin1String(scheme) + "://" + server.address() + "/inbox"), {}, {}, {}, {}};
    }

private slots:
    void answersAreToldAsTheyAre_data()
    {
        columns<QByteArray, Then, Outcome, int, QByteArray>("answer", "then", "outcome", "status", "body");
        const auto whole = [](const char* status) {
            return QByteArray("HTTP/1.1 ") + status + "\r\nSub-Id: 7\r\nContent-Length: 4\r\n\r\ntext";
        };
        row("whole", whole("207 Multi-Status"), Then::Stay, Outcome::Whole, 207, QByteArray("text"));
        row("an error", whole("500 Oops"), Then::Stay, Outcome::Whole, 500, QByteArray("text"));
        row("led elsewhere",
            QByteArray("HTTP/1.1 302 Go\r\nSub-Id: 7\r\nLocation: /x\r\nContent-Length: 0\r\n\r\n"),
            Then::Stay, Outcome::Whole, 302, QByteArray());
        row("half a body", whole("200 OK").chopped(2), Then::Close, Outcome::Unreachable, 200,
            QByteArray("te"));
        row("too much", QByteArray("HTTP/1.1 200 OK\r\nSub-Id: 7\r\n\r\n") + QByteArray(5000, 'x'),
            Then::Stay, Outcome::TooLarge, 200, QByteArray(1001, 'x'));
        row("no HTTP", QByteArray("220 smtp ready\r\n"), Then::Close, Outcome::Unreachable, 0, QByteArray());
    }
    void answersAreToldAsTheyAre()
    {
        const auto [answer, then] = fetched<QByteArray, Then>();
        ScriptedServer server;
        // A connection that broke before its first word is tried again by the system.
        for (int attempt = 0; attempt < 5; ++attempt)
            server.on("\r\n\r\n", answer, then);
        auto question = questionTo(server);
        question.headers = {{"Subscription-id", "5"}};
        question.mostBytes = 1000;
        const auto told = ask(question);
        QTEST(told.outcome, "outcome");
        QTEST(told.status, "status");
        QTEST(told.body, "body");
        QCOMPARE(told.header("sub-ID"), told.status ? QByteArray("7") : QByteArray());
        QVERIFY(server.received().startsWith("POLL /inbox HTTP/1.1\r\n"));
        QVERIFY(server.received().contains("\r\nSubscription-id: 5\r\n"));
        QCOMPARE(server.received().count("HTTP/1.1"), 1);
    }

    void urlsThatCantBeAskedAreNoAnswer()
    {
        const auto askAt = [](const char* url) { return ask({"POLL", QUrl(url), {}, {}, {}, {}}); };
        for (const auto* url :
             {"", "http://[", "http:///inbox", "file:///etc/passwd", "ftp://127.0.0.1/inbox"})
            QVERIFY2(askAt(url).outcome == Outcome::BadUrl && askAt(url).status == 0, url);
        const auto told = askAt("http://127.0.0.1:1/inbox"); // nobody is there
        QCOMPARE(told.outcome, Outcome::Unreachable);
        QCOMPARE(told.status, 0);
    }

    void aPasswordIsOfferedOnce()
    {
        for (const bool isRight : {true, false}) {
            ScriptedServer server;
            const QByteArray refusal = "HTTP/1.1 401 No\r\nWWW-Authenticate: Basic realm=\"mail\"\r\n"
                                       "Content-Length: 0\r\n\r\n";
            server.on("\r\n\r\n", refusal);
            server.on("\r\n\r\n", isRight ? "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n" : refusal);
            auto question = questionTo(server);
            question.user = "ann";
            question.password = isRight ? "secret" : "guess";
            QCOMPARE(ask(question).status, isRight ? 200 : 401);
            const QByteArray offered =
                "Authorization: Basic " + ("ann:" + question.password).toUtf8().toBase64();
            QCOMPARE(server.received().count(offered), 1);
            QVERIFY(server.scriptIsDone());
        }
    }

    void aSilentServerIsGivenUp()
    {
        ScriptedServer server;
        auto question = questionTo(server);
        question.mostMs = 100;
        QCOMPARE(ask(question).outcome, Outcome::TimedOut);
    }

    void aCertificateThatDoesntVerifyIsNotTaken()
    {
        ScriptedServer server;
        server.setDirectTls();
        auto question = questionTo(server, "https");
        question.user = "ann";
        QCOMPARE(ask(question).outcome, Outcome::Distrusted);
        QCOMPARE(server.received(), QByteArray());
    }

    void aQuestionCanBeTakenBack()
    {
        ScriptedServer server;
        LateNetwork network;
        int told = 0;
        auto call = network.ask(questionTo(server), [&told](const HttpAnswer&) { ++told; });
        QTRY_VERIFY(server.received().endsWith("\r\n\r\n"));
        call.reset();
        QTRY_VERIFY(!server.isConnected());
        QCOMPARE(told, 0);
    }

    // What the module makes works on the program's own queue and plug-in.
    void aGatewayOfTheModuleSignsIn()
    {
        struct Connected : ApplicationPlugIn {
            bool is = false;
            void OnPresence(PlugInContext& context) override
            {
                is = is || context.Stanza().PresenceFields().Type() == u"connect";
            }
        } connected;
        RecordingHost host;
        ScriptedServer server;
        server.onSaslSignIn();
        LateNetwork network;
        TempVRXCore core(network.makeGateway(host));
        core.PluginManager->PlugIn(&connected, nullptr);
        QString resource = "garden";
        core.Gateway->DoConnect("romeo", "s3cret", server.address(), resource);
        QTRY_VERIFY(connected.is);
        QTRY_VERIFY(server.received().contains("jabber:iq:agents"));
    }

    void ownAddressIsOneThatOthersCanReach()
    {
        const auto own = LateNetwork().ownAddress();
        QCOMPARE(own.text.isEmpty(), !own.fault.isEmpty());
        QVERIFY2(!own.text.startsWith("127.") && own.text.count('.') == (own.text.isEmpty() ? 0 : 3),
                 qPrintable(own.text));
    }
};

BRELO_TEST(NetworkModuleTest)
#include "NetworkModuleTest.moc"
