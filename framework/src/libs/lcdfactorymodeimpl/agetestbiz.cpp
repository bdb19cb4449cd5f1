#include "agetestbiz.h"

#include "agetestbiz_p.h"
#include "driverhelpers.h"
#include "rollback.h"
#include "statecodes.h"

#include <algorithm>
#include <string>
#include <utility>

namespace LCD::FactoryModeImpl {

namespace {

const std::string AgeTestBizRequester = "AgeTestBizRequester";

constexpr int BrightnessInterval = 2000; // ms
constexpr int BadPixelInterval = 3000;   // ms

}

const std::array<AgeTestBiz::Impl::Step, 5> AgeTestBiz::Impl::Steps = {{
    {ScreenBrightnessStep, &Impl::startTestScreenBrightness, "FCScreenLight"},
    {ScreenBadPixelStep, &Impl::startTestScreenBadPixel, "FCScreenBadPixel"},
    {ButtonLightStep, &Impl::startTestButtonLight, "FCBtnLight"},
    {NetPortStep, &Impl::startTestNetPort, "FCNet"},
    {UsbPortStep, &Impl::startTestUsbPort, "FCUSB"},
}};

AgeTestBiz::Impl::Impl(AgeTestBiz *owner) : ownerBiz(owner)
{
    for (const Step &step : Steps)
        testSteps.push_back(step.code);
    registerCallback();
}

void AgeTestBiz::Impl::registerCallback()
{
    badPixelTimer = makeTimer(&Impl::onBadPixelTimer);
    btnLightTimer = makeTimer(&Impl::onBtnLightTimer);
    screenLightTimer = makeTimer(&Impl::onScreenLightTimer);
    connect(this, &Impl::signalNextStep, this, &Impl::slotNextStep);
    for (const Step &step : Steps)
        stepStarters[step.code] = step.start;
    registerStateCallbacks();
    registerLinkCallbacks();
}

QTimer *AgeTestBiz::Impl::makeTimer(void (Impl::*slot)())
{
    auto *timer = new QTimer(this);
    timer->setSingleShot(false);
    connect(timer, &QTimer::timeout, this, slot);
    return timer;
}

void AgeTestBiz::Impl::registerStateCallbacks()
{
    const auto listenerFor = [this](void (Impl::*handler)(int)) {
        return m_callbackGuard.wrap([this, handler](int state) { (this->*handler)(state); });
    };
    screenBrightnessBiz.registerStateCallback(AgeTestBizRequester, listenerFor(&Impl::onScreenBrightStateChanged));
    screenBadPixelBiz.registerStateCallback(AgeTestBizRequester, listenerFor(&Impl::onScreenBadPixelStateChanged));
    buttonLightBiz.registerStateCallback(AgeTestBizRequester, listenerFor(&Impl::onButtonLightStateChanged));
}

void AgeTestBiz::Impl::registerLinkCallbacks()
{
    netPortTestBiz.registerLinkStatusCallback(
        AgeTestBizRequester,
        m_callbackGuard.wrap([this](const std::vector<bool> &ports, bool) { onNetPortStateChanged(ports); }));
    usbPortTestBiz.registerLinkStatusCallback(
        AgeTestBizRequester,
        m_callbackGuard.wrap([this](const std::vector<bool> &ports) { onUsbPortStateChanged(ports); }));
}

void AgeTestBiz::Impl::startTestAge()
{
    currentStepIndex = 0;
    clearFailures();
    stopTimers();
    setCurrentRequester(AgeTestBizRequester, screenBrightnessBiz, screenBadPixelBiz, buttonLightBiz, netPortTestBiz,
                        usbPortTestBiz);
    setReportsReceived(false, netPortTestBiz, usbPortTestBiz);
    startCurrentStep();
}

// The text is written first, because it shows the state of the run. The bad pixel test is reset only if it is running,
// the two level tests are always reset, and the port tests never are.
void AgeTestBiz::Impl::stopTestAge()
{
    updateUIText(false);
    currentStepIndex = 0;
    clearFailures();
    if (badPixelTimer->isActive()) {
        badPixelTimer->stop();
        screenBadPixelBiz.reTest();
    }
    stopScreenLightTimer();
    screenBrightnessBiz.reTest();
    screenBrightnessBiz.restoreBrightnessToNormal();
    stopBtnLightTimer();
    buttonLightBiz.reTest();
}

void AgeTestBiz::Impl::startTestScreenBrightness()
{
    startTest(screenBrightnessBiz);
    screenLightTimer->start(BrightnessInterval);
}

void AgeTestBiz::Impl::startTestScreenBadPixel()
{
    startTest(screenBadPixelBiz);
    badPixelTimer->start(BadPixelInterval);
}

void AgeTestBiz::Impl::startTestButtonLight()
{
    startTest(buttonLightBiz);
    btnLightTimer->start(BrightnessInterval);
}

void AgeTestBiz::Impl::startTestNetPort()
{
    startTest(netPortTestBiz);
}

void AgeTestBiz::Impl::startTestUsbPort()
{
    startTest(usbPortTestBiz);
}

template <class Biz>
void AgeTestBiz::Impl::startTest(Biz &biz)
{
    updateUIText(false);
    biz.enter();
    biz.startTest();
}

void AgeTestBiz::Impl::startCurrentStep()
{
    if (const StepStarter starter = getStateChangedCallbackForCurrentStep())
        (this->*starter)();
}

void AgeTestBiz::Impl::advanceToNextStepAndRun()
{
    const int next = currentStepIndex + 1;
    currentStepIndex = next < static_cast<int>(testSteps.size()) ? next : 0;
    startCurrentStep();
}

AgeTestBiz::Impl::StepStarter AgeTestBiz::Impl::getStateChangedCallbackForCurrentStep() const
{
    if (currentStepIndex < 0 || currentStepIndex >= static_cast<int>(testSteps.size()))
        return nullptr;
    const auto starter = stepStarters.find(testSteps[static_cast<std::size_t>(currentStepIndex)]);
    return starter == stepStarters.end() ? nullptr : starter->second;
}

void AgeTestBiz::Impl::onScreenLightTimer()
{
    screenBrightnessBiz.nextStep();
    updateUIText(false);
}

void AgeTestBiz::Impl::onBtnLightTimer()
{
    buttonLightBiz.nextStep();
    updateUIText(false);
}

void AgeTestBiz::Impl::onBadPixelTimer()
{
    screenBadPixelBiz.nextStep();
}

void AgeTestBiz::Impl::slotNextStep()
{
    stopTimers();
    advanceToNextStepAndRun();
}

void AgeTestBiz::Impl::handleStateChanged(int state)
{
    if (state == StateAllStepsDone)
        Q_EMIT signalNextStep();
}

void AgeTestBiz::Impl::onScreenBrightStateChanged(int state)
{
    handleStateChanged(state);
}

void AgeTestBiz::Impl::onScreenBadPixelStateChanged(int state)
{
    handleStateChanged(state);
}

void AgeTestBiz::Impl::onButtonLightStateChanged(int state)
{
    const auto finished = currentListener(buttonLightFinishedCallback);
    if (state == StateAllStepsDone && finished)
        finished();
    handleStateChanged(state);
}

void AgeTestBiz::Impl::onNetPortStateChanged(const std::vector<bool> &ports)
{
    onPortStateChanged(NetPortStep, ports);
}

void AgeTestBiz::Impl::onUsbPortStateChanged(const std::vector<bool> &ports)
{
    onPortStateChanged(UsbPortStep, ports);
}

// Runs on the thread of the port service. Ends the current step, whichever it is, even if the test has been stopped.
void AgeTestBiz::Impl::onPortStateChanged(AgeTestStep step, const std::vector<bool> &ports)
{
    const bool passed = std::all_of(ports.begin(), ports.end(), [](bool linked) { return linked; });
    std::set<int> before = recordResult(step, passed);
    callOrRollBack([this] { Q_EMIT signalNextStep(); }, [&] { rollBackResult(step, std::move(before)); });
}

/// Returns the failures that were recorded before.
std::set<int> AgeTestBiz::Impl::recordResult(AgeTestStep step, bool passed)
{
    const std::lock_guard locker(m_failedStepsMutex);
    std::set<int> before = failedSteps;
    if (passed)
        failedSteps.erase(step);
    else
        failedSteps.insert(step);
    return before;
}

// Restores only the entry of @p step, because the other entries may have changed in the meantime.
void AgeTestBiz::Impl::rollBackResult(AgeTestStep step, std::set<int> before)
{
    const std::lock_guard locker(m_failedStepsMutex);
    failedSteps.erase(step);
    failedSteps.insert(before.extract(step));
}

void AgeTestBiz::Impl::stopTimers()
{
    stopBadPixelTimer();
    stopScreenLightTimer();
    stopBtnLightTimer();
}

void AgeTestBiz::Impl::stopBadPixelTimer()
{
    badPixelTimer->stop();
}

void AgeTestBiz::Impl::stopScreenLightTimer()
{
    screenLightTimer->stop();
}

void AgeTestBiz::Impl::stopBtnLightTimer()
{
    btnLightTimer->stop();
}

void AgeTestBiz::Impl::clearFailures()
{
    const std::lock_guard locker(m_failedStepsMutex);
    failedSteps.clear();
}

AgeTestBiz::AgeTestBiz() : d(new Impl(this))
{
}

AgeTestBiz::~AgeTestBiz()
{
    delete d;
}

void AgeTestBiz::registerSetAgeTextInfoCallBack(const std::function<void(const QString &, const QColor &)> &callback)
{
    setListener(d->ageTextInfoCallback, callback);
}

void AgeTestBiz::registerOnButtonLightFinishedCallback(const std::function<void()> &callback)
{
    setListener(d->buttonLightFinishedCallback, callback);
}

void AgeTestBiz::start()
{
    d->startTestAge();
}

void AgeTestBiz::stop()
{
    d->stopTestAge();
}

void AgeTestBiz::recount()
{
    d->updateUIText(true);
}

}
