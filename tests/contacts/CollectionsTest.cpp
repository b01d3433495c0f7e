#include "contacts/CRoster.h"
#include "support/TestRunner.h"

#include <QRandomGenerator>
#include <QTest>

class CollectionsTest : public QObject
{
    Q_OBJECT

private slots:
    void theFirstOfTwoEqualRecordsIsFound();
    void positionsFallWhenARecordGoes();
    void positionsStayTrueOverManyRemovals();

private:
    static void add(CRoster& roster, const QString& JID, const QString& nick = {})
    {
        roster.AddItem(JID, nick, false, {}, {}, false, {}, {}, {}, {});
    }
};

void CollectionsTest::theFirstOfTwoEqualRecordsIsFound()
{
    CRoster roster;
    add(roster, "a@x", "first");
    add(roster, "b@x");
    add(roster, "a@x", "second");
    QCOMPARE(roster.Count(), 3);
    QCOMPARE(roster.FindJID("a@x"), 1);
    QVERIFY(!roster.DoesJIDExist("A@x"));
    QVERIFY(roster.Remove(1));
    QCOMPARE(roster.FindJID("a@x"), 2);
    QCOMPARE(roster.record("a@x")->nick, QString("second"));
    QVERIFY(roster.Remove(2));
    QVERIFY(!roster.DoesJIDExist("a@x"));
}

void CollectionsTest::positionsFallWhenARecordGoes()
{
    CRoster roster;
    for (const auto& JID : {"a@x", "b@x", "c@x"})
        add(roster, JID);
    QVERIFY(roster.Remove(2));
    QCOMPARE(roster.Item(2)->JID, QString("c@x"));
    QCOMPARE(roster.Item(3), nullptr);
    QCOMPARE(roster.Item(0), nullptr);
    for (const int position : {0, -1, 3})
        QVERIFY(!roster.Remove(position));
    QCOMPARE(roster.Count(), 2);
}

void CollectionsTest::positionsStayTrueOverManyRemovals()
{
    CRoster roster;
    QStringList expected;
    QRandomGenerator random(7);
    for (int step = 0; step < 3000; ++step) {
        if (expected.isEmpty() || step < 500 || random.bounded(3) == 0) {
            expected += QString("c%1@x").arg(step);
            add(roster, expected.last());
        } else {
            const int position = random.bounded(int(expected.size()));
            QCOMPARE(roster.FindJID(expected[position]), position + 1);
            QVERIFY(roster.Remove(position + 1));
            expected.removeAt(position);
        }
    }
    QCOMPARE(roster.Count(), int(expected.size()));
    for (int position = 0; position < expected.size(); ++position)
        QCOMPARE(roster.Item(position + 1)->JID, expected[position]);
}

BRELO_TEST(CollectionsTest)
#include "CollectionsTest.moc"
