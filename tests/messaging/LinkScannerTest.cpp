#include "messaging/LinkScanner.h"
#include "support/TestRunner.h"

#include <QTest>

// What counts as a link in a text.
class LinkScannerTest : public QObject
{
    Q_OBJECT

private slots:
    void linksAreFound_data();
    void linksAreFound();
};

void LinkScannerTest::linksAreFound_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("targets");
    QTest::newRow("none") << "no: nothing here." << QStringList();
    QTest::newRow("sentence") << "See http://a.example/b?c=d&e#f, then."
                              << QStringList("http://a.example/b?c=d&e#f");
    QTest::newRow("brackets") << "(https://a.example/x_(y))" << QStringList("https://a.example/x_(y)");
    QTest::newRow("round it") << "<ftp://a.example>!" << QStringList("ftp://a.example");
    QTest::newRow("bare") << "WWW.a.example" << QStringList("http://WWW.a.example");
    QTest::newRow("two") << "mailto:a@b.example xmpp:c@d.example"
                         << QStringList({"mailto:a@b.example", "xmpp:c@d.example"});
    QTest::newRow("unsafe") << "file:///etc/passwd javascript:x smb://h" << QStringList();
    QTest::newRow("inside a word") << "xhttp://a.example" << QStringList();
    QTest::newRow("only a scheme") << "http://..." << QStringList();
}

void LinkScannerTest::linksAreFound()
{
    QFETCH(QString, text);
    QFETCH(QStringList, targets);
    QStringList found;
    for (const auto& link : findLinks(text)) {
        found += link.target;
        QVERIFY(link.target.endsWith(text.mid(link.start, link.length)));
    }
    QCOMPARE(found, targets);
}

BRELO_TEST(LinkScannerTest)
#include "LinkScannerTest.moc"
