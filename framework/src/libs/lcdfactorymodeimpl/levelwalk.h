#pragma once

#include "statecodes.h"

#include <optional>

namespace LCD::FactoryModeImpl {

/// What a light test does on its next tick. `state` and `cycleCount` are what the test goes on with, `show` is the
/// brightness in percent to set, and `announce` says that the walk is over.
struct LevelStep
{
    int state = StateIdle;
    int cycleCount = 0;
    std::optional<int> show;
    bool announce = false;
};

/// The next step from the level that shows and the trips already made. Two trips make a walk; a state that is no
/// level stays as it is.
inline LevelStep nextLevelStep(int state, int cycleCount)
{
    switch (state) {
    case StateLevel10:
        return {StateLevel30, cycleCount, StateLevel30, false};
    case StateLevel30:
        return {StateLevel50, cycleCount, StateLevel50, false};
    case StateLevel50:
        return {StateLevel70, cycleCount, StateLevel70, false};
    case StateLevel70:
        return {StateLevel100, cycleCount, StateLevel100, false};
    case StateLevel100:
        if (cycleCount <= 0)
            return {StateLevel10, cycleCount + 1, StateLevel10, false};
        return {StateAllStepsDone, 0, std::nullopt, true};
    default:
        return {state, cycleCount, std::nullopt, false};
    }
}

}
