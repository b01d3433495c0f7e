#include "desktop/Http.h"
#include "engine/ApplicationPlugIn.h"
#include "engine/TempVRXCore.h"
#include "session/LateNetwork.h"
#include "support/RecordingHost.h"
#include "support/ScriptedServer.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <QTcpSocket>
#include <QThread>

#include <atomic>
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

    void aPasswordIsOfferedOnce_data()
    {
        columns<QByteArray, QByteArray, int>("challenge", "offer", "requests");
        const QByteArray basic = "Basic YW5uOnNlY3JldA==";
        row("taken", QByteArray("Basic realm=\"mail\""), basic, -2);
        row("refused", QByteArray("Basic realm=\"mail\""), basic, 2);
        row("refused with ever new realms", QByteArray("Basic realm=\"$\""), basic, 2);
        row("a digest is taken", QByteArray("Digest nonce=\"n\""), QByteArray("Digest username=\"ann\""), -2);
        row("every digest is stale", QByteArray("Digest nonce=\"$\", stale=true"),
            QByteArray("Digest username=\"ann\""), 2);
        row("NTLM, in its steps",
            QByteArray("NTLM TlRMTVNTUAACAAAAAAAAADgAAAACAoECASNFZ4mrze8AAAAAAAAAAAAAAAAAAAAABQCTCAAAAA8="),
            QByteArray("NTLM TlRMTVNTUAAD"), 4);
        row("nothing that is known", QByteArray("Bearer"), QByteArray(), 1);
    }
    void aPasswordIsOfferedOnce()
    {
        const auto [challenge, offer, requests] = fetched<QByteArray, QByteArray, int>();
        ScriptedServer server;
        for (int number = 1; number <= 20; ++number) {
            const bool isTaken = number == -requests;
            server.on("\r\n\r\n", isTaken
                                      ? QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n")
                                      : "HTTP/1.1 401 No\r\nWWW-Authenticate: " +
                                            QByteArray(challenge).replace("$", QByteArray::number(number)) +
                                            "\r\nContent-Length: 4\r\n\r\ntext");
        }
        auto question = questionTo(server);
        question.user = "ann";
        question.password = "secret";
        const auto told = ask(question);
        QCOMPARE(told.status, requests < 0 ? 200 : 401);
        QCOMPARE(told.outcome, Outcome::Whole);
        QCOMPARE(told.body, requests < 0 ? QByteArray() : QByteArray("text"));
        QCOMPARE(20 - server.stepsLeft(), qAbs(requests));
        QCOMPARE(server.received().count("Authorization: " + offer), offer.isEmpty() ? 0 : 1);
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

    // A server that never stops sending is not waited for: it would send megabytes meanwhile.
    void anEndlessAnswerHoldsNobodyUp()
    {
        std::atomic<qint64> sent = 0;
        std::atomic<quint16> port = 0;
        const std::unique_ptr<QThread> server(QThread::create([&sent, &port] {
            QTcpServer listener;
            listener.listen(QHostAddress::LocalHost);
            port = listener.serverPort();
            listener.waitForNewConnection(20'000);
            const std::unique_ptr<QTcpSocket> peer(listener.nextPendingConnection());
            while (peer->isValid() && !QThread::currentThread()->isInterruptionRequested()) {
                sent += peer->write("HTTP/1.1 100 Continue\r\n\r\n");
                peer->waitForBytesWritten(100);
            }
        }));
        server->start();
        QTRY_VERIFY(port > 0);
        LateNetwork network;
        auto call =
            network.ask({"POLL", QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(port)), {}, {}, {}, {}},
                        [](const auto&) {});
        QTRY_VERIFY(sent > 10'000);
        const qint64 before = sent;
        call.reset();
        const qint64 meanwhile = sent - before;
        server->requestInterruption();
        QVERIFY(server->wait());
        QVERIFY2(meanwhile < 500'000, qPrintable(QString::number(meanwhile)));
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
