#include "engine/bridge/IqTracker.h"
#include "support/Table.h"
#include "support/TestRunner.h"

class IqTrackerTest : public QObject
{
    Q_OBJECT

    static IqTracker session()
    {
        IqTracker tracker;
        tracker.begin("Romeo@montague.example/orchard", "montague.example");
        return tracker;
    }
    static QByteArray get(const QString& to, const QString& id = "1")
    {
        const auto address = to.isNull() ? QString() : " to=\"" + to + '"';
        return ("<iq type=\"get\" id=\"" + id + '"' + address + "><query xmlns=\"x\"/></iq>").toUtf8();
    }
    static bool accepts(IqTracker& tracker, const QString& from, const QString& type = "result",
                        const QString& inner = {})
    {
        const auto sender = from.isNull() ? QString() : " from=\"" + from + '"';
        return tracker.accepts(
            *Stanza::fromXml("<iq id=\"1\" type=\"" + type + '"' + sender + ">" + inner + "</iq>"));
    }

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
        const char* home[] = {"", "romeo@montague.example", "Romeo@Montague.Example/orchard",
                              "montague.example"};
        for (const auto* to : home) {
            for (const auto* from : home)
                QTest::addRow("home '%s' from '%s'", to, from)
                    << (*to ? QString(to) : none) << (*from ? QString(from) : none) << true;
            QTest::addRow("home '%s' from a stranger", to) << QString(to) << "a@b" << false;
            QTest::addRow("home '%s' from another resource", to)
                << QString(to) << "romeo@montague.example/x" << false;
        }
    }
    void answerCountsOnlyFromTheAddressAsked()
    {
        const auto [to, from, accepted] = fetched<QString, QString, bool>();
        auto tracker = session();
        tracker.sent(get(to));
        QCOMPARE(accepts(tracker, from), accepted);
        QCOMPARE(accepts(tracker, from), false);
        QCOMPARE(accepts(tracker, to, "error"), !accepted); // what was refused uses nothing up
    }

    void sameIdMayBeOutToSeveralAddresses()
    {
        auto tracker = session();
        tracker.sent(get("a@b"));
        tracker.sent(get("c@d"));
        tracker.sent(get("c@d"));
        QVERIFY(accepts(tracker, "c@d") && accepts(tracker, "a@b") && accepts(tracker, "c@d"));
        QVERIFY(!accepts(tracker, "c@d"));
        QVERIFY(!accepts(tracker, "a@b"));
        // A new session forgets the old one's requests.
        tracker.sent(get("a@b"));
        tracker.begin("romeo@montague.example/orchard", "montague.example");
        QVERIFY(!accepts(tracker, "a@b"));
    }

    void onlyRequestsAreOutstanding()
    {
        for (const QByteArray& sent : {QByteArray(), QByteArray("<iq type='result' id='1' to='a@b'/>"),
                                       get("a@b", "2"), QByteArray("<message type='get' id='1' to='a@b'/>"),
                                       QByteArray("<iq type='get' id='1' to='a@b'")}) {
            auto tracker = session();
            tracker.sent(sent);
            QVERIFY(!accepts(tracker, "a@b"));
        }
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
        const auto [inner, fromStranger] = fetched<QString, bool>();
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
};

BRELO_TEST(IqTrackerTest)
#include "IqTrackerTest.moc"
