#include "desktop/SafeLink.h"
#include "desktop/forms/QtDesktop.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class LinksTest : public QObject
{
    Q_OBJECT

    QStringList opened_;

public slots:
    void handle(const QUrl& url) { opened_ += url.toString(); }

private slots:
    void onlySafeLinksAreOpened_data()
    {
        columns<QString, bool>("link", "safe");
        const auto row = [](const QString& link, bool safe) {
            QTest::addRow("%s", qPrintable(link.left(60))) << link << safe;
        };
        const QString safe = "http://a.example HTTPS://a.example/b?c=d&e#f http://[::1]:8080/ "
                             "http://a.example/é%20x ftp://a.example/f mailto:romeo@a.example?subject=x "
                             "xmpp:romeo@a.example?message callto:romeo+type=directory callto:10.0.0.1";
        for (const auto& link : safe.split(' '))
            row(link, true);
        const QString unsafe =
            "|www.a.example|/etc/passwd|file:///etc/passwd|FILE:/etc/passwd|javascript:alert(1)|data:text/"
            "html,x|vbscript:x|smb://a/b|ssh://a|http:|http://|http:///"
            "path|https:a.example|mailto:|xmpp:|callto:|http://a b/| "
            "http://a.example|http://a.example/\n-x|http://a.example:99999/|http://a.example/"
            "<b>|--help|mailto:a@b?attach=/etc/passwd|mailto:a@b?subject=x&Attachment=/etc/passwd";
        for (const auto& link : unsafe.split('|'))
            row(link, false);
        row(QString("http://a.example/") + QString(9000, u'x'), false);
    }
    void onlySafeLinksAreOpened()
    {
        const auto [link, safe] = fetched<QString, bool>();
        QCOMPARE(isSafeLink(link), safe);
        const QString scheme = link.section(u':', 0, 0).trimmed().toLower();
        opened_.clear();
        QDesktopServices::setUrlHandler(scheme, this, "handle");
        QCOMPARE(DesktopLinkOpener().open(link), safe);
        QDesktopServices::unsetUrlHandler(scheme);
        QCOMPARE(opened_.size(), safe ? 1 : 0);
    }
};

BRELO_TEST(LinksTest)
#include "LinksTest.moc"
