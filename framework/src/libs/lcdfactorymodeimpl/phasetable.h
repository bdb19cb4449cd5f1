#pragma once

#include <array>

namespace LCD::FactoryModeImpl {

/// The phases of the complete machine test.
enum Phase : int {
    PhaseNone = -1,
    PhaseScreenBrightness = 0,
    PhaseScreenBadPixel = 1,
    PhaseButtonLight = 2,
    PhaseButtonFunction = 3,
    PhaseTBar = 4,
    PhaseNetPort = 5,
    PhaseUsbPort = 6,
    PhaseTypecCommunication = 7,
    PhaseDcAdapter = 8,
    PhaseTypecPower = 9,
    PhaseNet1Poe = 10,
    PhaseFinished = 11,
};

/// Whether a run stands on @p phase, be it under way or failed.
constexpr bool isInRun(int phase)
{
    return phase >= PhaseScreenBrightness && phase <= PhaseNet1Poe;
}

/// The soft buttons of a screen.
enum class PhaseButtons {
    None,
    Next,    ///< right: next step
    Start,   ///< right: start
    Fail,    ///< left: not passed
    Verdict, ///< left: not passed, right: passed
};

/// What the keyboard service is told on a screen with both verdict buttons, and on the pass and fail screens.
constexpr int PanelModeVerdict = 9;
constexpr int PanelModeFinished = 8;

/// One phase: its first screen and the line that it writes into the log of the page.
struct PhaseRow
{
    Phase phase;
    const char *titleKey;
    const char *titleIcon;
    /// Prepared for the port phases, and out of sight until their first report.
    const char *statusIcon;
    std::array<const char *, 3> stepKeys;
    PhaseButtons buttons;
    int panelMode;
    const char *logLine;
};

/// The row of @p phase, from PhaseScreenBrightness to PhaseNet1Poe.
const PhaseRow &phaseRow(int phase);

}
