#include "completemachinescreens.h"
#include "completemachinetestbiz_p.h"
#include "translation.h"

// The T-Bar phase of the complete machine test: its screen, its step lines and their marks.

namespace LCD::FactoryModeImpl {

namespace {

constexpr int TBarSlider = 1;
constexpr int TBarLines = 6;

}

void CompleteMachineTestBiz::Impl::fillPhase4TBarInfo(CompleteMachinePhaseInfo &info, const QString &rightBtnText) const
{
    const bool slider = keyboardService && keyboardService->getTBarType() == TBarSlider;
    info.title = QLatin1String(phaseRow(PhaseTBar).titleKey);
    info.titleIcon = slider ? QStringLiteral("fc_tbar_slider") : QStringLiteral("fc_tbar_fader");
    info.stepTitle = translated(QLatin1String("TestStep"));
    info.stepTitleVisible = false;
    for (int line = 1; line <= TBarLines; ++line) {
        const char *key = line % 2 == 1 ? "Push T-Bar to Top" : "Push T-Bar to Bottom";
        info.steps << QString::number(line) + QLatin1Char('.') + translated(QLatin1String(key));
    }
    setButtons(info, phaseRow(PhaseTBar).buttons, nullptr);
    info.rightBtnText = rightBtnText;
    info.panelMode = phaseRow(PhaseTBar).panelMode;
}

// Marks the step line that the operator has just carried out. The first press starts the calibration and marks no line.
void CompleteMachineTestBiz::Impl::onTBarStep(bool lastSteps)
{
    if (m_run.state().phaseIndex != PhaseTBar)
        return;
    CompleteMachinePhaseInfo info;
    fillPhase4TBarInfo(info, translated(QLatin1String(lastSteps ? "FCTestComplete" : "FCNextStep")));
    info.keepSteps = true;
    notifyPhase(info);
    const int passedLine = tbarTestBiz.currentStepIndex() - 2;
    if (passedLine >= 0)
        notifyStepIcon(passedLine);
}

}
