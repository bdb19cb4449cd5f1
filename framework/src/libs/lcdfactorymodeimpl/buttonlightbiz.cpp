#include "buttonlightbiz.h"

#include "levelwalk.h"
#include "listeners.h"
#include "log.h"
#include "services.h"

namespace LCD::FactoryModeImpl {

namespace {

[[maybe_unused]] const std::string REQUESTER = "FactoryModeButtonLightBiz";
constexpr int TestType = 2;

}

class ButtonLightBiz::Impl
{
public:
    explicit Impl(ButtonLightBiz *owner) : q(owner) {}
    void updateAllBtnBrightness(int level);
    void notifyStateChanged(int code) const;
    void announceAs(int code);

    ButtonLightBiz *q;
    FactoryMode::IFactoryModeBiz *factoryBizService = factoryModeBizService();
    FactoryMode::IKeyboardEvent *keyboardService = keyboardEventService();
    std::atomic<int> state = StateIdle;
    int cycleCount = 0;
    Listeners<int> stateCallbacks;
    std::string curRequester;
};

void ButtonLightBiz::Impl::updateAllBtnBrightness(int level)
{
    qCDebug(componentLog) << "updateButtonLightBiz 1111111111111111111111111111: :" << level;
    if (keyboardService)
        keyboardService->setAllButtonBrightness(level);
}

void ButtonLightBiz::Impl::notifyStateChanged(int code) const
{
    notifyRequester(stateCallbacks, curRequester, code);
}

void ButtonLightBiz::Impl::announceAs(int code)
{
    state = code;
    notifyStateChanged(state);
}

ButtonLightBiz::ButtonLightBiz() : d(new Impl(this))
{
}

ButtonLightBiz::~ButtonLightBiz()
{
    delete d;
}

void ButtonLightBiz::enter()
{
    if (!d)
        return;
    if (d->factoryBizService)
        d->factoryBizService->setFactoryTestType(TestType);
    reTest();
}

void ButtonLightBiz::startTest()
{
    if (!d)
        return;
    d->state = StateLevel10;
    d->updateAllBtnBrightness(StateLevel10);
    d->notifyStateChanged(d->state);
}

void ButtonLightBiz::nextStep()
{
    if (!d)
        return;
    const LevelStep step = takeLevelStep(d->state, d->cycleCount);
    if (step.show)
        d->updateAllBtnBrightness(*step.show);
    if (!step.announce)
        return;
    if (d->keyboardService)
        d->keyboardService->setAllButtonBrightness(0);
    d->notifyStateChanged(d->state);
}

void ButtonLightBiz::setPass()
{
    if (d)
        d->announceAs(StatePass);
}

void ButtonLightBiz::setNotPass()
{
    if (d)
        d->announceAs(StateNotPass);
}

void ButtonLightBiz::reTest()
{
    if (!d)
        return;
    d->cycleCount = 0;
    d->announceAs(StateIdle);
}

int ButtonLightBiz::state() const
{
    return d ? d->state.load() : StateIdle;
}

void ButtonLightBiz::setCurRequester(const std::string &requester)
{
    if (d)
        d->curRequester = requester;
}

std::string ButtonLightBiz::getCurRequester() const
{
    return d ? d->curRequester : std::string();
}

void ButtonLightBiz::registerStateCallback(const std::string &requester, const std::function<void(int)> &callback)
{
    if (d)
        registerListener(d->stateCallbacks, requester, callback);
}

}
