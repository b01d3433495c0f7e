#include "Peer.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <QCryptographicHash>
#include <QTest>

using sandbox::SandboxServer;

class SigningIn : public QObject
{
    Q_OBJECT
    SandboxServer* server_ = nullptr;

private slots:
    void init()
    {
        server_ = new SandboxServer;
        server_->world().addAccount("romeo", "secret");
        QVERIFY(server_->listen());
    }
    void cleanup() { delete server_; }

    void headerHasNoVersionAndTheClientsNameForTheHost()
    {
        Peer peer(*server_, "montague.example");
        const QByteArray header = peer.openStream();
        QVERIFY(header.contains("from=\"montague.example\""));
        QVERIFY(!header.contains("version=\"1.0\" id") && !header.contains("features"));
    }

    void passwordDecides_data()
    {
        columns<QByteArray, QByteArray>("fields", "answer");
        const QByteArray good = "<username>romeo</username><resource>Desk</resource>";
        row("plain", good + "<password>secret</password>", QByteArray("<iq type=\"result\" id=\"a\"/>"));
        row("digest", good + "<digest>DIGEST</digest>", QByteArray("<iq type=\"result\" id=\"a\"/>"));
        row("wrong digest", good + "<digest>00</digest>", QByteArray("code=\"401\""));
        row("wrong password", good + "<password>Secret</password>", QByteArray("code=\"401\""));
        row("none", good, QByteArray("code=\"401\""));
        row("stranger",
            QByteArray("<username>tybalt</username><resource>x</resource>"
                       "<password>secret</password>"),
            QByteArray("code=\"401\""));
        row("no resource", QByteArray("<username>romeo</username><password>secret</password>"),
            QByteArray("code=\"406\""));
    }
    void passwordDecides()
    {
        QFETCH(QByteArray, fields);
        QFETCH(QByteArray, answer);
        Peer peer(*server_);
        const QByteArray header = peer.openStream();
        const auto from = header.indexOf(" id=\"") + 5;
        const QByteArray streamId = header.mid(from, header.indexOf('"', from) - from);
        fields.replace("DIGEST",
                       QCryptographicHash::hash(streamId + "secret", QCryptographicHash::Sha1).toHex());
        const QByteArray got =
            peer.ask("<iq type=\"set\" id=\"a\"><query xmlns=\"jabber:iq:auth\">" + fields + "</query></iq>");
        QVERIFY2(got.contains(answer), got);
        QCOMPARE(got.contains("<iq type=\"error\" id=\"a\"><query xmlns=\"jabber:iq:auth\"/><error code="),
                 answer.startsWith("code"));
    }

    void nothingElseIsAnsweredBefore()
    {
        Peer peer(*server_);
        peer.openStream();
        QVERIFY(peer.ask("<iq type=\"get\" id=\"r\"><query xmlns=\"jabber:iq:roster\"/></iq>")
                    .contains("code=\"401\""));
    }

    void testCanRefuseEverybody()
    {
        server_->script().refuseAuth = true;
        QVERIFY(!Peer(*server_).signIn("romeo", "secret"));
    }

    void sameResourceReplacesTheOlderOne()
    {
        Peer first(*server_), second(*server_);
        QVERIFY(first.signIn("romeo", "secret"));
        QVERIFY(second.signIn("romeo", "secret"));
        QVERIFY(first.isClosed());
        QVERIFY(first.incoming.endsWith(
            "<stream:error>Replaced by new connection</stream:error></stream:stream>"));
        QTRY_COMPARE(server_->connectionCount(), 1);
        QVERIFY(second.news().isEmpty());
    }

    void registers_data()
    {
        columns<QByteArray, QByteArray, QByteArray>("user", "password", "answer");
        row("new", QByteArray("a&amp;b"), QByteArray("x&lt;"),
            QByteArray("<iq type=\"result\" id=\"VRX_new\"/>"));
        row("taken", QByteArray("romeo"), QByteArray("x"), QByteArray("code=\"409\""));
        row("no password", QByteArray("paris"), QByteArray(), QByteArray("code=\"406\""));
    }
    void registers()
    {
        QFETCH(QByteArray, user);
        QFETCH(QByteArray, password);
        QFETCH(QByteArray, answer);
        Peer peer(*server_);
        peer.openStream();
        const QByteArray got =
            peer.ask("<iq type=\"set\" id=\"VRX_new\"><query xmlns=\"jabber:iq:register\"><username>" + user +
                     "</username><password>" + password + "</password><resource/></query></iq>");
        QVERIFY2(got.contains(answer), got);
        QCOMPARE(Peer(*server_).signIn(user, password), answer.contains("result"));
    }

    void changesPasswords_data()
    {
        columns<bool, QByteArray, QByteArray>("admin", "user", "answer");
        row("own", false, QByteArray("romeo"), QByteArray("result"));
        row("another's", false, QByteArray("paris@im.test"), QByteArray("code=\"403\""));
        row("another's, as administrator", true, QByteArray("paris@im.test"), QByteArray("result"));
        row("nobody's", true, QByteArray("ghost"), QByteArray("code=\"404\""));
    }
    void changesPasswords()
    {
        QFETCH(bool, admin);
        QFETCH(QByteArray, user);
        QFETCH(QByteArray, answer);
        server_->world().addAccount("romeo", "secret", admin);
        server_->world().addAccount("paris", "old");
        Peer peer(*server_);
        QVERIFY(peer.signIn("romeo", "secret"));
        const QByteArray got =
            peer.ask("<iq type=\"set\" id=\"p\" to=\"im.test\"><query xmlns=\"jabber:iq:register\">"
                     "<username>" +
                     user + "</username><password>new</password></query></iq>");
        QVERIFY2(got.contains(answer), got);
        QCOMPARE(Peer(*server_).signIn(user.split('@').first(), "new"), answer == "result");
    }

    void removedAccountIsGone()
    {
        Peer peer(*server_);
        QVERIFY(peer.signIn("romeo", "secret"));
        peer.write("<iq type=\"set\" id=\"u\"><query xmlns=\"jabber:iq:register\"><remove/></query></iq>");
        QVERIFY(peer.isClosed());
        QVERIFY(!Peer(*server_).signIn("romeo", "secret"));
    }
};

BRELO_TEST(SigningIn)
#include "SigningIn.moc"
