#pragma once

#include "levelstep.h"
#include "singletesthelpers.h"

namespace LCD::FactoryModeImpl {

// Functions that the two level tests share: screen brightness and key LEDs. `show` sets a brightness in percent.

template <class Test>
void resetLevelTest(Test &test)
{
    test.cycleCount = 0;
    setStateAndNotify(test, StateIdle);
}

template <class Test, class Show>
void startLevelTest(Test &test, const Show &show)
{
    test.state = StateLevel10;
    show(StateLevel10);
    test.notifyStateChanged(test.state);
}

/// Shows the next level. After the last one, calls @p atEnd and then notifies the listeners that all steps are done.
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
