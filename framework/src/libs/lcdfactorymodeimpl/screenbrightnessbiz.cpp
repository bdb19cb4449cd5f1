#include "screenbrightnessbiz.h"

#include "leveltesthelpers.h"
#include "listeners.h"
#include "services.h"

#include <atomic>

namespace LCD::FactoryModeImpl {

namespace {

[[maybe_unused]] const std::string REQUESTER = "FactoryModeScreenBrightnessBiz";
constexpr int TestType = 0;
constexpr int ScreenCount = 3;

}

class ScreenBrightnessBiz::Impl
{
public:
    explicit Impl(ScreenBrightnessBiz *owner) : q(owner) {}
    void updateAllScreenBrightness(int level);
    void notifyStateChanged(int code) const;

    ScreenBrightnessBiz *q;
    FactoryMode::IFactoryModeBiz *factoryBizService = factoryModeBizService();
    FactoryMode::IKeyboardEvent *keyboardService = keyboardEventService();
    std::atomic<int> state = StateIdle;
    std::atomic<int> cycleCount = 0;
    Listeners<int> stateCallbacks;
    std::string curRequester;
};

void ScreenBrightnessBiz::Impl::updateAllScreenBrightness(int level)
{
    if (!keyboardService)
        return;
    for (int screen = 0; screen < ScreenCount; ++screen)
        keyboardService->setScreenBrightness(screen, level);
}

void ScreenBrightnessBiz::Impl::notifyStateChanged(int code) const
{
    notifyRequester(stateCallbacks, curRequester, code);
}

ScreenBrightnessBiz::ScreenBrightnessBiz() : d(new Impl(this))
{
}

ScreenBrightnessBiz::~ScreenBrightnessBiz()
{
    delete d;
}

void ScreenBrightnessBiz::enter()
{
    if (!d)
        return;
    setTestType(d->factoryBizService, TestType);
    resetLevelTest(*d);
}

void ScreenBrightnessBiz::startTest()
{
    if (d)
        startLevelTest(*d, [this](int level) { d->updateAllScreenBrightness(level); });
}

void ScreenBrightnessBiz::nextStep()
{
    if (!d)
        return;
    nextLevelTestStep(
        *d, [this](int level) { d->updateAllScreenBrightness(level); }, [] {});
}

void ScreenBrightnessBiz::restoreBrightnessToNormal()
{
    if (d)
        d->updateAllScreenBrightness(StateLevel100);
}

void ScreenBrightnessBiz::setPass()
{
    if (d)
        setStateAndNotify(*d, StatePass);
}

void ScreenBrightnessBiz::setNotPass()
{
    if (d)
        setStateAndNotify(*d, StateNotPass);
}

void ScreenBrightnessBiz::reTest()
{
    if (d)
        resetLevelTest(*d);
}

int ScreenBrightnessBiz::state() const
{
    return d ? d->state.load() : StateIdle;
}

void ScreenBrightnessBiz::setCurRequester(const std::string &requester)
{
    if (d)
        setRequester(d->curRequester, requester);
}

std::string ScreenBrightnessBiz::getCurRequester() const
{
    return d ? currentRequester(d->curRequester) : std::string();
}

void ScreenBrightnessBiz::registerStateCallback(const std::string &requester, const std::function<void(int)> &callback)
{
    if (d)
        registerListener(d->stateCallbacks, requester, callback);
}

}
