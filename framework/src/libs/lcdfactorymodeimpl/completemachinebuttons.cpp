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
    RunEvent event(m_run);
    const auto phase = static_cast<Phase>(event.state().phaseIndex);
    if (!isInRun(phase))
        return;
    event.changeSameRun([](RunState &state) { state.shouldTimerRun = false; });
    syncTimer();
    failSubTest(event, phase);
    event.changeSameRun(setFailed);
    sendFailure(event);
}

void CompleteMachineTestBiz::Impl::failSubTest(RunEvent &event, Phase phase)
{
    switch (phase) {
    case PhaseScreenBrightness:
        return screenBrightnessBiz.setNotPass();
    case PhaseScreenBadPixel:
        return screenBadPixelBiz.setNotPass();
    case PhaseButtonLight:
        return buttonLightBiz.setNotPass();
    case PhaseButtonFunction:
        return failButtonFunction(event);
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

void CompleteMachineTestBiz::Impl::failButtonFunction(RunEvent &event)
{
    bool wasAwaitingJudge = false;
    event.changeSameRun([&wasAwaitingJudge](RunState &state) {
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
    RunEvent event(m_run);
    if (event.state().isStartingOnOtherThread)
        return;
    const auto phase = static_cast<Phase>(event.state().phaseIndex);
    switch (phase) {
    case PhaseScreenBrightness:
        return onRightBtnInLevelTest(event, screenBrightnessBiz);
    case PhaseScreenBadPixel:
        return onRightBtnInScreenBadPixel();
    case PhaseButtonLight:
        return onRightBtnInLevelTest(event, buttonLightBiz);
    case PhaseButtonFunction:
        return onRightBtnInButtonFunction(event);
    case PhaseTBar:
        return onRightBtnInTBar(event);
    case PhaseNetPort:
        return onRightBtnInNetPort(event);
    case PhaseUsbPort:
        return usbPortTestBiz.setPass();
    case PhaseTypecCommunication:
    case PhaseDcAdapter:
    case PhaseTypecPower:
    case PhaseNet1Poe:
        logPhase(phase);
        return advancePhase(event);
    default:
        return;
    }
}

// The phase has passed. The single test isn't told and keeps its state.
template <class Biz>
void CompleteMachineTestBiz::Impl::onRightBtnInLevelTest(RunEvent &event, Biz &biz)
{
    if (biz.state() == StateAllStepsDone)
        advancePhase(event);
}

void CompleteMachineTestBiz::Impl::onRightBtnInScreenBadPixel()
{
    if (screenBadPixelBiz.state() == StateAllStepsDone)
        screenBadPixelBiz.setPass();
    else
        screenBadPixelBiz.nextStep();
}

void CompleteMachineTestBiz::Impl::onRightBtnInButtonFunction(RunEvent &event)
{
    if (event.state().btnFuncAwaitingJudge) {
        if (!event.change([](RunState &state) { state.btnFuncAwaitingJudge = false; }))
            return;
        logPhase(PhaseButtonFunction);
        advancePhase(event);
    } else if (buttonFunctionBiz.state() == StateNotPass && event.state().btnFuncRetestArmed
               && event.change([](RunState &state) { state.btnFuncRetestArmed = false; })) {
        buttonFunctionBiz.enter();
        buttonFunctionBiz.startTest();
        show(event, buttonFunctionScreen());
    }
}

void CompleteMachineTestBiz::Impl::onRightBtnInTBar(RunEvent &event)
{
    if (tbarTestBiz.state() == StatePass)
        advancePhase(event);
    else
        tbarTestBiz.requestNextStep();
}

void CompleteMachineTestBiz::Impl::onRightBtnInNetPort(RunEvent &event)
{
    switch (netPortTestBiz.state()) {
    case StateIdle:
        netPortTestBiz.startTest();
        return show(event, netPortScreen("FCPass"));
    case StateRunning:
        return netPortTestBiz.setPass();
    case StateNotPass:
        netPortTestBiz.reTest();
        return show(event, netPortScreen("FCAgeModeStartTest"));
    case StatePass:
        return advancePhase(event);
    default:
        return;
    }
}

}
