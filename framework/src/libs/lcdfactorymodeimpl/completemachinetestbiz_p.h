#pragma once

#include "buttonfunctionbiz.h"
#include "buttonlightbiz.h"
#include "callbackguard.h"
#include "completemachinephasetable.h"
#include "completemachinetestbiz.h"
#include "listeners.h"
#include "machinerun.h"
#include "netporttestbiz.h"
#include "screenbadpixelbiz.h"
#include "screenbrightnessbiz.h"
#include "tbartestbiz.h"
#include "usbporttestbiz.h"

#include "lcd/factorymode/ikeyboardevent.h"

#include <memory>
#include <optional>
#include <vector>

#include <QtCore/QObject>
#include <QtCore/QTimer>

namespace LCD::FactoryModeImpl {

// Button presses and timer ticks are handled on the thread that created the object. Notifications of the single tests
// are handled on the thread on which they arrive; for links and keys, this is the thread of a host service. Each of
// these events is a RunEvent.
//
// Threads: `m_run`, the single tests and the listeners may be used on any thread, the timer only on the object's own
// thread. Everything else is set by the constructor and doesn't change.
class CompleteMachineTestBiz::Impl : public QObject
{
    Q_OBJECT

public:
    explicit Impl(CompleteMachineTestBiz *owner);

    void start();
    void onLeftBtnClicked();
    void onRightBtnClicked();

public Q_SLOTS:
    void onTimer();

protected:
    void customEvent(QEvent *event) override;

private:
    void registerCallbacks();
    void registerKeyAndTBarCallbacks();
    void registerLinkCallbacks();

    void startCurrentPhase(RunEvent &event);
    template <class Biz>
    void startLevels(RunEvent &event, Biz &biz, Phase phase);
    void startScreenBadPixel(RunEvent &event);
    void startButtonFunction(RunEvent &event);
    void startTBar(RunEvent &event);
    void startNetPort(RunEvent &event);
    void startUsbPort(RunEvent &event);
    void showStarted(RunEvent &event, const CompleteMachinePhaseInfo &info);
    void show(const RunEvent &event, const CompleteMachinePhaseInfo &info) const;
    void advancePhase(RunEvent &event);
    void failRun(RunEvent &event);
    bool stopTimer(RunEvent &event);
    static void endStart(RunEvent &event, int phase);
    static void rollBackPhase(RunEvent &event, const RunState &before, int phase);
    void sendFailure(const RunEvent &event, const std::optional<CompleteMachinePhaseInfo> &screen = {}) const;
    std::unique_ptr<QEvent> makeTimerUpdate() const;
    void applyTimer(std::unique_ptr<QEvent> timerUpdate);
    void syncTimer();

    void onSubStateChanged(int subState);
    void onSubStateChangedBtnFunc(int state, int failCount);
    void onTBarStep(bool lastSteps);
    void onNetLinkStatus(const std::vector<bool> &links, bool linkValid);
    void onUsbLinkStatus(const std::vector<bool> &links) const;
    template <class Biz>
    void showNextLevel(const RunEvent &event, Biz &biz, Phase phase);
    void fillPhase4TBarInfo(CompleteMachinePhaseInfo &info, const QString &rightBtnText) const;
    void turnOffKeyLeds();

    void onCurrentKey(unsigned halKey);
    void failSubTest(RunEvent &event, Phase phase);
    void failButtonFunction(RunEvent &event);
    template <class Biz>
    void onRightBtnInLevelTest(RunEvent &event, Biz &biz);
    void onRightBtnInScreenBadPixel();
    void onRightBtnInButtonFunction(RunEvent &event);
    void onRightBtnInTBar(RunEvent &event);
    void onRightBtnInNetPort(RunEvent &event);

    void notifyPhase(const CompleteMachinePhaseInfo &info) const;
    void notifyLog(const QString &text) const;
    void notifyStepIcon(int step) const;
    void logPhase(int phase) const;

public:
    CompleteMachineTestBiz *ownerBiz;
    MachineRun m_run;
    QTimer *phaseTimer = nullptr;
    ScreenBrightnessBiz screenBrightnessBiz;
    ScreenBadPixelBiz screenBadPixelBiz;
    ButtonLightBiz buttonLightBiz;
    ButtonFunctionBiz buttonFunctionBiz;
    TbarTestBiz tbarTestBiz;
    NetPortTestBiz netPortTestBiz;
    UsbPortTestBiz usbPortTestBiz;
    Listeners<const CompleteMachinePhaseInfo &> phaseCallbacks;
    Listeners<const QString &> logCallbacks;
    Listeners<int> stepIconCallbacks;
    FactoryMode::IKeyboardEvent *keyboardService = nullptr;

private:
    CallbackGuard m_callbackGuard;
};

}
