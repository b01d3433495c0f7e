#include "Explorer.h"
#include "support/TestRunner.h"

#include <QDir>
#include <QTemporaryDir>

// Walks without a plan through the whole client find what nobody thought of. BRELO_EXPLORE_STEPS and
// BRELO_EXPLORE_SEED give longer and other walks; each row keeps the journal of its last walk in
// explore-SEED.log. What the walks save goes into a folder of the test's own.
class ExploreTest : public QObject
{
    Q_OBJECT
    const QString start_ = QDir::currentPath();
    const QTemporaryDir folder_;

private slots:
    void initTestCase() { QVERIFY(QDir::setCurrent(folder_.path())); }
    void cleanupTestCase() { QVERIFY(QDir::setCurrent(start_)); }

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
            Explorer explorer(walks.generate(), start_ + QString("/explore-%1.log").arg(seed));
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
