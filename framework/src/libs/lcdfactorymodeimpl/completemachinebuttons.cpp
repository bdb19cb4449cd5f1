#include "completemachinescreens.h"
#include "completemachinetestbiz_p.h"
#include "statecodes.h"

#include <utility>

// What the left and the right button do in each phase of the complete machine test.

namespace LCD::FactoryModeImpl {

namespace {

// The hal key that also operates the left button, which means "not passed".
constexpr unsigned NotPassButtonKey = 27;

// The screen with both buttons, shown while the test runs and again after it was reset.
CompleteMachinePhaseInfo netPortScreen(const char *rightBtnKey)
{
    CompleteMachinePhaseInfo info = phaseInstructions(PhaseNetPort);
    setButtons(info, PhaseButtons::Verdict, rightBtnKey);
    info.panelMode = PanelModeVerdict;
    return info;
}

}

// A single test that accepts the failure notifies this driver. In this case the run fails twice: in the notification
// and here.
void CompleteMachineTestBiz::Impl::onLeftBtnClicked()
{
    RunAction action(m_run);
    const auto phase = static_cast<Phase>(action.state().phaseIndex);
    if (!isInRun(phase))
        return;
    action.changeSameRun([](RunState &state) { state.shouldTimerRun = false; });
    syncTimer();
    failSubTest(action, phase);
    action.changeSameRun(setFailed);
    sendFailure(action);
}

void CompleteMachineTestBiz::Impl::failSubTest(RunAction &action, Phase phase)
{
    switch (phase) {
    case PhaseScreenBrightness:
        return screenBrightnessBiz.setNotPass();
    case PhaseScreenBadPixel:
        return screenBadPixelBiz.setNotPass();
    case PhaseButtonLight:
        return buttonLightBiz.setNotPass();
    case PhaseButtonFunction:
        return failButtonFunction(action);
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

void CompleteMachineTestBiz::Impl::failButtonFunction(RunAction &action)
{
    bool wasAwaitingJudge = false;
    action.changeSameRun([&wasAwaitingJudge](RunState &state) {
        wasAwaitingJudge = std::exchange(state.btnFuncAwaitingJudge, false);
        if (!wasAwaitingJudge)
            state.btnFuncRetestArmed = false;
    });
    if (!wasAwaitingJudge)
        buttonFunctionBiz.setNotPass();
}

// Called for each key of the key walk. While the walk waits for NotPassButtonKey, the left button is disabled: the
// operator is asked to press this key, and the press must not fail the phase.
void CompleteMachineTestBiz::Impl::onCurrentKey(unsigned halKey)
{
    if (m_run.state().phaseIndex != PhaseButtonFunction)
        return;
    CompleteMachinePhaseInfo info;
    info.noPassBtnClickable = halKey != NotPassButtonKey;
    notifyPhase(info);
}

// A press is ignored while another thread starts the phase, because the single test isn't ready yet.
void CompleteMachineTestBiz::Impl::onRightBtnClicked()
{
    RunAction action(m_run);
    if (action.state().isStartingOnOtherThread)
        return;
    const auto phase = static_cast<Phase>(action.state().phaseIndex);
    switch (phase) {
    case PhaseScreenBrightness:
        return onRightBtnInLevelTest(action, screenBrightnessBiz);
    case PhaseScreenBadPixel:
        return onRightBtnInScreenBadPixel();
    case PhaseButtonLight:
        return onRightBtnInLevelTest(action, buttonLightBiz);
    case PhaseButtonFunction:
        return onRightBtnInButtonFunction(action);
    case PhaseTBar:
        return onRightBtnInTBar(action);
    case PhaseNetPort:
        return onRightBtnInNetPort(action);
    case PhaseUsbPort:
        return usbPortTestBiz.setPass();
    case PhaseTypecCommunication:
    case PhaseDcAdapter:
    case PhaseTypecPower:
    case PhaseNet1Poe:
        logPhase(phase);
        return advancePhase(action);
    default:
        return;
    }
}

// The phase has passed. The single test isn't told and keeps its state.
template <class Biz>
void CompleteMachineTestBiz::Impl::onRightBtnInLevelTest(RunAction &action, Biz &biz)
{
    if (biz.state() == StateAllStepsDone)
        advancePhase(action);
}

void CompleteMachineTestBiz::Impl::onRightBtnInScreenBadPixel()
{
    if (screenBadPixelBiz.state() == StateAllStepsDone)
        screenBadPixelBiz.setPass();
    else
        screenBadPixelBiz.nextStep();
}

void CompleteMachineTestBiz::Impl::onRightBtnInButtonFunction(RunAction &action)
{
    if (action.state().btnFuncAwaitingJudge) {
        if (!action.change([](RunState &state) { state.btnFuncAwaitingJudge = false; }))
            return;
        logPhase(PhaseButtonFunction);
        advancePhase(action);
    } else if (buttonFunctionBiz.state() == StateNotPass && action.state().btnFuncRetestArmed
               && action.change([](RunState &state) { state.btnFuncRetestArmed = false; })) {
        buttonFunctionBiz.enter();
        buttonFunctionBiz.startTest();
        show(action, buttonFunctionScreen());
    }
}

void CompleteMachineTestBiz::Impl::onRightBtnInTBar(RunAction &action)
{
    if (tbarTestBiz.state() == StatePass)
        advancePhase(action);
    else
        tbarTestBiz.requestNextStep();
}

void CompleteMachineTestBiz::Impl::onRightBtnInNetPort(RunAction &action)
{
    switch (netPortTestBiz.state()) {
    case StateIdle:
        netPortTestBiz.startTest();
        return show(action, netPortScreen("FCPass"));
    case StateRunning:
        return netPortTestBiz.setPass();
    case StateNotPass:
        netPortTestBiz.reTest();
        return show(action, netPortScreen("FCAgeModeStartTest"));
    case StatePass:
        return advancePhase(action);
    default:
        return;
    }
}

}
