#include "completemachinescreens.h"
#include "completemachinetestbiz_p.h"
#include "translation.h"

#include <algorithm>

// The link results of the net port and USB port phases of the complete machine test.

namespace LCD::FactoryModeImpl {

namespace {

// A link result is only information for the operator, who gives the verdict with the two buttons.
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

// Runs on the thread of the network service. Only the first two ports count; a report with one port never passes.
void CompleteMachineTestBiz::Impl::onNetLinkStatus(const std::vector<bool> &links, bool)
{
    if (m_run.state().phaseIndex != PhaseNetPort || links.empty())
        return;
    const bool passed = links.size() >= 2 && links[0] && links[1];
    notifyPhase(linkResultScreen(PhaseNetPort, "FCTestComplete", passed ? "NetPass" : "NetNoPass"));
}

// Runs on the thread of the USB service. All ports count. The screen keeps its instruction.
void CompleteMachineTestBiz::Impl::onUsbLinkStatus(const std::vector<bool> &links) const
{
    if (m_run.state().phaseIndex != PhaseUsbPort || links.empty())
        return;
    const bool passed = std::all_of(links.begin(), links.end(), [](bool linked) { return linked; });
    CompleteMachinePhaseInfo info = linkResultScreen(PhaseUsbPort, "TestStep", passed ? "UsbPass" : "UsbNoPass");
    info.steps << translated(QStringLiteral("FCUSB30TestStep"));
    notifyPhase(info);
}

}
