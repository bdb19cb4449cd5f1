#include "playing/repeatsummarizer.h"

namespace panelhost {

namespace {

constexpr int RepetitionsAtBegin = 2;

}

void RepeatSummarizer::beginRepetition()
{
    auto &steps = m_result.steps;
    if (m_repetition > RepetitionsAtBegin && steps.size() > m_begin) {
        StepResult summary;
        summary.file = m_repeat.file;
        summary.where = m_repeat.where;
        summary.at = steps.last().at;
        summary.repeat = steps.last().repeat;
        steps.resize(m_summarizedSteps == 0 ? m_begin : m_begin - 1);
        m_summarizedSteps += m_result.stepsPlayed - m_playedBefore;
        summary.text = QStringLiteral("… repetitions %1 to %2 passed: %3 steps …")
                           .arg(RepetitionsAtBegin + 1)
                           .arg(m_repetition)
                           .arg(m_summarizedSteps);
        steps.append(summary);
    }
    ++m_repetition;
    m_begin = steps.size();
    m_playedBefore = m_result.stepsPlayed;
}

}
