#include "engine/wire/auth/HttpChallenge.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class HttpChallengeTest : public QObject
{
    Q_OBJECT

private slots:
    // The answers of the first rows are those of RFC 7616, section 3.9.1, and RFC 2617, section 3.5.
    void passwordsAreOfferedAsAsked_data()
    {
        columns<QByteArray, int, QByteArray>("challenge", "scheme", "part");
        const QByteArray rfc = "Digest realm=\"http-auth@example.org\", qop=\"auth, auth-int\", "
                               "nonce=\"7ypf/xlj9XXwfDPEoM4URrv/xwf94BcCAzFZH4GiTo0v\", "
                               "opaque=\"FQhe/qaU925kfnzjCev0ciny7QMkPqMAFRtzCUYo5tdS\"";
        const int none = 0, basic = 1, digest = 2, token = 3;
        row("MD5", rfc + ", algorithm=MD5", digest, QByteArray("\"8ca523f5e9506fed4657c9700eebdbec\""));
        row("SHA-256", rfc + ", algorithm=SHA-256", digest,
            QByteArray("\"753927fa0e85d155564e2e272a28d1802ca10daf4496794697cf8db5856cb6c1\""));
        row("the first of two", rfc + ", algorithm=SHA-256, " + rfc, digest,
            QByteArray("\"753927fa0e85d155564e2e272a28d1802ca10daf4496794697cf8db5856cb6c1\""));
        row("without quality", QByteArray("DIGEST realm=\"r\\\"s\",nonce = n"), digest,
            QByteArray(
                "realm=\"r\\\"s\", nonce=\"n\", uri=\"/dir/index.html\", "
                "response=\"" +
                QCryptographicHash::hash(
                    QCryptographicHash::hash("Mufasa:r\\\"s:Circle of Life", QCryptographicHash::Md5)
                            .toHex() +
                        ":n:" +
                        QCryptographicHash::hash("GET:/dir/index.html", QCryptographicHash::Md5).toHex(),
                    QCryptographicHash::Md5)
                    .toHex() +
                '"'));
        row("Basic", QByteArray("Basic realm=\"a, Digest b\""), basic,
            QByteArray("Basic TXVmYXNhOkNpcmNsZSBvZiBMaWZl"));
        row("Digest goes before Basic", QByteArray("Basic realm=\"a\", Digest nonce=\"n\""), digest,
            QByteArray("Digest username=\"Mufasa\""));
        row("NTLM goes before all", "Negotiate, NTLM, Basic realm=\"a\", " + rfc, token, QByteArray());
        row("an unknown algorithm", rfc + ", algorithm=X", none, QByteArray());
        row("an unknown scheme", QByteArray("Bearer a=b"), none, QByteArray());
        row("nothing", QByteArray(), none, QByteArray());
    }
    void passwordsAreOfferedAsAsked()
    {
        const auto [text, scheme, part] = fetched<QByteArray, int, QByteArray>();
        const HttpChallenge challenge(text);
        QCOMPARE(int(challenge.scheme()), scheme);
        const auto answer = challenge.answer("GET", "/dir/index.html", "Mufasa", "Circle of Life",
                                             "f2/wE4q74E6zIJEtWaHKaf5wv/H5QzzpXusqGemxURZJ");
        QVERIFY2(answer.isEmpty() == part.isEmpty() && answer.contains(part), answer.constData());
    }
};

BRELO_TEST(HttpChallengeTest)
#include "HttpChallengeTest.moc"
