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
std::optional<CompleteMachinePhaseInfo> screenInAdvance(const RunEvent &event, const Make &make)
{
    if (event.isOnOwnThread())
        return std::nullopt;
    return make();
}

}

template <class Biz>
void CompleteMachineTestBiz::Impl::startLevels(RunEvent &event, Biz &biz, Phase phase)
{
    biz.enter();
    biz.startTest();
    const CompleteMachinePhaseInfo info = phaseScreen(phase, levelSuffix(biz.state()));
    auto timerUpdate = makeTimerUpdate();
    if (!event.change([](RunState &state) { state.shouldTimerRun = true; }))
        return;
    applyTimer(std::move(timerUpdate));
    showStarted(event, info);
}

template <class Biz>
void CompleteMachineTestBiz::Impl::showNextLevel(const RunEvent &event, Biz &biz, Phase phase)
{
    biz.nextStep();
    const QString suffix = levelSuffix(biz.state());
    // There is no suffix at the last tick, because the verdict screen is already shown.
    if (!suffix.isEmpty())
        show(event, phaseScreen(phase, suffix));
}

void CompleteMachineTestBiz::Impl::startCurrentPhase(RunEvent &event)
{
    const auto phase = static_cast<Phase>(event.state().phaseIndex);
    switch (phase) {
    case PhaseScreenBrightness:
        return startLevels(event, screenBrightnessBiz, phase);
    case PhaseScreenBadPixel:
        return startScreenBadPixel(event);
    case PhaseButtonLight:
        return startLevels(event, buttonLightBiz, phase);
    case PhaseButtonFunction:
        return startButtonFunction(event);
    case PhaseTBar:
        return startTBar(event);
    case PhaseNetPort:
        return startNetPort(event);
    case PhaseUsbPort:
        return startUsbPort(event);
    case PhaseTypecCommunication:
    case PhaseTypecPower:
    case PhaseNet1Poe:
        return showStarted(event, phaseScreen(phase));
    case PhaseDcAdapter: // always skipped
        return advancePhase(event);
    case PhaseNone:
    case PhaseFinished:
        return;
    }
}

void CompleteMachineTestBiz::Impl::startScreenBadPixel(RunEvent &event)
{
    screenBadPixelBiz.enter();
    screenBadPixelBiz.startTest();
    showStarted(event, phaseScreen(PhaseScreenBadPixel));
}

// Shows the screen before the test starts, unlike the other phases: the test announces its first key while it starts.
void CompleteMachineTestBiz::Impl::startButtonFunction(RunEvent &event)
{
    if (!event.change([](RunState &state) { state.btnFuncRetestArmed = false; }))
        return;
    showStarted(event, buttonFunctionScreen());
    buttonFunctionBiz.enter();
    buttonFunctionBiz.startTest();
}

void CompleteMachineTestBiz::Impl::startTBar(RunEvent &event)
{
    tbarTestBiz.enter();
    tbarTestBiz.startTest();
    CompleteMachinePhaseInfo info;
    fillPhase4TBarInfo(info, translated(QStringLiteral("FCAgeModeStartTest")));
    showStarted(event, info);
}

// The right button starts the test itself.
void CompleteMachineTestBiz::Impl::startNetPort(RunEvent &event)
{
    netPortTestBiz.enter();
    showStarted(event, firstPortScreen(PhaseNetPort));
}

void CompleteMachineTestBiz::Impl::startUsbPort(RunEvent &event)
{
    usbPortTestBiz.enter();
    usbPortTestBiz.startTest();
    showStarted(event, firstPortScreen(PhaseUsbPort));
}

// Shows the first screen of a phase. From now on the buttons respond.
void CompleteMachineTestBiz::Impl::showStarted(RunEvent &event, const CompleteMachinePhaseInfo &info)
{
    if (event.change([](RunState &state) { state.isStartingOnOtherThread = false; }))
        notifyPhase(info);
}

// An event ends only the phase in which it began. It does nothing if another thread has already ended this phase.
void CompleteMachineTestBiz::Impl::advancePhase(RunEvent &event)
{
    const RunState before = event.state();
    const int next = before.phaseIndex + 1;
    if (next <= PhaseNet1Poe) {
        const bool advanced = event.change([next, &event](RunState &state) {
            state.phaseIndex = next;
            state.isStartingOnOtherThread = !event.isOnOwnThread();
        });
        if (!advanced)
            return;
        callOrRollBack([&] { startCurrentPhase(event); }, [&] { rollBackPhase(event, before, next); });
        if (!event.isOnOwnThread())
            endStart(event, next);
        return;
    }
    const bool finished = event.change([](RunState &state) {
        state.phaseIndex = PhaseFinished;
        state.testResult = ResultPassed;
    });
    if (finished)
        notifyPhase(passScreen());
}

// If there is no memory to start the next phase, a report on another thread is dropped and the run doesn't change.
void CompleteMachineTestBiz::Impl::rollBackPhase(RunEvent &event, const RunState &before, int phase)
{
    if (!event.isOnOwnThread() && !event.change([&before](RunState &state) { state = before; }))
        endStart(event, phase);
}

// A phase that was left or failed while it was starting shows no screen, but its buttons respond from now on.
void CompleteMachineTestBiz::Impl::endStart(RunEvent &event, int phase)
{
    event.changeSameRun([phase](RunState &state) {
        if (state.phaseIndex == phase)
            state.isStartingOnOtherThread = false;
    });
}

// A failure concerns the whole run, even if another phase has begun in the meantime, but not a later run. If there is
// no memory for it, the run doesn't change. Therefore the timer is stopped last; its ticks are ignored until then.
void CompleteMachineTestBiz::Impl::failRun(RunEvent &event)
{
    const auto screen = screenInAdvance(event, failScreen);
    auto timerUpdate = makeTimerUpdate();
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
    if (!event.changeSameRun(fail))
        return;
    callOrRollBack([&] { sendFailure(event, screen); }, [&] { event.changeSameRun(rollBack); });
    applyTimer(std::move(timerUpdate));
}

bool CompleteMachineTestBiz::Impl::stopTimer(RunEvent &event)
{
    auto timerUpdate = makeTimerUpdate();
    const bool stopped = event.change([](RunState &state) { state.shouldTimerRun = false; });
    if (stopped)
        applyTimer(std::move(timerUpdate));
    return stopped;
}

// The run has already failed. Later events of this run don't change that, so the screen is shown even if another thread
// has gone on to the next phase.
void CompleteMachineTestBiz::Impl::sendFailure(const RunEvent &event,
                                               const std::optional<CompleteMachinePhaseInfo> &screen) const
{
    notifyLog(QStringLiteral("Test failed"));
    if (event.isSameRun())
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
    RunEvent event(m_run);
    if (event.isNested() && !event.isCurrent())
        return;
    const int phase = event.state().phaseIndex;
    if (subState == StateNotPass)
        return failRun(event);
    for (const Reaction &reaction : Reactions) {
        if (reaction.phase != phase || reaction.subState != subState)
            continue;
        if (reaction.stopTimer && !stopTimer(event))
            return;
        if (reaction.log)
            logPhase(phase);
        if (reaction.then == Then::ShowVerdict)
            show(event, judgeScreen(reaction.phase));
        else if (reaction.then == Then::Advance)
            advancePhase(event);
        return;
    }
}

// Runs on the thread of the keyboard service after a key event.
void CompleteMachineTestBiz::Impl::onSubStateChangedBtnFunc(int state, int)
{
    RunEvent event(m_run);
    if (event.state().phaseIndex != PhaseButtonFunction)
        return;
    if (state == StateAllStepsDone || state == StatePass) {
        const auto makeScreen = [] { return judgeScreen(PhaseButtonFunction); };
        const auto screen = screenInAdvance(event, makeScreen);
        turnOffKeyLeds();
        const auto awaitJudge = [](RunState &changed) {
            changed.btnFuncRetestArmed = false;
            changed.btnFuncAwaitingJudge = true;
        };
        if (!event.change(awaitJudge))
            return;
        callOrRollBack([&] { notifyPhase(screen ? *screen : makeScreen()); },
                       [&] { event.change([](RunState &changed) { changed.btnFuncAwaitingJudge = false; }); });
    } else if (state == StateNotPass) {
        turnOffKeyLeds();
        failRun(event);
    }
}

// A tick may still arrive after a report on another thread has stopped the timer.
void CompleteMachineTestBiz::Impl::onTimer()
{
    RunEvent event(m_run);
    if (!event.state().shouldTimerRun)
        return;
    const int phase = event.state().phaseIndex;
    if (phase == PhaseScreenBrightness)
        showNextLevel(event, screenBrightnessBiz, PhaseScreenBrightness);
    else if (phase == PhaseButtonLight)
        showNextLevel(event, buttonLightBiz, PhaseButtonLight);
}

void CompleteMachineTestBiz::Impl::turnOffKeyLeds()
{
    if (keyboardService)
        keyboardService->setAllButtonBrightness(0);
}

}
