#include "scenario/scenario.h"

namespace panelhost {

qint64 playedSteps(const QVector<Step> &steps)
{
    qint64 count = 0;
    for (const auto &step : steps)
        count += step.kind == Step::Kind::Repeat ? step.times * playedSteps(step.steps) : 1;
    return count;
}

Expectations expectationsOf(const QVector<Step> &steps)
{
    Expectations expectations;
    for (const auto &step : steps)
        expectations += step.expectations + expectationsOf(step.steps);
    return expectations;
}

}
