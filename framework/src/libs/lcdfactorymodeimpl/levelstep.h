#pragma once

#include "statecodes.h"

#include <optional>

namespace LCD::FactoryModeImpl {

/// What a level test does next.
struct LevelStep
{
    /// The new state of the test.
    int state = StateIdle;
    /// The new number of completed cycles.
    int cycleCount = 0;
    /// The brightness to set, in percent.
    std::optional<int> show;
    /// Whether the test has ended and its listeners must be notified.
    bool announce = false;
};

/// Returns the step that follows the level @p state after @p cycleCount completed cycles. A cycle shows each level
/// once; a level test takes two cycles. A state that isn't a level doesn't change.
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
