#include "levelstep.h"

#include <QtTest/QtTest>

using namespace LCD::FactoryModeImpl;

class LevelStepTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void step_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<int>("cycleCount");
        QTest::addColumn<int>("nextState");
        QTest::addColumn<int>("nextCycleCount");
        QTest::addColumn<int>("shown"); // -1 for no change
        QTest::addColumn<bool>("announced");

        QTest::newRow("10, first trip") << 10 << 0 << 30 << 0 << 30 << false;
        QTest::newRow("30, first trip") << 30 << 0 << 50 << 0 << 50 << false;
        QTest::newRow("50, first trip") << 50 << 0 << 70 << 0 << 70 << false;
        QTest::newRow("70, first trip") << 70 << 0 << 100 << 0 << 100 << false;
        QTest::newRow("100, first trip") << 100 << 0 << 10 << 1 << 10 << false;
        QTest::newRow("100, before the first trip") << 100 << -1 << 10 << 0 << 10 << false;
        QTest::newRow("10, second trip") << 10 << 1 << 30 << 1 << 30 << false;
        QTest::newRow("30, second trip") << 30 << 1 << 50 << 1 << 50 << false;
        QTest::newRow("50, second trip") << 50 << 1 << 70 << 1 << 70 << false;
        QTest::newRow("70, second trip") << 70 << 1 << 100 << 1 << 100 << false;
        QTest::newRow("100, second trip") << 100 << 1 << 101 << 0 << -1 << true;
        QTest::newRow("100, later trip") << 100 << 5 << 101 << 0 << -1 << true;
        for (const int state : {-1, 0, 1, 11, 99, 101, 102, 103})
            QTest::addRow("no level: %d", state) << state << 1 << state << 1 << -1 << false;
    }

    void step()
    {
        QFETCH(int, state);
        QFETCH(int, cycleCount);
        const LevelStep step = nextLevelStep(state, cycleCount);
        QTEST(step.state, "nextState");
        QTEST(step.cycleCount, "nextCycleCount");
        QTEST(step.show.value_or(-1), "shown");
        QTEST(step.announce, "announced");
    }
};

QTEST_APPLESS_MAIN(LevelStepTest)
#include "tst_levelstep.moc"
