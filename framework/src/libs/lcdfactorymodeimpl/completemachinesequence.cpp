#include "completemachinescreens.h"
#include "completemachinetestbiz_p.h"
#include "levelsuffix.h"
#include "rollback.h"
#include "statecodes.h"
#include "translation.h"

#include <array>
#include <optional>
#include <utility>

#include <QtCore/QEvent>

// How a phase of the complete machine test starts and ends, and which phase follows.

namespace LCD::FactoryModeImpl {

namespace {

// On another thread, creates a screen before the run changes, so that nothing has changed if there is no memory for the
// screen. Returns nothing on the run's own thread, where the screen is created when it is shown.
template <class Make>
std::optional<CompleteMachinePhaseInfo> screenInAdvance(const RunAction &action, const Make &make)
{
    if (action.isOnOwnThread())
        return std::nullopt;
    return make();
}

}

template <class Biz>
void CompleteMachineTestBiz::Impl::startLevels(RunAction &action, Biz &biz, Phase phase)
{
    biz.enter();
    biz.startTest();
    const CompleteMachinePhaseInfo info = phaseScreen(phase, levelSuffix(biz.state()));
    auto event = makeTimerUpdate();
    if (!action.change([](RunState &state) { state.shouldTimerRun = true; }))
        return;
    applyTimer(std::move(event));
    showStarted(action, info);
}

template <class Biz>
void CompleteMachineTestBiz::Impl::showNextLevel(const RunAction &action, Biz &biz, Phase phase)
{
    biz.nextStep();
    const QString suffix = levelSuffix(biz.state());
    // There is no suffix at the last tick, because the verdict screen is already shown.
    if (!suffix.isEmpty())
        show(action, phaseScreen(phase, suffix));
}

void CompleteMachineTestBiz::Impl::startCurrentPhase(RunAction &action)
{
    const auto phase = static_cast<Phase>(action.state().phaseIndex);
    switch (phase) {
    case PhaseScreenBrightness:
        return startLevels(action, screenBrightnessBiz, phase);
    case PhaseScreenBadPixel:
        return startScreenBadPixel(action);
    case PhaseButtonLight:
        return startLevels(action, buttonLightBiz, phase);
    case PhaseButtonFunction:
        return startButtonFunction(action);
    case PhaseTBar:
        return startTBar(action);
    case PhaseNetPort:
        return startNetPort(action);
    case PhaseUsbPort:
        return startUsbPort(action);
    case PhaseTypecCommunication:
    case PhaseTypecPower:
    case PhaseNet1Poe:
        return showStarted(action, phaseScreen(phase));
    case PhaseDcAdapter: // always skipped
        return advancePhase(action);
    case PhaseNone:
    case PhaseFinished:
        return;
    }
}

void CompleteMachineTestBiz::Impl::startScreenBadPixel(RunAction &action)
{
    screenBadPixelBiz.enter();
    screenBadPixelBiz.startTest();
    showStarted(action, phaseScreen(PhaseScreenBadPixel));
}

// Shows the screen before the test starts, unlike the other phases: the test announces its first key while it starts.
void CompleteMachineTestBiz::Impl::startButtonFunction(RunAction &action)
{
    if (!action.change([](RunState &state) { state.btnFuncRetestArmed = false; }))
        return;
    showStarted(action, buttonFunctionScreen());
    buttonFunctionBiz.enter();
    buttonFunctionBiz.startTest();
}

void CompleteMachineTestBiz::Impl::startTBar(RunAction &action)
{
    tbarTestBiz.enter();
    tbarTestBiz.startTest();
    CompleteMachinePhaseInfo info;
    fillPhase4TBarInfo(info, translated(QLatin1String("FCAgeModeStartTest")));
    showStarted(action, info);
}

// The right button starts the test itself.
void CompleteMachineTestBiz::Impl::startNetPort(RunAction &action)
{
    netPortTestBiz.enter();
    showStarted(action, firstPortScreen(PhaseNetPort));
}

void CompleteMachineTestBiz::Impl::startUsbPort(RunAction &action)
{
    usbPortTestBiz.enter();
    usbPortTestBiz.startTest();
    showStarted(action, firstPortScreen(PhaseUsbPort));
}

// Shows the first screen of a phase. From now on the buttons respond.
void CompleteMachineTestBiz::Impl::showStarted(RunAction &action, const CompleteMachinePhaseInfo &info)
{
    if (action.change([](RunState &state) { state.isStartingOnOtherThread = false; }))
        notifyPhase(info);
}

// An action ends only the phase in which it began. It does nothing if another thread has already ended this phase.
void CompleteMachineTestBiz::Impl::advancePhase(RunAction &action)
{
    const RunState before = action.state();
    const int next = before.phaseIndex + 1;
    if (next <= PhaseNet1Poe) {
        const bool advanced = action.change([next, &action](RunState &state) {
            state.phaseIndex = next;
            state.isStartingOnOtherThread = !action.isOnOwnThread();
        });
        if (!advanced)
            return;
        callOrRollBack([&] { startCurrentPhase(action); }, [&] { rollBackPhase(action, before, next); });
        if (!action.isOnOwnThread())
            endStart(action, next);
        return;
    }
    const bool finished = action.change([](RunState &state) {
        state.phaseIndex = PhaseFinished;
        state.testResult = ResultPassed;
    });
    if (finished)
        notifyPhase(passScreen());
}

// If there is no memory to start the next phase, a report on another thread is dropped and the run doesn't change.
void CompleteMachineTestBiz::Impl::rollBackPhase(RunAction &action, const RunState &before, int phase)
{
    if (!action.isOnOwnThread() && !action.change([&before](RunState &state) { state = before; }))
        endStart(action, phase);
}

// A phase that was left or failed while it was starting shows no screen, but its buttons respond from now on.
void CompleteMachineTestBiz::Impl::endStart(RunAction &action, int phase)
{
    action.changeSameRun([phase](RunState &state) {
        if (state.phaseIndex == phase)
            state.isStartingOnOtherThread = false;
    });
}

// A failure concerns the whole run, even if another phase has begun in the meantime, but not a later run. If there is
// no memory for it, the run doesn't change. Therefore the timer is stopped last; its ticks are ignored until then.
void CompleteMachineTestBiz::Impl::failRun(RunAction &action)
{
    const auto screen = screenInAdvance(action, failScreen);
    auto event = makeTimerUpdate();
    RunState before;
    RunState failed;
    const auto fail = [&before, &failed](RunState &state) {
        before = state;
        state.shouldTimerRun = false;
        setFailed(state);
        failed = state;
    };
    const auto rollBack = [&before, &failed](RunState &state) {
        if (state == failed)
            state = before;
    };
    if (!action.changeSameRun(fail))
        return;
    callOrRollBack([&] { sendFailure(action, screen); }, [&] { action.changeSameRun(rollBack); });
    applyTimer(std::move(event));
}

bool CompleteMachineTestBiz::Impl::stopTimer(RunAction &action)
{
    auto event = makeTimerUpdate();
    const bool stopped = action.change([](RunState &state) { state.shouldTimerRun = false; });
    if (stopped)
        applyTimer(std::move(event));
    return stopped;
}

// The run has already failed. Later events of this run don't change that, so the screen is shown even if another thread
// has gone on to the next phase.
void CompleteMachineTestBiz::Impl::sendFailure(const RunAction &action,
                                               const std::optional<CompleteMachinePhaseInfo> &screen) const
{
    notifyLog(QStringLiteral("Test failed"));
    if (action.isSameRun())
        notifyPhase(screen ? *screen : failScreen());
}

// Handles a new state of a single test by the row of the current phase, whichever test has the state. If a button press
// has caused the new state and another thread has changed the run since the press, the state is too late and is
// ignored.
void CompleteMachineTestBiz::Impl::onSubStateChanged(int subState)
{
    enum class Then {
        Nothing,
        ShowVerdict,
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
        {PhaseScreenBrightness, StateAllStepsDone, true,  true,  Then::ShowVerdict},
        {PhaseScreenBadPixel,   StateAllStepsDone, false, false, Then::ShowVerdict},
        {PhaseScreenBadPixel,   StatePass,         false, true,  Then::Advance},
        {PhaseButtonLight,      StateAllStepsDone, true,  true,  Then::ShowVerdict},
        {PhaseTBar,             StatePass,         false, true,  Then::Nothing},
        {PhaseNetPort,          StatePass,         false, true,  Then::Advance},
        {PhaseUsbPort,          StatePass,         false, true,  Then::Advance},
    }};
    // clang-format on
    RunAction action(m_run);
    if (action.isNested() && !action.isCurrent())
        return;
    const int phase = action.state().phaseIndex;
    if (subState == StateNotPass)
        return failRun(action);
    for (const Reaction &reaction : Reactions) {
        if (reaction.phase != phase || reaction.subState != subState)
            continue;
        if (reaction.stopTimer && !stopTimer(action))
            return;
        if (reaction.log)
            logPhase(phase);
        if (reaction.then == Then::ShowVerdict)
            show(action, judgeScreen(reaction.phase));
        else if (reaction.then == Then::Advance)
            advancePhase(action);
        return;
    }
}

// Runs on the thread of the keyboard service after a key event.
void CompleteMachineTestBiz::Impl::onSubStateChangedBtnFunc(int state, int)
{
    RunAction action(m_run);
    if (action.state().phaseIndex != PhaseButtonFunction)
        return;
    if (state == StateAllStepsDone || state == StatePass) {
        const auto makeScreen = [] { return judgeScreen(PhaseButtonFunction); };
        const auto screen = screenInAdvance(action, makeScreen);
        turnOffKeyLeds();
        const auto awaitJudge = [](RunState &changed) {
            changed.btnFuncRetestArmed = false;
            changed.btnFuncAwaitingJudge = true;
        };
        if (!action.change(awaitJudge))
            return;
        callOrRollBack([&] { notifyPhase(screen ? *screen : makeScreen()); },
                       [&] { action.change([](RunState &changed) { changed.btnFuncAwaitingJudge = false; }); });
    } else if (state == StateNotPass) {
        turnOffKeyLeds();
        failRun(action);
    }
}

// A tick may still arrive after a report on another thread has stopped the timer.
void CompleteMachineTestBiz::Impl::onTimer()
{
    RunAction action(m_run);
    if (!action.state().shouldTimerRun)
        return;
    const int phase = action.state().phaseIndex;
    if (phase == PhaseScreenBrightness)
        showNextLevel(action, screenBrightnessBiz, PhaseScreenBrightness);
    else if (phase == PhaseButtonLight)
        showNextLevel(action, buttonLightBiz, PhaseButtonLight);
}

void CompleteMachineTestBiz::Impl::turnOffKeyLeds()
{
    if (keyboardService)
        keyboardService->setAllButtonBrightness(0);
}

}
