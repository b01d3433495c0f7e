#include "engine/bridge/IqTracker.h"
#include "support/Table.h"
#include "support/TestRunner.h"

#include <QTest>

namespace
{

IqTracker session()
{
    IqTracker tracker;
    tracker.begin("Romeo@montague.example/orchard", "montague.example");
    return tracker;
}

QByteArray get(const QString& to, const QString& id = "1")
{
    const auto address = to.isNull() ? QString() : " to=\"" + to + '"';
    return ("<iq type=\"get\" id=\"" + id + '"' + address + "><query xmlns=\"x\"/></iq>").toUtf8();
}

bool accepts(IqTracker& tracker, const QString& from, const QString& type = "result",
             const QString& inner = {})
{
    const auto sender = from.isNull() ? QString() : " from=\"" + from + '"';
    return tracker.accepts(
        *Stanza::fromXml("<iq id=\"1\" type=\"" + type + '"' + sender + ">" + inner + "</iq>"));
}

} // namespace

class IqTrackerTest : public QObject
{
    Q_OBJECT

private slots:
    void answerCountsOnlyFromTheAddressAsked_data()
    {
        columns<QString, QString, bool>("to", "from", "accepted");
        const QString none;
        row("contact", "a@b", "a@b", true);
        row("contact in another case", "A@B.example", "a@b.example", true);
        row("contact's resource", "a@b/c", "a@b/c", true);
        row("resource in another case", "a@b/c", "a@b/C", false);
        row("another's resource", "a@b", "a@b/c", false);
        row("stranger", "a@b", "evil@b", false);
        row("nobody for a contact", "a@b", none, false);
        row("server for a contact", "a@b", "montague.example", false);
        for (const auto* to :
             {"", "romeo@montague.example", "romeo@montague.example/orchard", "montague.example"}) {
            for (const auto* from :
                 {"", "romeo@montague.example", "Romeo@Montague.Example/orchard", "montague.example"})
                QTest::addRow("home '%s' from '%s'", to, from)
                    << (*to ? QString(to) : none) << (*from ? QString(from) : none) << true;
            QTest::addRow("home '%s' from a stranger", to) << QString(to) << "a@b" << false;
            QTest::addRow("home '%s' from another resource", to)
                << QString(to) << "romeo@montague.example/x" << false;
        }
    }

    void answerCountsOnlyFromTheAddressAsked()
    {
        QFETCH(QString, to);
        QFETCH(QString, from);
        QFETCH(bool, accepted);
        auto tracker = session();
        tracker.sent(get(to));
        QCOMPARE(accepts(tracker, from), accepted);
        QCOMPARE(accepts(tracker, from), false);
    }

    void spoofedAnswerDoesNotUseUpTheRequest()
    {
        auto tracker = session();
        tracker.sent(get("a@b"));
        QVERIFY(!accepts(tracker, "evil@b"));
        QVERIFY(accepts(tracker, "a@b", "error"));
    }

    void sameIdMayBeOutToSeveralAddresses()
    {
        auto tracker = session();
        tracker.sent(get("a@b"));
        tracker.sent(get("c@d"));
        tracker.sent(get("c@d"));
        QVERIFY(accepts(tracker, "c@d"));
        QVERIFY(accepts(tracker, "a@b"));
        QVERIFY(accepts(tracker, "c@d"));
        QVERIFY(!accepts(tracker, "c@d"));
        QVERIFY(!accepts(tracker, "a@b"));
    }

    void onlyRequestsAreOutstanding_data()
    {
        columns<QByteArray>("sent");
        row("nothing", QByteArray());
        row("result", QByteArray("<iq type='result' id='1' to='a@b'/>"));
        row("another id", get("a@b", "2"));
        row("message", QByteArray("<message type='get' id='1' to='a@b'/>"));
        row("not well-formed", QByteArray("<iq type='get' id='1' to='a@b'"));
    }

    void onlyRequestsAreOutstanding()
    {
        QFETCH(QByteArray, sent);
        auto tracker = session();
        tracker.sent(sent);
        QVERIFY(!accepts(tracker, "a@b"));
    }

    void listsThatSteerTheClientComeFromHomeOnly_data()
    {
        columns<QString, bool>("inner", "fromStranger");
        row("roster", "<query xmlns='jabber:iq:roster'/>", false);
        row("agents", "<query xmlns='jabber:iq:agents'/>", false);
        row("sign-in", "<query xmlns='jabber:iq:auth'/>", false);
        row("hidden behind another", "<query xmlns='x'/><query xmlns='jabber:iq:roster'/>", false);
        row("file", "<query xmlns='jabber:iq:oob'/>", true);
    }

    void listsThatSteerTheClientComeFromHomeOnly()
    {
        QFETCH(QString, inner);
        QFETCH(bool, fromStranger);
        auto tracker = session();
        QCOMPARE(accepts(tracker, "a@b", "set", inner), fromStranger);
        QCOMPARE(accepts(tracker, "romeo@montague.example/elsewhere", "set", inner), fromStranger);
        QVERIFY(accepts(tracker, "romeo@montague.example", "set", inner));
        QVERIFY(accepts(tracker, QString(), "set", inner));
        // Nor in the answer to an honest question.
        tracker.sent(get("a@b"));
        QCOMPARE(accepts(tracker, "a@b", "result", inner), fromStranger);
    }

    void iqOfNoKnownTypeIsRefused()
    {
        auto tracker = session();
        QVERIFY(!accepts(tracker, "a@b", ""));
        QVERIFY(!accepts(tracker, "a@b", "push"));
        QVERIFY(tracker.accepts(*Stanza::fromXml("<message/>")));
    }

    void newSessionForgetsTheOldOnesRequests()
    {
        auto tracker = session();
        tracker.sent(get("a@b"));
        tracker.begin("romeo@montague.example/orchard", "montague.example");
        QVERIFY(!accepts(tracker, "a@b"));
    }
};

BRELO_TEST(IqTrackerTest)
#include "IqTrackerTest.moc"
