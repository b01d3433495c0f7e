#include "Peer.h"
#include "sandbox/demo/Bench.h"
#include "sandbox/demo/Cast.h"
#include "sandbox/demo/Life.h"
#include "support/TestRunner.h"

#include <QSignalSpy>
#include <QTest>

using sandbox::SandboxServer;

class Scripting : public QObject
{
    Q_OBJECT
    SandboxServer* server_ = nullptr;
    static constexpr const char* Get = "<iq id=\"g\" type=\"get\"><query xmlns=\"jabber:iq:roster\"/></iq>";

private slots:
    void init()
    {
        server_ = new SandboxServer;
        server_->world().addAccount("romeo", "secret");
        server_->world().addContact("romeo", "juliet", QString::fromUtf8("J\xc3\xbcliet \xe2\x82\xac"));
        QVERIFY(server_->listen());
    }
    void cleanup() { delete server_; }

    void writesComeInPieces_data()
    {
        QTest::addColumn<int>("size");
        QTest::newRow("1") << 1;
        QTest::newRow("7") << 7;
    }
    void writesComeInPieces()
    {
        QFETCH(int, size);
        Peer peer(*server_);
        QVERIFY(peer.signIn("romeo", "secret"));
        const QByteArray whole = peer.ask(Get);
        peer.chunks = 0;
        server_->script().pace.pieceSize = size;
        QCOMPARE(peer.ask(Get), whole);
        QVERIFY2(peer.chunks > 10, "the pieces arrived together");
    }

    void stanzasAreReadHoweverTheyAreCut()
    {
        Peer peer(*server_);
        peer.openStream();
        const QByteArray stanza =
            "<iq type='get' id='\xc3\xa4'>\r\n<query xmlns=\"jabber:iq:auth\">\n\xe2\x82\xac"
            "<username>&lt;\xf0\x9f\x98\x80</username></query></iq>";
        for (qsizetype at = 1; at < stanza.size(); ++at) {
            peer.write(" \n" + stanza.left(at));
            peer.socket.flush();
            QCoreApplication::processEvents();
            const QByteArray got = peer.ask(stanza.mid(at));
            QVERIFY2(got.startsWith("<iq type=\"result\" id=\"\xc3\xa4\"") && got.count("<iq ") == 1, got);
        }
        QCOMPARE(server_->received().count(stanza), stanza.size() - 1);
    }

    void answersAreScripted()
    {
        Peer peer(*server_);
        QVERIFY(peer.signIn("romeo", "secret"));
        server_->script().answer("jabber:iq:roster", "<iq id='{id}' to='{me}'>&odd;", 1);
        QCOMPARE(peer.ask(Get), QByteArray("<iq id='g' to='romeo@im.test/Desk'>&odd;"));
        QVERIFY(peer.ask(Get).contains("juliet@im.test"));
        server_->script().answer("jabber:iq:roster", "");
        QVERIFY(peer.ask(Get).isEmpty());
        server_->sendText("<raw");
        QVERIFY(peer.sees("<raw"));
    }

    void requestsAndWritesAreHeldUntilReleased()
    {
        Peer peer(*server_);
        QVERIFY(peer.signIn("romeo", "secret"));
        QSignalSpy arrived(server_, &SandboxServer::stanzaReceived);
        server_->script().hold("jabber:iq:roster");
        QVERIFY(peer.ask(Get).isEmpty());
        QCOMPARE(arrived.size(), 2);
        server_->release();
        QVERIFY(peer.news().contains("juliet@im.test"));

        server_->script().pace.held = true;
        peer.write(Get);
        QTRY_COMPARE(server_->countReceived("jabber:iq:roster"), 2);
        QVERIFY(peer.incoming.isEmpty());
        server_->script().pace.held = false;
        server_->release();
        QVERIFY(peer.sees("juliet@im.test"));
    }

    void streamIsCutAtAByte_data()
    {
        QTest::addColumn<int>("at");
        for (const int at : {0, 1, 40, 150})
            QTest::addRow("%d", at) << at;
    }
    void streamIsCutAtAByte()
    {
        QFETCH(int, at);
        server_->script().pace.cutAfter = at;
        Peer peer(*server_);
        peer.write("<stream:stream xmlns='jabber:client' xmlns:stream='http://etherx.jabber.org/streams' "
                   "to='im.test'>");
        if (at == 150) // beyond the header
            QVERIFY(peer.sees("<stream:stream"));
        peer.write(Get);
        QVERIFY(peer.isClosed());
        QCOMPARE(peer.incoming.size(), at);
        QTRY_COMPARE(server_->connectionCount(), 0);
    }

    void endsComeInEveryWay_data()
    {
        QTest::addColumn<QByteArray>("way");
        QTest::addColumn<QByteArray>("last");
        QTest::newRow("closed") << QByteArray("close") << QByteArray("</stream:stream>");
        QTest::newRow("dropped") << QByteArray("abort") << QByteArray();
        QTest::newRow("by the client") << QByteArray("</stream:stream>") << QByteArray("</stream:stream>");
        QTest::newRow("not well-formed")
            << QByteArray("<a></b>")
            << QByteArray("<stream:error>Invalid XML</stream:error></stream:stream>");
        QTest::newRow("loose text") << QByteArray(" x <a/>")
                                    << QByteArray("<stream:error>Invalid XML</stream:error></stream:stream>");
        QTest::newRow("a comment") << QByteArray("<!-- -->")
                                   << QByteArray("<stream:error>Invalid XML</stream:error></stream:stream>");
        QTest::newRow("a DTD") << QByteArray("<!DOCTYPE a><a/>")
                               << QByteArray("<stream:error>Invalid XML</stream:error></stream:stream>");
    }
    void endsComeInEveryWay()
    {
        QFETCH(QByteArray, way);
        QFETCH(QByteArray, last);
        Peer peer(*server_);
        QVERIFY(peer.signIn("romeo", "secret"));
        if (way == "close")
            server_->closeAll();
        else if (way == "abort")
            server_->abortAll();
        else
            peer.write(way);
        QVERIFY(peer.isClosed());
        QCOMPARE(peer.incoming, last);
        QTRY_COMPARE(server_->connectionCount(), 0);
        QVERIFY(Peer(*server_).signIn("romeo", "secret"));
    }

    void silentServerAcceptsAndSaysNothing()
    {
        server_->script().silent = true;
        Peer peer(*server_);
        peer.write("<stream:stream xmlns='jabber:client' xmlns:stream='http://etherx.jabber.org/streams' "
                   "to='im.test'>");
        QTRY_COMPARE(server_->connectionCount(), 1);
        QTRY_COMPARE(peer.socket.bytesToWrite(), 0);
        server_->abortAll();
        QVERIFY(peer.isClosed());
        QVERIFY(peer.incoming.isEmpty());
    }

    void floodsArriveWhole()
    {
        sandbox::bench::populate(server_->world(), 500, 7);
        Peer peer(*server_);
        QVERIFY(peer.signIn("bench", "bench"));
        const QByteArray list = peer.ask(Get);
        QCOMPARE(list.count("<item "), 500);
        QVERIFY(list.contains("<group>Group 7</group>") && !list.contains("<group>Group 8</group>"));
        peer.write("<message to=\"control@im.test\"><body>presences</body></message>");
        QVERIFY(peer.sees("<body>done</body></message>"));
        QCOMPARE(peer.incoming.count("<presence "), 500);
        peer.incoming.clear();
        peer.write("<message to=\"control@im.test\"><body>messages 900 1000 3</body></message>");
        QVERIFY(peer.sees("<body>done</body></message>"));
        QCOMPARE(peer.incoming.count("<message "), 901);
        QCOMPARE(peer.incoming.count("from=\"contact3@im.test/Home\""), 300);
        const auto body = peer.incoming.indexOf("<body>") + 6;
        QCOMPARE(peer.incoming.indexOf("</body>") - body, 1000);
        peer.incoming.clear();
        QVERIFY(peer.ask("<message to=\"control@im.test\"><body>dance</body></message>").contains("Say "));
    }

    void demoAnswersWithTypingFirst()
    {
        SandboxServer demo;
        sandbox::demo::populate(demo.world());
        sandbox::demo::Life life(demo);
        QVERIFY(demo.listen());
        Peer peer(demo);
        QVERIFY(peer.signIn("demo", "demo"));
        QCOMPARE(peer.ask(Get).count("<item "), 12);
        peer.ask("<presence/>");
        peer.write("<message to=\"eva@im.test\" type=\"chat\"><body>Hello &amp; you</body></message>");
        QVERIFY(peer.sees("<x xmlns=\"jabber:x:event\"><composing/></x>"));
        QVERIFY(!peer.incoming.contains("<body>"));
        QVERIFY(peer.sees("<body>Hello &amp; you</body>"));
    }
};

BRELO_TEST(Scripting)
#include "Scripting.moc"
