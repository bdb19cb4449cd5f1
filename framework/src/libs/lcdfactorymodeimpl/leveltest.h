#pragma once

#include "levelwalk.h"
#include "testobject.h"

namespace LCD::FactoryModeImpl {

// The operations of both tests that walk the levels. `show` sets a brightness in percent.

template <class Test>
void resetLevelTest(Test &test)
{
    test.cycleCount = 0;
    announceAs(test, StateIdle);
}

template <class Test, class Show>
void startLevelTest(Test &test, const Show &show)
{
    test.state = StateLevel10;
    show(StateLevel10);
    test.notifyStateChanged(test.state);
}

/// Goes one level on. @p atEnd runs when the walk is over, before that is announced.
template <class Test, class Show, class AtEnd>
void nextLevelTestStep(Test &test, const Show &show, const AtEnd &atEnd)
{
    const LevelStep step = nextLevelStep(test.state, test.cycleCount);
    test.cycleCount = step.cycleCount;
    test.state = step.state;
    if (step.show)
        show(*step.show);
    if (!step.announce)
        return;
    atEnd();
    test.notifyStateChanged(test.state);
}

}
