#include "mailwatch/MailFolder.h"
#include "mailwatch/PollAnswer.h"
#include "support/Table.h"
#include "support/TestRunner.h"

// What the watcher makes of a URL, and of a server's answer.
class MailRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void foldersAreKnownByTheirUrl_data()
    {
        columns<QString, QString, QString>("typed", "asked", "composed");
        const QString box = "http://server/exchange/ann";
        const QString drafts = "/drafts/?cmd=new";
        row("the example", " http://Servername/exchange/mailboxname/inbox\n",
            "http://servername/exchange/mailboxname/inbox",
            "http://Servername/exchange/mailboxname" + drafts);
        row("the mailbox alone", box, box, box + drafts);
        row("the mailbox as a folder", box + "/", box + "/", box + drafts);
        row("far below", box + "/a/b?c=/d/", box + "/a/b?c=/d/", box + drafts);
        row("encrypted", "HTTPS://s/exchange/ann/inbox", "https://s/exchange/ann/inbox",
            "HTTPS://s/exchange/ann" + drafts);
        row("no mailbox", "http://server/exchange", "http://server/exchange", "");
        row("an empty mailbox", "http://server/exchange/", "http://server/exchange/",
            "http://server/exchange/" + drafts);
        row("no path", "http://server", "http://server", "");
        row("a blank within", "http://s/exchange/ann lee/in", "http://s/exchange/ann%20lee/in",
            "http://s/exchange/ann lee" + drafts);
        row("a password within", "http://ann:secret@s/e/ann", "http://ann@s/e/ann",
            "http://ann@s/e/ann" + drafts);
        row("no host", "http:///exchange/ann/inbox", "", "http:///exchange/ann" + drafts);
        row("another scheme", "ftp://server/exchange/ann", "", "");
        row("a file", "file:///etc/passwd", "", "");
        row("no URL", "http://[", "", "");
        row("nothing", " ", "", "");
    }
    void foldersAreKnownByTheirUrl()
    {
        const auto [typed, asked, composed] = fetched<QString, QString, QString>();
        const MailFolder folder(typed);
        QCOMPARE(folder.address().toString(QUrl::FullyEncoded), asked);
        QCOMPARE(folder.composeAddress(), composed);
        QVERIFY(!folder.text().contains("secret"));
    }

    void browsersGetAddressesAsTheyTakeThem()
    {
        QCOMPARE(MailFolder::link("http://S/ann lee/è"), "http://s/ann%20lee/%C3%A8");
        QCOMPARE(MailFolder::link("http://S/ann%20lee/?a=b"), "http://S/ann%20lee/?a=b");
    }

    void answersAreReadInTheirOrder_data()
    {
        columns<int, QString, PollResult>("status", "text", "result");
        using enum PollResult;
        const QString open = "<a:multistatus xmlns:a='DAV:'>";
        const auto statuses = [&](const QString& statuses) { return open + statuses + "</a:multistatus>"; };
        const auto one = [&](const QString& text) { return statuses("<a:status>" + text + "</a:status>"); };
        const QString none = "HTTP/1.1 204 No Content";
        row("empty", 200, "", Nothing);
        row("no answer", 0, "", Nothing);
        row("run out", 207, "<b>Precondition Failed</b>", RunOut);
        row("run out goes before all", 207, one("200 OK Precondition Failed"), RunOut);
        row("run out without a word", 412, "", RunOut);
        row("new mail", 207, one("HTTP/1.1 200 OK"), NewMail);
        row("new mail in an error", 500, one("HTTP/1.1 200 OK"), NewMail);
        row("nothing new", 207, one(none), Nothing);
        row("the first status counts", 207, statuses("<a:status>" + none + "</a:status>200 OK"), Nothing);
        row("a later one doesn't", 207,
            statuses("<a:status>HTTP/1.1 200 OK</a:status><a:status>" + none + "</a:status>"), NewMail);
        row("the line alone is nothing new", 207, one(none + " 200 OK"), NewMail);
        row("elsewhere in the answer", 207, statuses("<x>200 OK</x>"), NewMail);
        row("another status", 207, one("HTTP/1.1 404 Not Found"), Nothing);
        row("a nested status", 207, one("<b>HTTP/1.1 204 No</b> Content") + "<!--200 OK-->", Nothing);
        row("no XML", 200, "200 OK", Nothing);
        row("text before the document", 200, "200 OK " + one("x"), Nothing);
        row("half a document", 207, open + "<a:status>HTTP/1.1 200 OK</a:status>", Nothing);
        row("a prefix of no namespace", 207, "<a:status>HTTP/1.1 200 OK</a:status>", Nothing);
        row("a document type", 207, "<!DOCTYPE x>" + one("HTTP/1.1 200 OK"), Nothing);
        row("an entity of its own", 207, "<!DOCTYPE x [<!ENTITY e '200 OK'>]>" + one("&e; 200 OK"), Nothing);
        row("an entity of nobody's", 207, one("&e; 200 OK"), Nothing);
    }
    void answersAreReadInTheirOrder()
    {
        const auto [status, text, result] = fetched<int, QString, PollResult>();
        QCOMPARE(pollResult(status, text), result);
    }
};

BRELO_TEST(MailRulesTest)
#include "MailRulesTest.moc"
