#include "machinerun.h"

#include <QtTest/QtTest>

#include <thread>

using namespace LCD::FactoryModeImpl;

namespace {

/// Runs @p work on a std::thread and waits for it.
template <class Work>
void elsewhere(const Work &work)
{
    std::thread thread(work);
    thread.join();
}

void goTo(RunState &state, int phase)
{
    state.phaseIndex = phase;
}

/// Sets the phase of @p run on another thread.
void moveElsewhere(MachineRun &run, int phase)
{
    elsewhere([&] { QVERIFY(RunAction(run).change([phase](RunState &state) { goTo(state, phase); })); });
}

}

class MachineRunTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void beforeTheFirstRun()
    {
        const MachineRun run;
        QCOMPARE(run.state().phaseIndex, -1);
        QCOMPARE(run.state().testResult, 0);
        QVERIFY(!run.state().shouldTimerRun);
    }

    void eachRunHasANumberOfItsOwn()
    {
        MachineRun run;
        RunAction action(run);
        action.beginRun();
        const RunState first = run.state();
        QCOMPARE(first.phaseIndex, 0);
        QVERIFY(action.change([](RunState &state) {
            state.testResult = 2;
            state.shouldTimerRun = true;
            state.isStartingOnOtherThread = true;
            state.btnFuncAwaitingJudge = true;
        }));
        action.beginRun();
        QVERIFY(run.state().run != first.run);
        QCOMPARE(run.state().testResult, 0);
        QVERIFY(!run.state().shouldTimerRun);
        QVERIFY(!run.state().isStartingOnOtherThread);
        QVERIFY(run.state().btnFuncAwaitingJudge);
    }

    void onlyAnActionInsideAnotherOneOnTheOwnThreadIsNested()
    {
        MachineRun run;
        const RunAction action(run);
        QVERIFY(!action.isNested());
        QVERIFY(RunAction(run).isNested());
        elsewhere([&] { QVERIFY(!RunAction(run).isNested()); });
    }

    void anActionThatAnotherThreadOvertakesChangesNothing()
    {
        MachineRun run;
        RunAction action(run);
        QVERIFY(action.isCurrent());
        moveElsewhere(run, 5);
        QVERIFY(!action.isCurrent());
        QVERIFY(!action.change([](RunState &state) { goTo(state, 7); }));
        QCOMPARE(run.state().phaseIndex, 5);
        QCOMPARE(action.state().phaseIndex, -1);
    }

    void actionsInsideAnOvertakenOneAreLateToo()
    {
        MachineRun run;
        {
            const RunAction action(run);
            moveElsewhere(run, 5);
            RunAction inner(run);
            QVERIFY(!inner.isCurrent());
            QVERIFY(!inner.change([](RunState &state) { goTo(state, 7); }));
        }
        QVERIFY(RunAction(run).isCurrent());
    }

    void onTheOwnersThreadAnActionGoesOnFromTheOneInsideIt()
    {
        MachineRun run;
        RunAction action(run);
        QVERIFY(RunAction(run).change([](RunState &state) { goTo(state, 5); }));
        QCOMPARE(action.state().phaseIndex, 5);
        QVERIFY(action.change([](RunState &state) { goTo(state, 6); }));
        QCOMPARE(run.state().phaseIndex, 6);
    }

    void onAnotherThreadAnActionStandsAlone()
    {
        MachineRun run;
        elsewhere([&run] {
            RunAction action(run);
            QVERIFY(!action.isOnOwnThread());
            QVERIFY(RunAction(run).change([](RunState &state) { goTo(state, 5); }));
            QVERIFY(!action.change([](RunState &state) { goTo(state, 6); }));
        });
        QCOMPARE(run.state().phaseIndex, 5);
    }

    void theSamePhaseOfALaterRunIsAnotherOne()
    {
        MachineRun run;
        moveElsewhere(run, 6);
        elsewhere([&run] {
            RunAction action(run);
            elsewhere([&run] {
                RunAction(run).beginRun();
                moveElsewhere(run, 6);
            });
            QVERIFY(!action.change([](RunState &state) { goTo(state, 7); }));
        });
        QCOMPARE(run.state().phaseIndex, 6);
    }

    void aFailureReachesItsRunInAnyPhaseButNoLaterRun()
    {
        MachineRun run;
        const auto fail = [](RunState &state) { state.testResult = 2; };
        RunAction action(run);
        moveElsewhere(run, 6);
        QVERIFY(action.changeSameRun(fail));
        QCOMPARE(run.state().phaseIndex, 6);
        QCOMPARE(run.state().testResult, 2);
        elsewhere([&run] { RunAction(run).beginRun(); });
        QVERIFY(!action.changeSameRun(fail));
        QCOMPARE(run.state().testResult, 0);
    }
};

QTEST_APPLESS_MAIN(MachineRunTest)
#include "tst_machinerun.moc"
