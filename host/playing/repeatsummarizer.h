#pragma once

#include "playing/scenarioresult.h"
#include "scenario/scenario.h"

namespace panelhost {

/// Shortens the results of a repeat. Keeps the first two repetitions and the newest one; one element replaces all
/// others. The size of the results therefore doesn't depend on the number of repetitions.
class RepeatSummarizer
{
public:
    RepeatSummarizer(const Step &repeat, ScenarioResult &result) : m_repeat(repeat), m_result(result) {}

    /// Call before each repetition.
    void beginRepetition();

private:
    const Step &m_repeat;
    ScenarioResult &m_result;
    int m_repetition = 0;         ///< number of the current repetition, starting at 1
    int m_begin = 0;              ///< index of its first result
    qint64 m_playedBefore = 0;    ///< number of steps before it
    qint64 m_summarizedSteps = 0; ///< number of steps that were left out
};

}
