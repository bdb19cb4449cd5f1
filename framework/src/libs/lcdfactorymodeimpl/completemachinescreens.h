#pragma once

#include "completemachinephaseinfo.h"
#include "completemachinephasetable.h"

namespace LCD::FactoryModeImpl {

// The screens of the complete machine test in the current language. The functions have no side effects.

/// Returns the screen that the row of @p phase describes. @p titleSuffix is appended to the title.
CompleteMachinePhaseInfo phaseScreen(Phase phase, const QString &titleSuffix = {});
/// Returns phaseScreen() with the status icon set but not visible.
CompleteMachinePhaseInfo firstPortScreen(Phase phase);
/// Returns a screen with the title and the icon of @p phase. All other values are the defaults.
CompleteMachinePhaseInfo phaseHeading(Phase phase);
/// Returns phaseHeading() with the step lines of the row.
CompleteMachinePhaseInfo phaseInstructions(Phase phase);
/// Returns the screen of the key walk. The frame doesn't handle keys while it is shown.
CompleteMachinePhaseInfo buttonFunctionScreen();
/// Returns the verdict screen of @p phase, on which the operator passes or fails the phase.
CompleteMachinePhaseInfo judgeScreen(Phase phase);
CompleteMachinePhaseInfo failScreen();
CompleteMachinePhaseInfo passScreen();

/// Sets captions, visibility and focus of the soft buttons.
void setButtons(CompleteMachinePhaseInfo &info, PhaseButtons buttons);
/// As above, but the caption of the right button is the translation of @p rightBtnKey. Null leaves it empty.
void setButtons(CompleteMachinePhaseInfo &info, PhaseButtons buttons, const char *rightBtnKey);
/// Sets both verdict buttons and their panel mode.
void setVerdictButtons(CompleteMachinePhaseInfo &info);

}
