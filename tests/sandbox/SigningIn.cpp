#include "Peer.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class SigningIn : public QObject
{
    Q_OBJECT
    std::unique_ptr<sandbox::SandboxServer> server_;

    static QByteArray query(const QString& what, const QString& fields, const QString& to = {})
    {
        const QString iq = "<iq type='set' id='a'%1><query xmlns='jabber:iq:%2'>%3</query></iq>";
        return iq.arg(to, what, fields).toUtf8();
    }

private slots:
    void init()
    {
        server_ = std::make_unique<sandbox::SandboxServer>();
        server_->world().addAccount("romeo", "secret");
        QVERIFY(server_->listen());
    }

    void headerHasNoVersionAndTheClientsNameForTheHost()
    {
        Peer peer(*server_, "montague.example");
        const QByteArray header = peer.openStream();
        QVERIFY(header.contains("from=\"montague.example\""));
        QVERIFY(!header.contains("version=\"1.0\" id") && !header.contains("features"));
    }

    void passwordDecides_data()
    {
        columns<QString, QString>("fields", "answer");
        const QString good = "<username>romeo</username><resource>Desk</resource>";
        row("plain", good + "<password>secret</password>", "<iq type=\"result\" id=\"a\"/>");
        row("digest", good + "<digest>DIGEST</digest>", "<iq type=\"result\" id=\"a\"/>");
        row("wrong digest", good + "<digest>00</digest>", "code=\"401\"");
        row("wrong password", good + "<password>Secret</password>", "code=\"401\"");
        row("none", good, "code=\"401\"");
        row("stranger", "<username>tybalt</username><resource>x</resource><password>secret</password>",
            "code=\"401\"");
        row("no resource", "<username>romeo</username><password>secret</password>", "code=\"406\"");
    }
    void passwordDecides()
    {
        auto [fields, answer] = fetched<QString, QString>();
        Peer peer(*server_);
        const QByteArray header = peer.openStream();
        const auto from = header.indexOf(" id=\"") + 5;
        const QByteArray secret = header.mid(from, header.indexOf('"', from) - from) + "secret";
        fields.replace("DIGEST", QCryptographicHash::hash(secret, QCryptographicHash::Sha1).toHex());
        const QByteArray got = peer.ask(query("auth", fields));
        QVERIFY2(got.contains(answer.toUtf8()), got);
        QCOMPARE(got.contains(R"(<iq type="error" id="a"><query xmlns="jabber:iq:auth"/><error code=)"),
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
        columns<QString, QString, QString>("user", "password", "answer");
        row("new", "a&amp;b", "x&lt;", "<iq type=\"result\" id=\"a\"/>");
        row("taken", "romeo", "x", "code=\"409\"");
        row("no password", "paris", "", "code=\"406\"");
    }
    void registers()
    {
        const auto [user, password, answer] = fetched<QString, QString, QString>();
        Peer peer(*server_);
        peer.openStream();
        const auto got = peer.ask(query("register", "<username>" + user + "</username><password>" + password +
                                                        "</password><resource/>"));
        QVERIFY2(got.contains(answer.toUtf8()), got);
        QCOMPARE(Peer(*server_).signIn(user.toUtf8(), password.toUtf8()), answer.contains("result"));
    }

    void changesPasswords_data()
    {
        columns<bool, QString, QString>("admin", "user", "answer");
        row("own", false, "romeo", "result");
        row("another's", false, "paris@im.test", "code=\"403\"");
        row("another's, as administrator", true, "paris@im.test", "result");
        row("nobody's", true, "ghost", "code=\"404\"");
    }
    void changesPasswords()
    {
        const auto [admin, user, answer] = fetched<bool, QString, QString>();
        server_->world().addAccount("romeo", "secret", admin);
        server_->world().addAccount("paris", "old");
        OnlinePeer peer(*server_, "romeo");
        const auto got = peer.ask(
            query("register", "<username>" + user + "</username><password>new</password>", " to='im.test'"));
        QVERIFY2(got.contains(answer.toUtf8()), got);
        QCOMPARE(Peer(*server_).signIn(user.section('@', 0, 0).toUtf8(), "new"), answer == "result");
    }

    void removedAccountIsGone()
    {
        Peer peer(*server_);
        QVERIFY(peer.signIn("romeo", "secret"));
        peer.write(query("register", "<remove/>"));
        QVERIFY(peer.isClosed());
        QVERIFY(!Peer(*server_).signIn("romeo", "secret"));
    }
};

BRELO_TEST(SigningIn)
#include "SigningIn.moc"
