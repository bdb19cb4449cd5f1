#include "completemachinetestbiz_p.h"
#include "levelsuffix.h"
#include "phasescreens.h"
#include "statecodes.h"
#include "translation.h"
#include "undo.h"

#include <array>

// How the complete machine test goes from phase to phase.

namespace LCD::FactoryModeImpl {

namespace {

constexpr unsigned NoPassKey = 27;

}

template <class Biz>
void CompleteMachineTestBiz::Impl::startLevels(Biz &biz, Phase phase)
{
    biz.enter();
    biz.startTest();
    const CompleteMachinePhaseInfo info = phaseScreen(phase, levelSuffix(biz.state()));
    setPhaseTimer(true);
    notifyPhase(info);
}

template <class Biz>
void CompleteMachineTestBiz::Impl::showNextLevel(Biz &biz, Phase phase)
{
    biz.nextStep();
    const QString suffix = levelSuffix(biz.state());
    // None on the last tick: the judge screen is up by then.
    if (!suffix.isEmpty())
        notifyPhase(phaseScreen(phase, suffix));
}

void CompleteMachineTestBiz::Impl::startCurrentPhase()
{
    const auto phase = static_cast<Phase>(phaseIndex.load());
    switch (phase) {
    case PhaseScreenBrightness:
        return startLevels(screenBrightnessBiz, phase);
    case PhaseScreenBadPixel:
        return startScreenBadPixel();
    case PhaseButtonLight:
        return startLevels(buttonLightBiz, phase);
    case PhaseButtonFunction:
        return startButtonFunction();
    case PhaseTBar:
        return startTBar();
    case PhaseNetPort:
        return startNetPort();
    case PhaseUsbPort:
        return startUsbPort();
    case PhaseTypecCommunication:
    case PhaseTypecPower:
    case PhaseNet1Poe:
        return notifyPhase(phaseScreen(phase));
    case PhaseDcAdapter: // taken out of the run
        return advancePhase();
    case PhaseNone:
    case PhaseFinished:
        return;
    }
}

void CompleteMachineTestBiz::Impl::startScreenBadPixel()
{
    screenBadPixelBiz.enter();
    screenBadPixelBiz.startTest();
    notifyPhase(phaseScreen(PhaseScreenBadPixel));
}

// The one phase whose screen comes before its test: the first key reports itself while the test starts.
void CompleteMachineTestBiz::Impl::startButtonFunction()
{
    setFlag(btnFuncRetestArmed, false);
    notifyPhase(buttonFunctionScreen());
    buttonFunctionBiz.enter();
    buttonFunctionBiz.startTest();
}

void CompleteMachineTestBiz::Impl::startTBar()
{
    tbarTestBiz.enter();
    tbarTestBiz.startTest();
    CompleteMachinePhaseInfo info;
    fillPhase4TBarInfo(info, translated(QLatin1String("FCAgeModeStartTest")));
    notifyPhase(info);
}

// The test itself waits for the right button.
void CompleteMachineTestBiz::Impl::startNetPort()
{
    netPortTestBiz.enter();
    notifyPhase(firstPortScreen(PhaseNetPort));
}

void CompleteMachineTestBiz::Impl::startUsbPort()
{
    usbPortTestBiz.enter();
    usbPortTestBiz.startTest();
    notifyPhase(firstPortScreen(PhaseUsbPort));
}

void CompleteMachineTestBiz::Impl::advancePhase()
{
    const int next = phaseIndex + 1;
    if (next <= PhaseNet1Poe) {
        phaseIndex = next;
        startCurrentPhase();
        return;
    }
    phaseIndex = PhaseFinished;
    testResult = ResultPassed;
    notifyPhase(passScreen());
}

void CompleteMachineTestBiz::Impl::failRun()
{
    // The screen first, so that nothing has changed when there is no memory for it.
    const CompleteMachinePhaseInfo screen = failScreen();
    setPhaseTimer(false);
    sendFailure(screen);
}

void CompleteMachineTestBiz::Impl::sendFailure(const CompleteMachinePhaseInfo &screen)
{
    const int before = testResult.exchange(ResultFailed);
    const auto send = [&] {
        notifyLog(QStringLiteral("Test failed"));
        notifyPhase(screen);
    };
    callOrUndo(send, [&] { testResult = before; });
}

// The report is taken by the row of the present phase, whichever test it comes from.
void CompleteMachineTestBiz::Impl::onSubStateChanged(int subState)
{
    enum class Then {
        Nothing,
        Judge,
        Advance
    };
    struct Reaction
    {
        Phase phase;
        int subState;
        bool stopTimer;
        bool log;
        Then then;
    };
    // clang-format off
    static constexpr std::array<Reaction, 7> Reactions = {{
    //   phase                  state              stop   log    then
        {PhaseScreenBrightness, StateAllStepsDone, true,  true,  Then::Judge},
        {PhaseScreenBadPixel,   StateAllStepsDone, false, false, Then::Judge},
        {PhaseScreenBadPixel,   StatePass,         false, true,  Then::Advance},
        {PhaseButtonLight,      StateAllStepsDone, true,  true,  Then::Judge},
        {PhaseTBar,             StatePass,         false, true,  Then::Nothing},
        {PhaseNetPort,          StatePass,         false, true,  Then::Advance},
        {PhaseUsbPort,          StatePass,         false, true,  Then::Advance},
    }};
    // clang-format on
    const int phase = phaseIndex;
    if (subState == StateNotPass)
        return failRun();
    for (const Reaction &reaction : Reactions) {
        if (reaction.phase != phase || reaction.subState != subState)
            continue;
        if (reaction.stopTimer)
            setPhaseTimer(false);
        if (reaction.log)
            logPhase(phase);
        if (reaction.then == Then::Judge)
            notifyPhase(judgeScreen(reaction.phase));
        else if (reaction.then == Then::Advance)
            advancePhase();
        return;
    }
}

// Runs on the thread of the keyboard service after a key event.
void CompleteMachineTestBiz::Impl::onSubStateChangedBtnFunc(int state, int)
{
    if (phaseIndex != PhaseButtonFunction)
        return;
    if (state == StateAllStepsDone || state == StatePass) {
        const CompleteMachinePhaseInfo screen = judgeScreen(PhaseButtonFunction);
        darkenButtons();
        setFlag(btnFuncRetestArmed, false);
        setFlag(btnFuncAwaitingJudge, true);
        callOrUndo([&] { notifyPhase(screen); }, [this] { setFlag(btnFuncAwaitingJudge, false); });
    } else if (state == StateNotPass) {
        darkenButtons();
        failRun();
    }
}

// While the device waits for the key that is the no-pass button itself, a press must not fail the phase.
void CompleteMachineTestBiz::Impl::onCurrentKey(unsigned key)
{
    if (phaseIndex != PhaseButtonFunction)
        return;
    CompleteMachinePhaseInfo info;
    info.noPassBtnClickable = key != NoPassKey;
    notifyPhase(info);
}

// A tick that was due when a report on another thread stopped the timer comes all the same.
void CompleteMachineTestBiz::Impl::onTimer()
{
    if (!m_timerWanted)
        return;
    const int phase = phaseIndex;
    if (phase == PhaseScreenBrightness)
        showNextLevel(screenBrightnessBiz, PhaseScreenBrightness);
    else if (phase == PhaseButtonLight)
        showNextLevel(buttonLightBiz, PhaseButtonLight);
}

void CompleteMachineTestBiz::Impl::darkenButtons()
{
    if (keyboardService)
        keyboardService->setAllButtonBrightness(0);
}

}
