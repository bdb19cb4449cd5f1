#include "completemachinetestbiz_p.h"
#include "phasescreens.h"
#include "translation.h"

#include <algorithm>

// The phases of the complete machine test whose screen changes while they run: T-Bar, net ports, USB ports.

namespace LCD::FactoryModeImpl {

namespace {

constexpr int TBarSlider = 1;
constexpr int TBarLines = 6;

// A link result is advice: the verdict stays with the operator, who has both buttons.
CompleteMachinePhaseInfo linkResultScreen(Phase phase, const char *stepTitleKey, const char *statusIcon)
{
    CompleteMachinePhaseInfo info = phaseHeading(phase);
    info.stepTitle = translated(QLatin1String(stepTitleKey));
    info.statusIcon = QLatin1String(statusIcon);
    info.statusIconVisible = true;
    setVerdictButtons(info);
    return info;
}

}

// Runs on the thread of the network service. The first two ports count; a report of one port never passes.
void CompleteMachineTestBiz::Impl::onNetLinkStatus(const std::vector<bool> &links, bool)
{
    if (run.state().phaseIndex != PhaseNetPort || links.empty())
        return;
    const bool passed = links.size() >= 2 && links[0] && links[1];
    notifyPhase(linkResultScreen(PhaseNetPort, "FCTestComplete", passed ? "NetPass" : "NetNoPass"));
}

// Runs on the thread of the USB service. All ports count, and the instruction stays on the screen.
void CompleteMachineTestBiz::Impl::onUsbLinkStatus(const std::vector<bool> &links) const
{
    if (run.state().phaseIndex != PhaseUsbPort || links.empty())
        return;
    const bool passed = std::all_of(links.begin(), links.end(), [](bool linked) { return linked; });
    CompleteMachinePhaseInfo info = linkResultScreen(PhaseUsbPort, "TestStep", passed ? "UsbPass" : "UsbNoPass");
    info.steps << translated(QLatin1String("FCUSB30TestStep"));
    notifyPhase(info);
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
        info.steps << QStringLiteral("%1.%2").arg(line).arg(translated(QLatin1String(key)));
    }
    setButtons(info, phaseRow(PhaseTBar).buttons, rightBtnText);
    info.panelMode = phaseRow(PhaseTBar).panelMode;
}

// The press that starts the phase marks no line; each later one marks the line that was asked for before it.
void CompleteMachineTestBiz::Impl::onTBarStep(bool lastSteps)
{
    if (run.state().phaseIndex != PhaseTBar)
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
