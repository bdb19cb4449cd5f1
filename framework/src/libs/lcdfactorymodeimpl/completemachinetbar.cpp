#include "completemachinescreens.h"
#include "completemachinetestbiz_p.h"
#include "translation.h"

#include <QtCore/QStringBuilder>

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
    info.stepTitle = translated(QStringLiteral("TestStep"));
    info.stepTitleVisible = false;
    for (int line = 1; line <= TBarLines; ++line) {
        const QString text =
            translated(line % 2 == 1 ? QStringLiteral("Push T-Bar to Top") : QStringLiteral("Push T-Bar to Bottom"));
        info.steps << QLatin1Char(static_cast<char>('0' + line)) % QLatin1Char('.') % text;
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
    fillPhase4TBarInfo(info, translated(lastSteps ? QStringLiteral("FCTestComplete") : QStringLiteral("FCNextStep")));
    info.keepSteps = true;
    notifyPhase(info);
    const int passedLine = tbarTestBiz.currentStepIndex() - 2;
    if (passedLine >= 0)
        notifyStepIcon(passedLine);
}

}
