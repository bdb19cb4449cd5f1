#pragma once

#include "buttonfunctionbiz.h"
#include "buttonlightbiz.h"
#include "completemachinetestbiz.h"
#include "lifeline.h"
#include "listeners.h"
#include "netporttestbiz.h"
#include "phasetable.h"
#include "screenbadpixelbiz.h"
#include "screenbrightnessbiz.h"
#include "tbartestbiz.h"
#include "usbporttestbiz.h"

#include "lcd/factorymode/ikeyboardevent.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <vector>

#include <QtCore/QObject>
#include <QtCore/QTimer>

namespace LCD::FactoryModeImpl {

enum CompleteMachineResult : int {
    ResultNone = 0,
    ResultPassed = 1,
    ResultFailed = 2,
};

// Lives on the thread that made it. Buttons and timer act there; reports of the single tests act on the thread that
// they come on, which for links and keys is that of a host service.
class CompleteMachineTestBiz::Impl : public QObject
{
    Q_OBJECT

public:
    explicit Impl(CompleteMachineTestBiz *owner);

    void start();
    bool isRunning() const;
    void onLeftBtnClicked();
    void onRightBtnClicked();

public Q_SLOTS:
    void onTimer();

protected:
    void customEvent(QEvent *event) override;

private:
    void registerCallbacks();
    void registerWalkCallbacks();
    void registerLinkCallbacks();

    void startCurrentPhase();
    template <class Biz>
    void startLevels(Biz &biz, Phase phase);
    void startScreenBadPixel();
    void startButtonFunction();
    void startTBar();
    void startNetPort();
    void startUsbPort();
    void advancePhase();
    void failRun();
    void sendFailure(const CompleteMachinePhaseInfo &screen);
    void setPhaseTimer(bool running);

    void onSubStateChanged(int subState);
    void onSubStateChangedBtnFunc(int state, int failCount);
    void onCurrentKey(unsigned key);
    void onTBarStep(bool lastSteps);
    void onNetLinkStatus(const std::vector<bool> &links, bool linkValid);
    void onUsbLinkStatus(const std::vector<bool> &links) const;
    template <class Biz>
    void showNextLevel(Biz &biz, Phase phase);
    void fillPhase4TBarInfo(CompleteMachinePhaseInfo &info, const QString &rightBtnText) const;
    void darkenButtons();

    void failSubTest(Phase phase);
    void failButtonFunction();
    template <class Biz>
    void judgeLevels(Biz &biz);
    void judgeScreenBadPixel();
    void judgeButtonFunction();
    void judgeTBar();
    void judgeNetPort();
    bool takeFlag(bool &flag);
    void setFlag(bool &flag, bool value);

    void notifyPhase(const CompleteMachinePhaseInfo &info) const;
    void notifyLog(const QString &text) const;
    void notifyStepIcon(int step) const;
    void logPhase(int phase) const;

public:
    CompleteMachineTestBiz *ownerBiz;
    std::atomic<std::int32_t> phaseIndex{PhaseNone};
    std::atomic<std::int32_t> testResult{ResultNone};
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
    bool btnFuncRetestArmed = false;
    bool btnFuncAwaitingJudge = false;
    FactoryMode::IKeyboardEvent *keyboardService = nullptr;

private:
    /// Around each access to the two flags, and never held across a call.
    std::mutex m_flagMutex;
    /// Whether the timer shall run, as the last to ask for it said. A tick counts only while it shall.
    std::atomic<bool> m_timerWanted{false};
    Lifeline m_lifeline;
};

}
