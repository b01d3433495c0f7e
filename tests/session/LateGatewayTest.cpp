#include "session/LateGateway.h"

#include "engine/ConnectionHost.h"
#include "engine/StanzaQueue.h"
#include "support/RecordingHost.h"
#include "support/TestRunner.h"

#include <QTest>

namespace
{

// A gateway that only writes down how it was set up.
class PlainGateway : public Gateway
{
public:
    explicit PlainGateway(QStringList& log) : log_(log) {}
    void DoConnect(const QString& user, const QString&, const QString& server, QString& resource) override
    {
        log_ += QStringList{"connect", user, server, resource}.join(u' ');
    }
    void DoDisconnect() override { log_ += QStringLiteral("disconnect"); }
    bool isconnected() const override { return true; }
    QString UserName() const override { return QStringLiteral("romeo"); }
    QString Password() const override { return {}; }
    QString Server() const override { return QStringLiteral("home"); }
    bool Secure() const override { return false; }
    void setSecure(bool on) override { log_ += on ? QStringLiteral("secure") : QStringLiteral("open"); }
    void setProxy(const ProxyServer& proxy) override { log_ += QStringLiteral("proxy ") + proxy.host; }
    void setQueue(std::shared_ptr<StanzaQueue>) override { log_ += QStringLiteral("queue"); }
    void Trigger() override { log_ += QStringLiteral("trigger"); }

private:
    QStringList& log_;
};

} // namespace

class LateGatewayTest : public QObject
{
    Q_OBJECT

private slots:
    void theRealOneIsMadeOnceAtTheFirstConnection()
    {
        QStringList log;
        RecordingHost host;
        LateGateway gateway(host, [&log](ConnectionHost&) { return std::make_unique<PlainGateway>(log); });
        gateway.setQueue(std::make_shared<StanzaQueue>());
        gateway.setSecure(true);
        gateway.setProxy({ProxyServer::Kind::Socks4, "door", 1080, {}, {}});
        gateway.DoDisconnect();
        gateway.Trigger();
        QVERIFY(log.isEmpty());
        QVERIFY(!gateway.isconnected());
        QVERIFY(gateway.Secure());

        QString resource = QStringLiteral("desk");
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
