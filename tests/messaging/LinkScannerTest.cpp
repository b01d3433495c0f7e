#include "messaging/LinkScanner.h"
#include "desktop/SafeLink.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <ctime>

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
        row("braces", "{https://a.example/%20{x}/(y{z})}.",
            QStringList("https://a.example/%20%7Bx%7D/(y%7Bz%7D)"));
        row("round it", "<ftp://a.example>!", QStringList("ftp://a.example"));
        row("bare", "WWW.a.example", QStringList("http://www.a.example"));
        row("two", "mailto:a@b.example xmpp:c@d.example",
            QStringList({"mailto:a@b.example", "xmpp:c@d.example"}));
        row("unsafe", "file:///etc/passwd javascript:x smb://h", QStringList());
        row("inside a word", "xhttp://a.example", QStringList());
        row("only a scheme", "http://...", QStringList());
        row("escaped", "http://a.example/a|b^`{}%zz%20",
            QStringList("http://a.example/a%7Cb%5E%60%7B%7D%25zz%20"));
        row("nothing opens it", "http://a.example:99999/ mailto:a@b?attach=/etc/passwd", QStringList());
        row("a million brackets", "http://a" + QString(1000000, u')'), QStringList("http://a"));
        row("a million braces", "http://a" + QString(1000000, u'}'), QStringList("http://a"));
        row("as many open ones", "http://a/" + QString(1000000, u'('), QStringList());
    }
    void linksAreFound()
    {
        const auto [text, targets] = fetched<QString, QStringList>();
        QStringList found;
        const clock_t began = clock();
        for (const auto& link : findLinks(text)) {
            found += link.target;
            const QString drawn = text.mid(link.start, link.length);
            QVERIFY(link.target.endsWith(drawn, Qt::CaseInsensitive) || drawn.contains(u'%'));
            QVERIFY(isSafeLink(link.target)); // what is drawn opens
        }
        QVERIFY(clock() - began < CLOCKS_PER_SEC);
        QCOMPARE(found, targets);
    }
};

BRELO_TEST(LinkScannerTest)
#include "LinkScannerTest.moc"
