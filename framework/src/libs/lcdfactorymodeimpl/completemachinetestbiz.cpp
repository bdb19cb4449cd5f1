#include "completemachinetestbiz.h"

#include "completemachinetestbiz_p.h"
#include "driverhelpers.h"
#include "services.h"

#include <string>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QThread>

namespace LCD::FactoryModeImpl {

namespace {

const std::string CompleteMachineTestBizRequester = "CompleteMachineTestBiz";

constexpr int PhaseTimerInterval = 2000; // ms

}

CompleteMachineTestBiz::Impl::Impl(CompleteMachineTestBiz *owner) : ownerBiz(owner)
{
    keyboardService = keyboardEventService();
    phaseTimer = new QTimer(this);
    phaseTimer->setSingleShot(false);
    connect(phaseTimer, &QTimer::timeout, this, &Impl::onTimer);
    registerCallbacks();
}

void CompleteMachineTestBiz::Impl::registerCallbacks()
{
    const auto subState = m_callbackGuard.wrap([this](int state) { onSubStateChanged(state); });
    screenBrightnessBiz.registerStateCallback(CompleteMachineTestBizRequester, subState);
    screenBadPixelBiz.registerStateCallback(CompleteMachineTestBizRequester, subState);
    buttonLightBiz.registerStateCallback(CompleteMachineTestBizRequester, subState);
    registerKeyAndTBarCallbacks();
    registerLinkCallbacks();
}

void CompleteMachineTestBiz::Impl::registerKeyAndTBarCallbacks()
{
    buttonFunctionBiz.registerStateCallback(
        CompleteMachineTestBizRequester,
        m_callbackGuard.wrap([this](int state, int failCount) { onSubStateChangedBtnFunc(state, failCount); }));
    buttonFunctionBiz.registerCurrentKeyUnderTestCallback(
        CompleteMachineTestBizRequester,
        m_callbackGuard.wrap([this](unsigned halKey, const std::string &) { onCurrentKey(halKey); }));
    tbarTestBiz.registerStateCallback(CompleteMachineTestBizRequester,
                                      m_callbackGuard.wrap([this](int state) { onSubStateChanged(state); }));
    tbarTestBiz.registerRightBtnTextCallback(CompleteMachineTestBizRequester,
                                             m_callbackGuard.wrap([this](bool lastSteps) { onTBarStep(lastSteps); }));
}

void CompleteMachineTestBiz::Impl::registerLinkCallbacks()
{
    const auto subState = m_callbackGuard.wrap([this](int state) { onSubStateChanged(state); });
    netPortTestBiz.registerStateCallback(CompleteMachineTestBizRequester, subState);
    netPortTestBiz.registerLinkStatusCallback(
        CompleteMachineTestBizRequester, m_callbackGuard.wrap([this](const std::vector<bool> &links, bool linkValid) {
            onNetLinkStatus(links, linkValid);
        }));
    usbPortTestBiz.registerStateCallback(CompleteMachineTestBizRequester, subState);
    usbPortTestBiz.registerLinkStatusCallback(
        CompleteMachineTestBizRequester,
        m_callbackGuard.wrap([this](const std::vector<bool> &links) { onUsbLinkStatus(links); }));
}

// The current requester is set after the first phase has started. So the first state of a new object isn't announced.
void CompleteMachineTestBiz::Impl::start()
{
    RunEvent event(m_run);
    event.beginRun();
    syncTimer();
    startCurrentPhase(event);
    setCurrentRequester(CompleteMachineTestBizRequester, screenBrightnessBiz, screenBadPixelBiz, buttonLightBiz,
                        netPortTestBiz, usbPortTestBiz);
    setReportsReceived(true, netPortTestBiz, usbPortTestBiz);
}

// Called before the state changes, so that nothing has changed if there is no memory. Returns null on the own thread.
std::unique_ptr<QEvent> CompleteMachineTestBiz::Impl::makeTimerUpdate() const
{
    return QThread::currentThread() == thread() ? nullptr : std::make_unique<QEvent>(QEvent::User);
}

// A report on the thread of a host service may start or stop the timer, but must not use the QTimer there. A posted
// event then starts or stops it as requested last.
void CompleteMachineTestBiz::Impl::applyTimer(std::unique_ptr<QEvent> timerUpdate)
{
    if (timerUpdate)
        QCoreApplication::postEvent(this, timerUpdate.release());
    else
        syncTimer();
}

void CompleteMachineTestBiz::Impl::customEvent(QEvent *)
{
    syncTimer();
}

void CompleteMachineTestBiz::Impl::syncTimer()
{
    const bool shouldRun = m_run.state().shouldTimerRun;
    if (shouldRun && !phaseTimer->isActive())
        phaseTimer->start(PhaseTimerInterval);
    else if (!shouldRun)
        phaseTimer->stop();
}

// A screen is dropped if another thread has changed the run in the meantime: it must not replace a newer screen.
void CompleteMachineTestBiz::Impl::show(const RunEvent &event, const CompleteMachinePhaseInfo &info) const
{
    if (event.isCurrent())
        notifyPhase(info);
}

void CompleteMachineTestBiz::Impl::notifyPhase(const CompleteMachinePhaseInfo &info) const
{
    notifyAll(phaseCallbacks, info);
}

void CompleteMachineTestBiz::Impl::notifyLog(const QString &text) const
{
    notifyAll(logCallbacks, text);
}

void CompleteMachineTestBiz::Impl::notifyStepIcon(int step) const
{
    notifyAll(stepIconCallbacks, step);
}

void CompleteMachineTestBiz::Impl::logPhase(int phase) const
{
    notifyLog(QLatin1String(phaseRow(phase).logLine));
}

CompleteMachineTestBiz::CompleteMachineTestBiz() : d(new Impl(this))
{
}

CompleteMachineTestBiz::~CompleteMachineTestBiz()
{
    delete d;
}

void CompleteMachineTestBiz::start()
{
    d->start();
}

int CompleteMachineTestBiz::currentPhaseIndex() const
{
    return d->m_run.state().phaseIndex;
}

bool CompleteMachineTestBiz::isRunning() const
{
    return isInRun(d->m_run.state().phaseIndex);
}

int CompleteMachineTestBiz::result() const
{
    return d->m_run.state().testResult;
}

void CompleteMachineTestBiz::onLeftBtnClicked()
{
    d->onLeftBtnClicked();
}

void CompleteMachineTestBiz::onRightBtnClicked()
{
    d->onRightBtnClicked();
}

void CompleteMachineTestBiz::registerPhaseCallback(
    const std::string &requester, const std::function<void(const CompleteMachinePhaseInfo &)> &callback)
{
    registerNamedListener(d->phaseCallbacks, requester, callback);
}

void CompleteMachineTestBiz::registerLogCallback(const std::string &requester,
                                                 const std::function<void(const QString &)> &callback)
{
    registerNamedListener(d->logCallbacks, requester, callback);
}

void CompleteMachineTestBiz::registerStepIconCallback(const std::string &requester,
                                                      const std::function<void(int)> &callback)
{
    registerNamedListener(d->stepIconCallbacks, requester, callback);
}

}
