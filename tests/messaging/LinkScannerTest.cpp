#include "messaging/LinkScanner.h"
#include "support/Table.h"
#include "support/TestRunner.h"

// What counts as a link in a text.
class LinkScannerTest : public QObject
{
    Q_OBJECT

private slots:
    void linksAreFound_data()
    {
        columns<QString, QStringList>("text", "targets");
        row("none", "no: nothing here.", QStringList());
        row("sentence", "See http://a.example/b?c=d&e#f, then.", QStringList("http://a.example/b?c=d&e#f"));
        row("brackets", "(https://a.example/x_(y))", QStringList("https://a.example/x_(y)"));
        row("round it", "<ftp://a.example>!", QStringList("ftp://a.example"));
        row("bare", "WWW.a.example", QStringList("http://WWW.a.example"));
        row("two", "mailto:a@b.example xmpp:c@d.example",
            QStringList({"mailto:a@b.example", "xmpp:c@d.example"}));
        row("unsafe", "file:///etc/passwd javascript:x smb://h", QStringList());
        row("inside a word", "xhttp://a.example", QStringList());
        row("only a scheme", "http://...", QStringList());
    }
    void linksAreFound()
    {
        const auto [text, targets] = fetched<QString, QStringList>();
        QStringList found;
        for (const auto& link : findLinks(text)) {
            found += link.target;
            QVERIFY(link.target.endsWith(text.mid(link.start, link.length)));
        }
        QCOMPARE(found, targets);
    }
};

BRELO_TEST(LinkScannerTest)
#include "LinkScannerTest.moc"
