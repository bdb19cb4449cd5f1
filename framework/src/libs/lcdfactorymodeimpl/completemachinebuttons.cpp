#include "completemachinetestbiz_p.h"
#include "phasescreens.h"
#include "statecodes.h"
#include "translation.h"

// What the two soft buttons mean in each phase of the complete machine test.

namespace LCD::FactoryModeImpl {

namespace {

// Both buttons while the test runs, and again once it is set back.
CompleteMachinePhaseInfo netPortScreen(const char *rightBtnKey)
{
    CompleteMachinePhaseInfo info = phaseInstructions(PhaseNetPort);
    setButtons(info, PhaseButtons::Verdict, translated(QLatin1String(rightBtnKey)));
    info.panelMode = PanelModeVerdict;
    return info;
}

}

// A test that takes the failure reports it, and so the run fails twice over: once inside that report, once here.
void CompleteMachineTestBiz::Impl::onLeftBtnClicked()
{
    const auto phase = static_cast<Phase>(phaseIndex.load());
    if (!isInRun(phase))
        return;
    setPhaseTimer(false);
    failSubTest(phase);
    sendFailure(failScreen());
}

void CompleteMachineTestBiz::Impl::failSubTest(Phase phase)
{
    switch (phase) {
    case PhaseScreenBrightness:
        return screenBrightnessBiz.setNotPass();
    case PhaseScreenBadPixel:
        return screenBadPixelBiz.setNotPass();
    case PhaseButtonLight:
        return buttonLightBiz.setNotPass();
    case PhaseButtonFunction:
        return failButtonFunction();
    case PhaseTBar:
        return tbarTestBiz.setNotPass();
    case PhaseNetPort:
        return netPortTestBiz.setNotPass();
    case PhaseUsbPort:
        return usbPortTestBiz.setNotPass();
    default:
        return;
    }
}

void CompleteMachineTestBiz::Impl::failButtonFunction()
{
    if (takeFlag(btnFuncAwaitingJudge))
        return;
    setFlag(btnFuncRetestArmed, false);
    buttonFunctionBiz.setNotPass();
}

void CompleteMachineTestBiz::Impl::onRightBtnClicked()
{
    const auto phase = static_cast<Phase>(phaseIndex.load());
    switch (phase) {
    case PhaseScreenBrightness:
        return judgeLevels(screenBrightnessBiz);
    case PhaseScreenBadPixel:
        return judgeScreenBadPixel();
    case PhaseButtonLight:
        return judgeLevels(buttonLightBiz);
    case PhaseButtonFunction:
        return judgeButtonFunction();
    case PhaseTBar:
        return judgeTBar();
    case PhaseNetPort:
        return judgeNetPort();
    case PhaseUsbPort:
        return usbPortTestBiz.setPass();
    case PhaseTypecCommunication:
    case PhaseDcAdapter:
    case PhaseTypecPower:
    case PhaseNet1Poe:
        logPhase(phase);
        return advancePhase();
    default:
        return;
    }
}

// Passed without a word to the test, which stays where it is.
template <class Biz>
void CompleteMachineTestBiz::Impl::judgeLevels(Biz &biz)
{
    if (biz.state() == StateAllStepsDone)
        advancePhase();
}

void CompleteMachineTestBiz::Impl::judgeScreenBadPixel()
{
    if (screenBadPixelBiz.state() == StateAllStepsDone)
        screenBadPixelBiz.setPass();
    else
        screenBadPixelBiz.nextStep();
}

void CompleteMachineTestBiz::Impl::judgeButtonFunction()
{
    if (takeFlag(btnFuncAwaitingJudge)) {
        logPhase(PhaseButtonFunction);
        advancePhase();
    } else if (buttonFunctionBiz.state() == StateNotPass && takeFlag(btnFuncRetestArmed)) {
        buttonFunctionBiz.enter();
        buttonFunctionBiz.startTest();
        notifyPhase(buttonFunctionScreen());
    }
}

void CompleteMachineTestBiz::Impl::judgeTBar()
{
    if (tbarTestBiz.state() == StatePass)
        advancePhase();
    else
        tbarTestBiz.requestNextStep();
}

void CompleteMachineTestBiz::Impl::judgeNetPort()
{
    switch (netPortTestBiz.state()) {
    case StateIdle:
        netPortTestBiz.startTest();
        return notifyPhase(netPortScreen("FCPass"));
    case StateRunning:
        return netPortTestBiz.setPass();
    case StateNotPass:
        netPortTestBiz.reTest();
        return notifyPhase(netPortScreen("FCAgeModeStartTest"));
    case StatePass:
        return advancePhase();
    default:
        return;
    }
}

}
