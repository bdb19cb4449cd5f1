#include "buttonlightbiz.h"

#include "leveltesthelpers.h"
#include "listeners.h"
#include "log.h"
#include "services.h"

#include <atomic>

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

    ButtonLightBiz *q;
    FactoryMode::IFactoryModeBiz *factoryBizService = factoryModeBizService();
    FactoryMode::IKeyboardEvent *keyboardService = keyboardEventService();
    std::atomic<int> state = StateIdle;
    std::atomic<int> cycleCount = 0;
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
    setTestType(d->factoryBizService, TestType);
    resetLevelTest(*d);
}

void ButtonLightBiz::startTest()
{
    if (d)
        startLevelTest(*d, [this](int level) { d->updateAllBtnBrightness(level); });
}

void ButtonLightBiz::nextStep()
{
    if (!d)
        return;
    const auto putOut = [this] {
        if (d->keyboardService)
            d->keyboardService->setAllButtonBrightness(0);
    };
    nextLevelTestStep(
        *d, [this](int level) { d->updateAllBtnBrightness(level); }, putOut);
}

void ButtonLightBiz::setPass()
{
    if (d)
        setStateAndNotify(*d, StatePass);
}

void ButtonLightBiz::setNotPass()
{
    if (d)
        setStateAndNotify(*d, StateNotPass);
}

void ButtonLightBiz::reTest()
{
    if (d)
        resetLevelTest(*d);
}

int ButtonLightBiz::state() const
{
    return d ? d->state.load() : StateIdle;
}

void ButtonLightBiz::setCurRequester(const std::string &requester)
{
    if (d)
        setRequester(d->curRequester, requester);
}

std::string ButtonLightBiz::getCurRequester() const
{
    return d ? currentRequester(d->curRequester) : std::string();
}

void ButtonLightBiz::registerStateCallback(const std::string &requester, const std::function<void(int)> &callback)
{
    if (d)
        registerListener(d->stateCallbacks, requester, callback);
}

}
