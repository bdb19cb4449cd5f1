#pragma once

#include "playing/result.h"
#include "scenario/scenario.h"

namespace panelhost {

/// Keeps the results of a repeating step short: the first two rounds and the newest one stay; one line stands for the
/// rounds between. So the results don't grow with the number of rounds.
class RepeatSummarizer
{
public:
    RepeatSummarizer(const Step &repeat, ScenarioResult &result) : m_repeat(repeat), m_result(result) {}

    /// Call before each round.
    void beginRound();

private:
    const Step &m_repeat;
    ScenarioResult &m_result;
    int m_round = 0;              ///< the one that is played now, from 1
    int m_begin = 0;              ///< where its results begin
    qint64 m_playedBefore = 0;    ///< steps when it began
    qint64 m_summarizedSteps = 0; ///< steps
};

}
