#pragma once

#include "device/tbarstate.h"

namespace panelhost {

/// A command of the T-Bar's calibration, which asks for one step. The commands are the same for a slider and a fader.
struct CalibrationCommand
{
    int number;
    const char *name;
    std::optional<TBarEnd> position; ///< where the T-Bar must be when the command comes; empty: anywhere
    std::optional<TBarEnd> next;     ///< where the operator has to move it after the step
};

constexpr int BeginCalibration = 2; ///< the command that begins a calibration

/// Returns the command @p number; nullptr if there is none.
const CalibrationCommand *findCalibrationCommand(int number);
/// Returns the name of the command @p number in messages, such as "top"; "command 9" for an unknown command.
QString calibrationCommandName(int number);
/// Returns why the command @p number fails in the current position of the T-Bar, such as "the T-Bar is at 50 %, it must
/// be at the top (95 % to 100 %)". Empty if the T-Bar is where it must be.
QString calibrationProblem(const TBarState &bar, int number);

}
