#include "completemachinescreens.h"
#include "completemachinetestbiz_p.h"
#include "translation.h"

#include <QtCore/QStringBuilder>

// The T-Bar phase of the complete machine test: its screen, its step lines and their marks.

namespace LCD::FactoryModeImpl {

namespace {

constexpr int TBarSlider = 1;

}

void CompleteMachineTestBiz::Impl::fillPhase4TBarInfo(CompleteMachinePhaseInfo &info, const QString &rightBtnText) const
{
    const bool slider = keyboardService && keyboardService->getTBarType() == TBarSlider;
    info.title = QLatin1String(phaseRow(PhaseTBar).titleKey);
    info.titleIcon = slider ? QStringLiteral("fc_tbar_slider") : QStringLiteral("fc_tbar_fader");
    info.stepTitle = translated(QStringLiteral("TestStep"));
    info.stepTitleVisible = false;
    const QString toTop = translated(QStringLiteral("Push T-Bar to Top"));
    const QString toBottom = translated(QStringLiteral("Push T-Bar to Bottom"));
    info.steps << QLatin1String("1.") % toTop << QLatin1String("2.") % toBottom << QLatin1String("3.") % toTop
               << QLatin1String("4.") % toBottom << QLatin1String("5.") % toTop << QLatin1String("6.") % toBottom;
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
    fillPhase4TBarInfo(info, translated(lastSteps ? QStringLiteral("FCTestComplete") : QStringLiteral("FCNextStep")));
    info.keepSteps = true;
    notifyPhase(info);
    const int passedLine = tbarTestBiz.currentStepIndex() - 2;
    if (passedLine >= 0)
        notifyStepIcon(passedLine);
}

}
