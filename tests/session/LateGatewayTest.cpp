#include "session/LateGateway.h"

#include "support/FakeEngine.h"
#include "support/RecordingHost.h"
#include "support/TestRunner.h"

// A gateway that writes down how it was set up, in order.
struct NotingGateway : FakeGateway {
    QStringList& log;
    explicit NotingGateway(QStringList& list) : log(list) { connected = true; }
    void DoConnect(const QString& user, const QString&, const QString& server, QString& name) override
    {
        log += QStringList{"connect", user, server, name}.join(u' ');
    }
    void setSecure(bool on) override { log += on ? "secure" : "open"; }
    void setProxy(const ProxyServer& value) override { log += "proxy " + value.host; }
    void setQueue(std::shared_ptr<StanzaQueue>) override { log += "queue"; }
    void Trigger() override { log += "trigger"; }
};

class LateGatewayTest : public QObject
{
    Q_OBJECT
private slots:
    void theRealOneIsMadeOnceAtTheFirstConnection()
    {
        QStringList log;
        RecordingHost host;
        LateGateway gateway(host, [&log](ConnectionHost&) { return std::make_unique<NotingGateway>(log); });
        gateway.setQueue(std::make_shared<StanzaQueue>());
        gateway.setSecure(true);
        gateway.setProxy({ProxyServer::Kind::Socks4, "door", 1080, {}, {}});
        gateway.DoDisconnect();
        gateway.Trigger();
        QVERIFY(log.isEmpty());
        QVERIFY(!gateway.isconnected() && gateway.Secure());
        QString resource = QString("desk");
        gateway.DoConnect("romeo", {}, "home:5222", resource);
        gateway.Trigger();
        gateway.DoConnect("romeo", {}, "home", resource);
        QCOMPARE(log.join(u'|'),
                 "queue|secure|proxy door|connect romeo home:5222 desk|trigger|connect romeo home desk");
        QVERIFY(gateway.isconnected());
    }

    void aMissingPartEndsTheAttemptWithWords()
    {
        RecordingHost host;
        LateGateway gateway(host, [](ConnectionHost&) { return nullptr; });
        auto queue = std::make_shared<StanzaQueue>();
        gateway.setQueue(queue);
        QString resource;
        gateway.DoConnect({}, {}, "home", resource);
        gateway.Trigger();
        const auto notice = queue->takeInbound();
        QVERIFY(notice);
        QCOMPARE(notice->PresenceFields().Type(), "close");
        QCOMPARE(host.progress.size(), 1);
        gateway.Trigger();
        QVERIFY(!queue->takeInbound());
    }
};

BRELO_TEST(LateGatewayTest)
#include "LateGatewayTest.moc"
