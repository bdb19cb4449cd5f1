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
    elsewhere([&] { QVERIFY(RunEvent(run).change([phase](RunState &state) { goTo(state, phase); })); });
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
        RunEvent event(run);
        event.beginRun();
        const RunState first = run.state();
        QCOMPARE(first.phaseIndex, 0);
        QVERIFY(event.change([](RunState &state) {
            state.testResult = 2;
            state.shouldTimerRun = true;
            state.isStartingOnOtherThread = true;
            state.btnFuncAwaitingJudge = true;
        }));
        event.beginRun();
        QVERIFY(run.state().run != first.run);
        QCOMPARE(run.state().testResult, 0);
        QVERIFY(!run.state().shouldTimerRun);
        QVERIFY(!run.state().isStartingOnOtherThread);
        QVERIFY(run.state().btnFuncAwaitingJudge);
    }

    void onlyAnActionInsideAnotherOneOnTheOwnThreadIsNested()
    {
        MachineRun run;
        const RunEvent event(run);
        QVERIFY(!event.isNested());
        QVERIFY(RunEvent(run).isNested());
        elsewhere([&] { QVERIFY(!RunEvent(run).isNested()); });
    }

    void anActionThatAnotherThreadOvertakesChangesNothing()
    {
        MachineRun run;
        RunEvent event(run);
        QVERIFY(event.isCurrent());
        moveElsewhere(run, 5);
        QVERIFY(!event.isCurrent());
        QVERIFY(!event.change([](RunState &state) { goTo(state, 7); }));
        QCOMPARE(run.state().phaseIndex, 5);
        QCOMPARE(event.state().phaseIndex, -1);
    }

    void eventsInsideAnOvertakenOneAreLateToo()
    {
        MachineRun run;
        {
            const RunEvent event(run);
            moveElsewhere(run, 5);
            RunEvent inner(run);
            QVERIFY(!inner.isCurrent());
            QVERIFY(!inner.change([](RunState &state) { goTo(state, 7); }));
        }
        QVERIFY(RunEvent(run).isCurrent());
    }

    void onTheOwnersThreadAnActionGoesOnFromTheOneInsideIt()
    {
        MachineRun run;
        RunEvent event(run);
        QVERIFY(RunEvent(run).change([](RunState &state) { goTo(state, 5); }));
        QCOMPARE(event.state().phaseIndex, 5);
        QVERIFY(event.change([](RunState &state) { goTo(state, 6); }));
        QCOMPARE(run.state().phaseIndex, 6);
    }

    void onAnotherThreadAnActionStandsAlone()
    {
        MachineRun run;
        elsewhere([&run] {
            RunEvent event(run);
            QVERIFY(!event.isOnOwnThread());
            QVERIFY(RunEvent(run).change([](RunState &state) { goTo(state, 5); }));
            QVERIFY(!event.change([](RunState &state) { goTo(state, 6); }));
        });
        QCOMPARE(run.state().phaseIndex, 5);
    }

    void theSamePhaseOfALaterRunIsAnotherOne()
    {
        MachineRun run;
        moveElsewhere(run, 6);
        elsewhere([&run] {
            RunEvent event(run);
            elsewhere([&run] {
                RunEvent(run).beginRun();
                moveElsewhere(run, 6);
            });
            QVERIFY(!event.change([](RunState &state) { goTo(state, 7); }));
        });
        QCOMPARE(run.state().phaseIndex, 6);
    }

    void aFailureReachesItsRunInAnyPhaseButNoLaterRun()
    {
        MachineRun run;
        const auto fail = [](RunState &state) { state.testResult = 2; };
        RunEvent event(run);
        moveElsewhere(run, 6);
        QVERIFY(event.changeSameRun(fail));
        QCOMPARE(run.state().phaseIndex, 6);
        QCOMPARE(run.state().testResult, 2);
        elsewhere([&run] { RunEvent(run).beginRun(); });
        QVERIFY(!event.changeSameRun(fail));
        QCOMPARE(run.state().testResult, 0);
    }

    void anotherFailureOfAFailedRunIsAChange()
    {
        MachineRun run;
        RunEvent(run).changeSameRun(setFailed);
        elsewhere([&run] {
            RunEvent event(run);
            elsewhere([&run] { QVERIFY(RunEvent(run).changeSameRun(setFailed)); });
            QVERIFY(!event.isCurrent());
        });
    }
};

QTEST_APPLESS_MAIN(MachineRunTest)
#include "tst_machinerun.moc"
