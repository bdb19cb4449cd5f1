#include "device/calibrationcommand.h"

#include <algorithm>
#include <iterator>

namespace panelhost {

namespace {

constexpr CalibrationCommand commands[] = {
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

const CalibrationCommand *findCalibrationCommand(int number)
{
    const auto found = std::find_if(std::begin(commands), std::end(commands),
                                    [number](const CalibrationCommand &command) { return command.number == number; });
    return found == std::end(commands) ? nullptr : found;
}

QString calibrationCommandName(int number)
{
    const CalibrationCommand *command = findCalibrationCommand(number);
    return command ? QString::fromLatin1(command->name) : QStringLiteral("command %1").arg(number);
}

QString calibrationProblem(const TBarState &bar, int number)
{
    const CalibrationCommand *command = findCalibrationCommand(number);
    if (!command || !command->position || bar.isAt(*command->position))
        return {};
    const bool isTop = *command->position == TBarEnd::Top;
    return QStringLiteral("the T-Bar is at %1, it must be at the %2 (%3 to %4)")
        .arg(percent(bar.position), tbarEndName(*command->position), percent(isTop ? 1 - bar.tolerance : 0),
             percent(isTop ? 1 : bar.tolerance));
}

}
