#include "Peer.h"
#include "support/TestRunner.h"

#include <QRegularExpression>
#include <QTest>

using sandbox::SandboxServer;

class Messages : public QObject
{
    Q_OBJECT
    SandboxServer* server_ = nullptr;

private slots:
    void init()
    {
        server_ = new SandboxServer;
        server_->world().addAccount("romeo", "secret");
        server_->world().addAccount("juliet", "secret");
        QVERIFY(server_->listen());
    }
    void cleanup() { delete server_; }

    void arriveAsSent_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("text") << QByteArray("<body>a &amp; b &lt;c&gt; \xc3\xa4 \xf0\x9f\x98\x80</body>");
        QTest::newRow("blanks") << QByteArray("<body>  two\n lines </body>");
        QTest::newRow("typing") << QByteArray("<x xmlns=\"jabber:x:event\"><composing/></x>");
        QTest::newRow("invitation") << QByteArray(
            "<x xmlns=\"jabber:x:conference\" jid=\"garden@conference.im.test\"/>"
            "<subject>S</subject><body>B</body>");
    }
    void arriveAsSent()
    {
        QFETCH(QByteArray, content);
        Peer romeo(*server_), juliet(*server_);
        QVERIFY(romeo.appear("romeo"));
        QVERIFY(juliet.appear("juliet"));
        romeo.ask("<message to='juliet@im.test' type='chat'>" + content + "</message>");
        QCOMPARE(juliet.news(), "<message type=\"chat\" from=\"romeo@im.test/Desk\" to=\"juliet@im.test\">" +
                                    content + "</message>");
    }

    void waitForTheirReader()
    {
        Peer romeo(*server_);
        QVERIFY(romeo.appear("romeo"));
        romeo.ask("<message to=\"juliet@im.test\"><body>one</body></message>"
                  "<message to=\"juliet@im.test/Old\" type=\"chat\"><body>two</body></message>"
                  "<message to=\"juliet@im.test\" type=\"chat\"><x "
                  "xmlns=\"jabber:x:event\"><composing/></x></message>"
                  "<message to=\"juliet@im.test\" type=\"headline\"><body>news</body></message>");
        Peer juliet(*server_);
        QVERIFY(juliet.signIn("juliet", "secret"));
        QVERIFY(juliet.news().isEmpty());
        const QString got = QString::fromUtf8(juliet.ask("<presence/>"));
        const QRegularExpression stamped(
            "^<message from=\"romeo@im.test/Desk\" to=\"juliet@im.test\"><body>one</body>"
            "<x xmlns=\"jabber:x:delay\" from=\"juliet@im.test\" "
            "stamp=\"\\d{8}T\\d\\d:\\d\\d:\\d\\d\">");
        QVERIFY2(stamped.match(got).hasMatch(), qPrintable(got));
        QVERIFY(got.contains("<body>two</body>"));
        QCOMPARE(got.count("<message"), 2);
        QVERIFY(!juliet.ask("<presence type=\"unavailable\"/><presence/>").contains("<message"));
    }

    void goToTheBestResource()
    {
        Peer romeo(*server_), desk(*server_), phone(*server_);
        QVERIFY(romeo.appear("romeo"));
        QVERIFY(desk.appear("juliet"));
        QVERIFY(phone.signIn("juliet", "secret", "Phone"));
        phone.ask("<presence><priority>5</priority></presence>");
        desk.news();
        romeo.ask("<message to=\"juliet@im.test\"><body>bare</body></message>"
                  "<message to=\"juliet@im.test/Desk\"><body>named</body></message>"
                  "<message to=\"juliet@im.test/Gone\"><body>lost</body></message>");
        const QByteArray onPhone = phone.news();
        QVERIFY(onPhone.contains("bare") && onPhone.contains("lost") && !onPhone.contains("named"));
        QCOMPARE(desk.news().count("<message"), 1);
    }

    void reachNobodyUnknown_data()
    {
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<QByteArray>("code");
        QTest::newRow("here") << QByteArray("ghost@im.test") << QByteArray("404");
        QTest::newRow("elsewhere") << QByteArray("x@other.example") << QByteArray("502");
    }
    void reachNobodyUnknown()
    {
        QFETCH(QByteArray, to);
        QFETCH(QByteArray, code);
        Peer peer(*server_);
        QVERIFY(peer.appear("romeo"));
        const QByteArray got = peer.ask("<message to=\"" + to + "\" id=\"m\"><body>x</body></message>");
        QVERIFY2(got.startsWith("<message type=\"error\" id=\"m\" from=\"" + to + '"'), got);
        QVERIFY(got.contains("<body>x</body><error code=\"" + code + '"'));
        QVERIFY(peer.ask("<message type=\"error\" to=\"" + to + "\"><body>x</body></message>").isEmpty());
    }
};

BRELO_TEST(Messages)
#include "Messages.moc"
