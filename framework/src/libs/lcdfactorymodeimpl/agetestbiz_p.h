#pragma once

#include "agetestbiz.h"
#include "buttonlightbiz.h"
#include "callbackguard.h"
#include "listeners.h"
#include "netporttestbiz.h"
#include "screenbadpixelbiz.h"
#include "screenbrightnessbiz.h"
#include "usbporttestbiz.h"

#include <array>
#include <map>
#include <mutex>
#include <set>
#include <vector>

#include <QtCore/QObject>
#include <QtCore/QTimer>

namespace LCD::FactoryModeImpl {

/// The steps of a round. These numbers are not the test types of the device.
enum AgeTestStep : int {
    ScreenBrightnessStep = 0,
    ScreenBadPixelStep = 1,
    ButtonLightStep = 2,
    NetPortStep = 3,
    UsbPortStep = 4,
};

// Link results arrive on other threads. They record the failure there; the signal then continues the sequence on the
// thread of the object.
//
// Threads: `failedSteps` and the listeners may be used on any thread, everything else only on the thread that created
// the object.
class AgeTestBiz::Impl : public QObject
{
    Q_OBJECT

public:
    explicit Impl(AgeTestBiz *owner);

    void startTestAge();
    void stopTestAge();
    void updateUIText(bool recount);

Q_SIGNALS:
    void signalNextStep();

public Q_SLOTS:
    void onBadPixelTimer();
    void onScreenLightTimer();
    void onBtnLightTimer();
    void slotNextStep();

private:
    using StepStarter = void (Impl::*)();

    struct Step
    {
        AgeTestStep code;
        StepStarter start;
        const char *titleKey;
    };
    static const std::array<Step, 5> Steps;

    void registerCallback();
    void registerStateCallbacks();
    void registerLinkCallbacks();
    QTimer *makeTimer(void (Impl::*slot)());

    void startTestScreenBrightness();
    void startTestScreenBadPixel();
    void startTestButtonLight();
    void startTestNetPort();
    void startTestUsbPort();
    template <class Biz>
    void startTest(Biz &biz);

    void startCurrentStep();
    void advanceToNextStepAndRun();
    StepStarter getStateChangedCallbackForCurrentStep() const;

    void handleStateChanged(int state);
    void onScreenBrightStateChanged(int state);
    void onScreenBadPixelStateChanged(int state);
    void onButtonLightStateChanged(int state);
    void onNetPortStateChanged(const std::vector<bool> &ports);
    void onUsbPortStateChanged(const std::vector<bool> &ports);
    void onPortStateChanged(AgeTestStep step, const std::vector<bool> &ports);
    std::set<int> recordResult(AgeTestStep step, bool passed);
    void rollBackResult(AgeTestStep step, std::set<int> before);

    void stopTimers();
    void stopBadPixelTimer();
    void stopScreenLightTimer();
    void stopBtnLightTimer();

    void clearFailures();
    void writeText(const QString &text, const QColor &color) const;
    QString getTextByStep() const;
    QString failureText() const;

public:
    AgeTestBiz *ownerBiz;
    ScreenBrightnessBiz screenBrightnessBiz;
    ScreenBadPixelBiz screenBadPixelBiz;
    ButtonLightBiz buttonLightBiz;
    NetPortTestBiz netPortTestBiz;
    UsbPortTestBiz usbPortTestBiz;
    std::map<int, StepStarter> stepStarters;
    Listener<const QString &, const QColor &> ageTextInfoCallback;
    Listener<> buttonLightFinishedCallback;
    std::vector<int> testSteps;
    std::set<int> failedSteps;
    int currentStepIndex = 0;
    QTimer *badPixelTimer = nullptr;
    QTimer *screenLightTimer = nullptr;
    QTimer *btnLightTimer = nullptr;

private:
    /// Protects `failedSteps`. Never held while a function outside this class is called.
    mutable std::mutex m_failedStepsMutex;
    CallbackGuard m_callbackGuard;
};

}
