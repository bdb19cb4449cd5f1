#include "screenbrightnessbiz.h"

#include "levelwalk.h"
#include "listeners.h"
#include "services.h"

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
    void announceAs(int code);

    ScreenBrightnessBiz *q;
    FactoryMode::IFactoryModeBiz *factoryBizService = factoryModeBizService();
    FactoryMode::IKeyboardEvent *keyboardService = keyboardEventService();
    std::atomic<int> state = StateIdle;
    int cycleCount = 0;
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

void ScreenBrightnessBiz::Impl::announceAs(int code)
{
    state = code;
    notifyStateChanged(state);
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
    if (d->factoryBizService)
        d->factoryBizService->setFactoryTestType(TestType);
    reTest();
}

void ScreenBrightnessBiz::startTest()
{
    if (!d)
        return;
    d->state = StateLevel10;
    d->updateAllScreenBrightness(StateLevel10);
    d->notifyStateChanged(d->state);
}

void ScreenBrightnessBiz::nextStep()
{
    if (!d)
        return;
    const LevelStep step = takeLevelStep(d->state, d->cycleCount);
    if (step.show)
        d->updateAllScreenBrightness(*step.show);
    if (step.announce)
        d->notifyStateChanged(d->state);
}

void ScreenBrightnessBiz::restoreBrightnessToNormal()
{
    if (d)
        d->updateAllScreenBrightness(StateLevel100);
}

void ScreenBrightnessBiz::setPass()
{
    if (d)
        d->announceAs(StatePass);
}

void ScreenBrightnessBiz::setNotPass()
{
    if (d)
        d->announceAs(StateNotPass);
}

void ScreenBrightnessBiz::reTest()
{
    if (!d)
        return;
    d->cycleCount = 0;
    d->announceAs(StateIdle);
}

int ScreenBrightnessBiz::state() const
{
    return d ? d->state.load() : StateIdle;
}

void ScreenBrightnessBiz::setCurRequester(const std::string &requester)
{
    if (d)
        d->curRequester = requester;
}

std::string ScreenBrightnessBiz::getCurRequester() const
{
    return d ? d->curRequester : std::string();
}

void ScreenBrightnessBiz::registerStateCallback(const std::string &requester, const std::function<void(int)> &callback)
{
    if (d)
        registerListener(d->stateCallbacks, requester, callback);
}

}
