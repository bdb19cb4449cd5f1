#include "device/calibrationsteps.h"

#include <algorithm>
#include <iterator>

namespace panelhost {

namespace {

constexpr CalibrationStep steps[] = {
    {BeginCalibration, "begin", std::nullopt, TBarEnd::Top},
    {1, "top", TBarEnd::Top, TBarEnd::Bottom},
    {0, "bottom", TBarEnd::Bottom, TBarEnd::Top},
    {4, "end", TBarEnd::Bottom, std::nullopt},
};

QString percent(double position)
{
    return QStringLiteral("%1 %").arg(position * 100, 0, 'g', 6);
}

}

const CalibrationStep *findCalibrationStep(int command)
{
    const auto found = std::find_if(std::begin(steps), std::end(steps),
                                    [command](const CalibrationStep &step) { return step.command == command; });
    return found == std::end(steps) ? nullptr : found;
}

QString calibrationStepName(int command)
{
    const CalibrationStep *step = findCalibrationStep(command);
    return step ? QString::fromLatin1(step->name) : QStringLiteral("command %1").arg(command);
}

QString calibrationProblem(const TBarState &bar, int command)
{
    const CalibrationStep *step = findCalibrationStep(command);
    if (!step || !step->position || bar.isAt(*step->position))
        return {};
    const bool isTop = *step->position == TBarEnd::Top;
    return QStringLiteral("the T-Bar is at %1, it must be at the %2 (%3 to %4)")
        .arg(percent(bar.position), tbarEndName(*step->position), percent(isTop ? 1 - bar.tolerance : 0),
             percent(isTop ? 1 : bar.tolerance));
}

}
