#pragma once

#include "device/tbarstate.h"

namespace panelhost {

/// A step of the T-Bar's calibration. The steps are the same for a slider and a fader.
struct CalibrationStep
{
    int command;
    const char *name;
    std::optional<TBarEnd> position; ///< where the bar must be when the command comes; empty: anywhere
    std::optional<TBarEnd> next;     ///< where the operator has to move it after the step
};

constexpr int BeginCalibration = 2; ///< the command that begins a calibration

/// Returns the step of @p command; nullptr if there is none.
const CalibrationStep *findCalibrationStep(int command);
/// Returns the name of the step in messages, such as "top"; "command 9" for an unknown command.
QString calibrationStepName(int command);
/// Returns why @p command fails in the current position of the bar, such as "the T-Bar is at 50 %, it must be at the
/// top (95 % to 100 %)". Empty if the bar is where it must be.
QString calibrationProblem(const TBarState &bar, int command);

}
