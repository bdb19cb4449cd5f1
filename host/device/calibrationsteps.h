#pragma once

#include "device/device.h"

namespace panelhost {

/// What a calibration command makes the T-Bar's device do. The same for a slider and a fader.
struct CalibrationStep
{
    int command;
    const char *name;
    std::optional<TBarEnd> position; ///< where the bar must be when the command comes; anywhere when empty
    std::optional<TBarEnd> next;     ///< where the operator moves it after that
};

constexpr int BeginCalibration = 2; ///< the command that begins a calibration

/// nullptr when there is no such command.
const CalibrationStep *findCalibrationStep(int command);
/// The name in messages: "top", or "command 9" for one that isn't known.
QString calibrationStepName(int command);
/// Why @p command fails with the bar as it is, such as "the T-Bar is at 50 %, it must be at the top (95 % to 100 %)".
/// Empty when the bar is where it must be.
QString calibrationProblem(const TBarState &bar, int command);

}
