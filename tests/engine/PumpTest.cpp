#include "engine/ApplicationPlugIn.h"
#include "engine/StanzaQueue.h"
#include "engine/TempVRXCore.h"
#include "engine/wire/session/GatewayClient.h"
#include "support/FakeEngine.h"
#include "support/RecordingHost.h"
#include "support/ScriptedServer.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class PumpTest : public QObject
{
    Q_OBJECT

    // Writes down what comes, and may do something with each.
    struct Recorder : ApplicationPlugIn {
        QStringList came;
        std::function<void()> onEach = [] {};
        int depth = 0;
        int deepest = 0;

        void OnPresence(PlugInContext& context) override { take(context.Stanza().PresenceFields().Type()); }
        void OnMessage(PlugInContext& context) override { take(context.Stanza().MessageFields().Body()); }
        void take(const QString& what)
        {
            came += what;
            deepest = std::max(deepest, ++depth);
            onEach();
            --depth;
        }
    };
    // The engine as the client holds it, save for the timer: whatever happens, nobody waits for a tick of it.
    struct Pump {
        Pump() { core.PluginManager->PlugIn(&recorder, nullptr); }
        void say(const QString& body)
        {
            core.PluginManager->Queue()->deliver(
                Stanza::fromXml(QStringLiteral("<message from=\"a@b\"><body>%1</body></message>").arg(body)));
        }

        RecordingHost host;
        Recorder recorder;
        TempVRXCore core{std::make_unique<GatewayClient>(host)};
    };
    // So many turns of the event loop, as a window would notice them.
    static void turns(int count)
    {
        QEventLoop loop;
        QTimer turn;
        QObject::connect(&turn, &QTimer::timeout, &loop, [&] { --count > 0 ? void() : loop.quit(); });
        turn.start();
        loop.exec();
    }

private slots:
    void aSessionNeedsNoTimer()
    {
        for (const QString way : {"jabber:iq:auth", "SASL", "TLS"}) {
            Pump pump;
            ScriptedServer server;
            way == "jabber:iq:auth" ? server.onLegacySignIn() : server.onSaslSignIn();
            if (way == "TLS")
                server.setDirectTls();
            pump.core.Gateway->setSecure(way == "TLS");
            QString resource = "garden";
            pump.core.Gateway->DoConnect("romeo", "s3cret", server.address(), resource);
            QTRY_COMPARE(pump.recorder.came, QStringList("connect"));
            QTRY_VERIFY(server.received().contains("jabber:iq:agents"));
            pump.core.PluginManager->Queue()->sendRaw("<message to=\"a@b\"><body>out</body></message>",
                                                      nullptr);
            QTRY_VERIFY(server.received().contains("<body>out</body>"));
            server.say("<message from='a@b'><body>in</body></message>");
            QTRY_COMPARE(pump.recorder.came.last(), "in");
            pump.core.Gateway->DoDisconnect();
            QTRY_VERIFY(server.received().endsWith("</stream:stream>"));
            server.hangUp();
            QTRY_COMPARE(pump.recorder.came.last(), "close");
        }
    }

    void whoeverPutsAStanzaInWakesTheEngine()
    {
        StanzaQueue queue;
        int woken = 0;
        queue.setWakeUp([&woken] { ++woken; });
        const auto stanza = Stanza::fromXml("<presence/>");
        queue.deliver(stanza);
        queue.deliverNext(stanza);
        queue.sendRaw("<presence/>", nullptr);
        queue.sendBuilt(stanza->root(), nullptr);
        QCOMPARE(woken, 4);
    }

    void onlyWholeStanzasPassTheWall_data()
    {
        columns<QString, bool>("text", "passes");
        row("message", " <message to='a@b'><body>&lt;&#233; é</body></message>\n", true);
        row("prefix", "<iq><p:q xmlns:p='u' xml:lang='de'><![CDATA[&]]></p:q></iq>", true);
        const QString bad =
            "|x|<message/><message/>|<message/>x|<stream/>|<p:message xmlns:p='jabber:client'/>|<message>|"
            "<message><body>a & b</body></message>|<message><body>\x01</body></message>|"
            "<message><body>&#1;</body></message>|<message to='a' to='b'/>|<message to=a/>|"
            "<!DOCTYPE a><message/>|<!DOCTYPE a [<!ENTITY e 'x'>]><message>&e;</message>|"
            "<message>&e;</message>|<?xml version='1.0'?><message/>|<message><!-- x --></message>|"
            "<message><?p x?></message>|<message><p:x/></message>|<message><body></message></body>";
        for (const auto& text : bad.split('|'))
            row(qPrintable(text), text, false);
    }
    void onlyWholeStanzasPassTheWall()
    {
        const auto [text, passes] = fetched<QString, bool>();
        StanzaQueue queue;
        QString error;
        QCOMPARE(queue.sendRaw(text, &error), passes);
        QCOMPARE(error.isEmpty(), passes);
        QCOMPARE(queue.hasOutbound(), passes);
    }

    void aBoxKeepsTheEngineWaiting()
    {
        Pump pump;
        pump.recorder.onEach = [&pump] {
            if (pump.recorder.came.size() == 1)
                pump.say("second");
            pump.core.tick();
            turns(5);
        };
        pump.say("first");
        QTRY_COMPARE(pump.recorder.came, QStringList({"first", "second"}));
        QCOMPARE(pump.recorder.deepest, 1);
    }

    // A gateway that takes long has its tick for itself, and what it brought the next one.
    void aLongTickOfTheGatewayIsNoLonger()
    {
        struct Slow : FakeGateway {
            void Trigger() override
            {
                ++ticks;
                for (const QDeadlineTimer busy(30); !busy.hasExpired();) {
                }
            }
            int ticks = 0;
        };
        Recorder recorder;
        TempVRXCore core(std::make_unique<Slow>());
        core.PluginManager->PlugIn(&recorder, nullptr);
        core.PluginManager->Queue()->deliver(Stanza::fromXml("<presence type=\"a\"/>"));
        for (const auto& [ticks, came] : QList<std::pair<int, int>>({{1, 0}, {1, 1}, {2, 1}})) {
            core.tick();
            QCOMPARE(static_cast<Slow&>(*core.Gateway).ticks, ticks);
            QCOMPARE(recorder.came.size(), came);
        }
        // Nobody else has to ask for the dispatch.
        for (const int came : {2, 3}) {
            core.PluginManager->Queue()->deliver(Stanza::fromXml("<presence type=\"b\"/>"));
            QTRY_COMPARE(recorder.came.size(), came);
        }
    }

    // What is more than a tick can do waits until the windows had their turn.
    void aFloodLeavesTurnsToTheWindows()
    {
        Pump pump;
        int turn = 0;
        QTimer window;
        connect(&window, &QTimer::timeout, this, [&turn] { ++turn; });
        window.start();
        QList<int> turnOf;
        pump.recorder.onEach = [&] {
            turnOf += turn;
            for (const QDeadlineTimer busy(30); !busy.hasExpired();) {
            }
        };
        for (const char* body : {"1", "2", "3"})
            pump.say(body);
        QTRY_COMPARE(turnOf.size(), 3);
        QVERIFY2(turnOf[0] < turnOf[1] && turnOf[1] < turnOf[2], "the flood had the loop for itself");
    }
};

BRELO_TEST(PumpTest)
#include "PumpTest.moc"
