#include "screenbadpixelbiz.h"

#include "listeners.h"
#include "services.h"
#include "singletesthelpers.h"
#include "statecodes.h"

#include "lcd/factorymode/ilcdfactorymode.h"

#include <atomic>

namespace LCD::FactoryModeImpl {

namespace {

[[maybe_unused]] const std::string REQUESTER = "FactoryModeScreenBadPixelBiz";
constexpr int TestType = 1;
constexpr int LastStep = 11;

struct Pattern
{
    int type = 0;
    int index = 0;
    int level = 0;
};

/// Returns the test pattern of a step: four patterns of type 1, then four of type 3, each of them first at half level
/// and then at full level.
Pattern patternOfStep(int step)
{
    if (step <= 3)
        return {1, step + 1, 0};
    return {3, ((step - 4) >> 1) + 1, step % 2 == 0 ? 128 : 255};
}

}

class ScreenBadPixelBiz::Impl
{
public:
    explicit Impl(ScreenBadPixelBiz *owner) : q(owner) {}
    void setLcdTestPattern();
    void notifyStateChanged(int code) const;
    void rewind(int code);
    void clearAndAnnounce(int code);

    ScreenBadPixelBiz *q;
    FactoryMode::IFactoryModeBiz *factoryBizService = factoryModeBizService();
    FactoryMode::IKeyboardEvent *keyboardService = keyboardEventService();
    void *m_screenDetail = screenDetailService();
    std::atomic<int> state = StateIdle;
    std::atomic<int> stepIndex = 0;
    std::atomic<int> patternActive = 0;
    std::atomic<int> patternCycle = 1;
    Listeners<int> stateCallbacks;
    std::string curRequester;
};

void ScreenBadPixelBiz::Impl::setLcdTestPattern()
{
    const Pattern pattern = patternActive ? patternOfStep(stepIndex) : Pattern();
    if (keyboardService)
        keyboardService->setLcdTestPattern(pattern.type, pattern.index);
    // Looked up each time, because the test may outlive the widget.
    if (auto *widget = factoryModeWidgetService<FactoryMode::ILcdFactoryMode>())
        widget->notifyTestPatternChanged(pattern.type, pattern.index, pattern.level);
}

void ScreenBadPixelBiz::Impl::notifyStateChanged(int code) const
{
    notifyRequester(stateCallbacks, curRequester, code);
}

void ScreenBadPixelBiz::Impl::rewind(int code)
{
    state = code;
    stepIndex = 0;
    patternActive = 1;
    patternCycle = 1;
}

void ScreenBadPixelBiz::Impl::clearAndAnnounce(int code)
{
    state = code;
    stepIndex = 0;
    patternActive = 0;
    setLcdTestPattern();
    notifyStateChanged(state);
}

ScreenBadPixelBiz::ScreenBadPixelBiz() : d(new Impl(this))
{
}

ScreenBadPixelBiz::~ScreenBadPixelBiz()
{
    delete d;
}

void ScreenBadPixelBiz::enter()
{
    if (!d)
        return;
    setTestType(d->factoryBizService, TestType);
    d->rewind(StateIdle);
    d->notifyStateChanged(d->state);
}

void ScreenBadPixelBiz::startTest()
{
    if (!d)
        return;
    d->rewind(StateRunning);
    d->setLcdTestPattern();
    d->notifyStateChanged(d->state);
}

void ScreenBadPixelBiz::nextStep()
{
    if (!d)
        return;
    if (++d->stepIndex <= LastStep) {
        d->setLcdTestPattern();
        return;
    }
    d->state = StateAllStepsDone;
    d->patternActive = 0;
    d->setLcdTestPattern();
    d->notifyStateChanged(d->state);
}

void ScreenBadPixelBiz::setPass()
{
    if (d)
        d->clearAndAnnounce(StatePass);
}

void ScreenBadPixelBiz::setNotPass()
{
    if (d)
        d->clearAndAnnounce(StateNotPass);
}

void ScreenBadPixelBiz::reTest()
{
    if (d)
        d->clearAndAnnounce(StateIdle);
}

int ScreenBadPixelBiz::state() const
{
    return d ? d->state.load() : StateIdle;
}

void ScreenBadPixelBiz::setCurRequester(const std::string &requester)
{
    if (d)
        setRequester(d->curRequester, requester);
}

std::string ScreenBadPixelBiz::getCurRequester() const
{
    return d ? currentRequester(d->curRequester) : std::string();
}

void ScreenBadPixelBiz::registerStateCallback(const std::string &requester, const std::function<void(int)> &callback)
{
    if (d)
        registerListener(d->stateCallbacks, requester, callback);
}

}
