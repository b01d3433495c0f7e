#include "Explorer.h"
#include "support/TestRunner.h"

// Walks without a plan through the whole client find what nobody thought of. BRELO_EXPLORE_STEPS and
// BRELO_EXPLORE_SEED give longer and other walks; the journal of the last one is explore.log.
class ExploreTest : public QObject
{
    Q_OBJECT

private slots:
    void nothingThatIsDoneToTheClientBreaksIt_data()
    {
        QTest::addColumn<quint32>("seed");
        const auto given = qEnvironmentVariableIntValue("BRELO_EXPLORE_SEED");
        for (quint32 seed = 1; seed <= 4; ++seed)
            QTest::addRow("seed %u", quint32(given) + seed) << quint32(given) + seed;
    }

    void nothingThatIsDoneToTheClientBreaksIt()
    {
        QFETCH(quint32, seed);
        const int asked = qEnvironmentVariableIntValue("BRELO_EXPLORE_STEPS");
        QRandomGenerator walks(seed);
        int steps = 0;
        while (steps < (asked > 0 ? asked : 1000)) {
            Explorer explorer(walks.generate());
            for (int left = 500; left > 0 && !explorer.isOver(); --left, ++steps) {
                explorer.step();
                QCOMPARE(explorer.fault(), QString());
            }
            if (!explorer.isOver())
                QCOMPARE(explorer.faultOfNewSession(), QString());
        }
    }
};

BRELO_TEST(ExploreTest)
#include "ExploreTest.moc"
