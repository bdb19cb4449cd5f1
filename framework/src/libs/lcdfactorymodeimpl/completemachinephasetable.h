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

/// Returns whether @p phase is a phase of a run, which may be running or failed.
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

/// The panel modes of a screen with both verdict buttons, and of the pass and fail screens.
constexpr int PanelModeVerdict = 9;
constexpr int PanelModeFinished = 8;

/// One phase: its first screen and the line that it writes to the log of the page.
struct PhaseRow
{
    Phase phase;
    const char *titleKey;
    const char *titleIcon;
    /// The icon of a port phase. It is set with the first screen but hidden; the first report replaces it.
    const char *statusIcon;
    std::array<const char *, 3> stepKeys;
    PhaseButtons buttons;
    int panelMode;
    const char *logLine;
};

/// Returns the row of @p phase, which is one of PhaseScreenBrightness to PhaseNet1Poe.
const PhaseRow &phaseRow(int phase);

}
