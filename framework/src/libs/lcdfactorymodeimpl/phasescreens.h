#pragma once

#include "completemachinephaseinfo.h"
#include "phasetable.h"

namespace LCD::FactoryModeImpl {

// The screens of the complete machine test, in the language of the moment. Without side effects.

/// The row of @p phase as a screen; @p titleSuffix goes behind the title.
CompleteMachinePhaseInfo phaseScreen(Phase phase, const QString &titleSuffix = {});
/// phaseScreen() with the status icon prepared.
CompleteMachinePhaseInfo firstPortScreen(Phase phase);
/// Title and icon of @p phase; the rest stays at its default.
CompleteMachinePhaseInfo phaseHeading(Phase phase);
/// phaseHeading() with the step lines of the row.
CompleteMachinePhaseInfo phaseInstructions(Phase phase);
/// The walk through the keys: the frame leaves the keys to the test.
CompleteMachinePhaseInfo buttonFunctionScreen();
/// All is shown and the operator judges.
CompleteMachinePhaseInfo judgeScreen(Phase phase);
CompleteMachinePhaseInfo failScreen();
CompleteMachinePhaseInfo passScreen();

/// Captions, visibility and focus of the soft buttons.
void setButtons(CompleteMachinePhaseInfo &info, PhaseButtons buttons);
/// The same with @p rightBtnText as the right caption, in place of the one that goes with @p buttons.
void setButtons(CompleteMachinePhaseInfo &info, PhaseButtons buttons, const QString &rightBtnText);
/// Both verdict buttons, and the panel mode that goes with them.
void setVerdictButtons(CompleteMachinePhaseInfo &info);

}
