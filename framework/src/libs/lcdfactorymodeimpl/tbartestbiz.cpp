#include "tbartestbiz.h"

#include "callbackguard.h"
#include "listeners.h"
#include "log.h"
#include "recordfield.h"
#include "services.h"
#include "singletesthelpers.h"
#include "statecodes.h"

#include <QtCore/QObject>

#include <atomic>

namespace LCD::FactoryModeImpl {

namespace {

using ProtocolImpl::s_BarCalibration;

// The service reads and writes the record by the offsets of its fields.
static_assert(sizeof(s_BarCalibration) == 12 && alignof(s_BarCalibration) == 4);

const std::string TbarTestBizRequester = "TbarTestBiz";
constexpr int TestType = 6;

struct CalibrationStep
{
    int command;
    int nextStep;
    bool nextPressIsLast;
};

constexpr CalibrationStep CalibrationSteps[] = {
    {2, 1, false}, {1, 2, false}, {0, 3, false}, {1, 4, false}, {0, 5, false}, {1, 6, true}, {4, 7, true},
};
constexpr int StepCount = std::size(CalibrationSteps);
constexpr int LastStep = StepCount - 1;

}

class TbarTestBiz::Impl : public QObject
{
public:
    explicit Impl(TbarTestBiz *owner) : q(owner) {}
    void requestNextStep();
    void onStepComplete(int stepIndex, int);
    void onBarCalibrationChanged(const LCD::ProtocolImpl::s_BarCalibration &);
    void notifyStateChanged(int code) const;
    void notifyRightBtnText(bool lastPress) const;
    void passSilently();
    void send(int command, bool last);
    void registerCalibrationListener();

    TbarTestBiz *q;
    FactoryMode::IFactoryModeBiz *factoryBizService = factoryModeBizService();
    FactoryMode::IKeyboardEvent *keyboardService = keyboardEventService();
    FactoryMode::ITBarCalibration *tbarCalibrationService = FactoryModeImpl::tbarCalibrationService();
    int completedStep = 0;
    std::atomic<int> state = StateIdle;
    std::atomic<int> currentStep = 0;
    std::atomic<int> failCount = 0;
    Listeners<int> stateCallbacks;
    Listeners<bool> rightBtnTextCallbacks;
    CallbackGuard m_callbackGuard;
};

void TbarTestBiz::Impl::requestNextStep()
{
    if (!tbarCalibrationService)
        return;
    const int cur = currentStep;
    qCDebug(componentLog) << "[TbarTestBiz] requestNextStep: cur=" << cur;
    if (cur < 0 || cur > LastStep) {
        qCDebug(componentLog) << "[TbarTestBiz] requestNextStep: cur=" << cur << " -> default, no op";
        return;
    }
    const CalibrationStep &step = CalibrationSteps[cur];
    currentStep = step.nextStep;
    notifyRightBtnText(step.nextPressIsLast);
    if (cur == LastStep)
        passSilently();
    send(step.command, cur == LastStep);
}

// Notifies the listeners of the old state once more. They aren't notified of the verdict; the driver reads it from
// state().
void TbarTestBiz::Impl::passSilently()
{
    notifyStateChanged(state);
    currentStep = 0;
    state = StatePass;
}

void TbarTestBiz::Impl::send(int command, bool last)
{
    s_BarCalibration record{};
    setField<4>(record, command);
    tbarCalibrationService->setBarCalibration(
        record, m_callbackGuard.wrapReport("[TbarTestBiz]", [last](bool ok, const std::string &) {
            if (!last)
                return;
            if (ok)
                qCDebug(componentLog) << "[TbarTestBiz] T-Bar calibration completed";
            else
                qCWarning(componentLog) << "[TbarTestBiz] T-Bar calibration end failed";
        }));
}

void TbarTestBiz::Impl::onStepComplete(int stepIndex, int)
{
    if (state != StateRunning || stepIndex != currentStep)
        return;
    const int next = ++currentStep;
    if (tbarCalibrationService)
        completedStep = next;
    if (next < LastStep)
        return;
    setStateAndNotify(*this, StateAllStepsDone);
}

// The reports of the service are ignored. The operator's presses advance the test.
void TbarTestBiz::Impl::onBarCalibrationChanged(const s_BarCalibration &)
{
}

// The service may call its listener on any thread, even on one that wasn't created by Qt.
void TbarTestBiz::Impl::registerCalibrationListener()
{
    if (!tbarCalibrationService)
        return;
    const auto queueReport = [this](const s_BarCalibration &record) {
        const auto handleReport = [this, record] {
            if (q->d)
                q->d->onBarCalibrationChanged(record);
        };
        QMetaObject::invokeMethod(this, handleReport, Qt::QueuedConnection);
    };
    tbarCalibrationService->registerBarCalibrationCallback(TbarTestBizRequester,
                                                           m_callbackGuard.wrapReport("[TbarTestBiz]", queueReport));
}

void TbarTestBiz::Impl::notifyStateChanged(int code) const
{
    notifyAll(stateCallbacks, code);
}

void TbarTestBiz::Impl::notifyRightBtnText(bool lastPress) const
{
    notifyAll(rightBtnTextCallbacks, lastPress);
}

TbarTestBiz::TbarTestBiz() : d(new Impl(this))
{
}

TbarTestBiz::~TbarTestBiz()
{
    delete d;
}

void TbarTestBiz::enter()
{
    if (!d)
        return;
    setTestType(d->factoryBizService, TestType);
    d->completedStep = 0;
    reTest();
}

void TbarTestBiz::startTest()
{
    if (!d)
        return;
    if (!d->keyboardService) {
        qCWarning(componentLog) << "[TbarTestBiz] KeyboardEvent not found";
        return;
    }
    d->completedStep = 0;
    d->currentStep = 0;
    d->failCount = 0;
    setStateAndNotify(*d, StateRunning);
    d->notifyRightBtnText(false);
    d->registerCalibrationListener();
}

void TbarTestBiz::requestNextStep()
{
    if (d)
        d->requestNextStep();
}

void TbarTestBiz::setPass()
{
    if (d)
        setStateAndNotify(*d, StatePass);
}

void TbarTestBiz::setNotPass()
{
    if (d)
        setStateAndNotify(*d, StateNotPass);
}

void TbarTestBiz::reTest()
{
    if (!d)
        return;
    d->currentStep = 0;
    d->failCount = 0;
    setStateAndNotify(*d, StateIdle);
}

int TbarTestBiz::state() const
{
    return d ? d->state.load() : StateIdle;
}

int TbarTestBiz::failCount() const
{
    return d ? d->failCount.load() : 0;
}

int TbarTestBiz::currentStepIndex() const
{
    return d ? d->currentStep.load() : 0;
}

void TbarTestBiz::registerStateCallback(const std::string &requester, const std::function<void(int)> &callback)
{
    if (d)
        registerListener(d->stateCallbacks, requester, callback);
}

void TbarTestBiz::registerRightBtnTextCallback(const std::string &requester, const std::function<void(bool)> &callback)
{
    if (d)
        registerListener(d->rightBtnTextCallbacks, requester, callback);
}

}
