#include "scenario/roundfold.h"

namespace panelhost {

namespace {

constexpr int RoundsAtBegin = 2;

}

void RoundFold::beginRound()
{
    auto &steps = m_result.steps;
    if (m_round > RoundsAtBegin && steps.size() > m_begin) {
        StepResult fold;
        fold.file = m_repeat.file;
        fold.where = m_repeat.where;
        fold.at = steps.last().at;
        steps.resize(m_folded == 0 ? m_begin : m_begin - 1);
        m_folded += m_result.stepsPlayed - m_playedBefore;
        fold.text =
            QStringLiteral("… rounds %1 to %2 passed: %3 steps …").arg(RoundsAtBegin + 1).arg(m_round).arg(m_folded);
        steps.append(fold);
    }
    ++m_round;
    m_begin = steps.size();
    m_playedBefore = m_result.stepsPlayed;
}

}
