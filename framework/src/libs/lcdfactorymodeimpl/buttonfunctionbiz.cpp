#include "buttonfunctionbiz.h"

#include "callbackguard.h"
#include "factorymodewidget.h"
#include "listeners.h"
#include "log.h"
#include "rollback.h"
#include "services.h"
#include "statecodes.h"

#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <optional>

namespace LCD::FactoryModeImpl {

namespace {

using KeyboardProxy::KeyLEDColor;

constexpr int NoKey = -1;
constexpr auto CutColor = static_cast<KeyLEDColor>(0);
constexpr auto KeyColor = static_cast<KeyLEDColor>(2);
constexpr int Steady = 0;
constexpr int Blinking = 1;
constexpr int LedBrightness = 100;
constexpr int LedPeriod = 800;

bool isCut(const QString &keyName)
{
    return keyName == QLatin1String("CUT");
}

}

// The walk belongs to two threads, the owner's and that of the key events. keyMutex makes each access to it whole; it
// is never held while a listener or a service is called.
class ButtonFunctionBiz::Impl
{
public:
    explicit Impl(ButtonFunctionBiz *owner) : q(owner) {}
    ~Impl();
    void notifyStateChanged(int code, int failures);
    void updateButtonColor(int brightness, int mode, LCD::KeyboardProxy::KeyLEDColor color);
    void nextButtonFunction();
    void onKeyPressed(uint32_t halKey, float value, uint32_t extra, const LCD::KeyboardProxy::KeyButtonJoystick &,
                      const LCD::KeyboardProxy::KeyTouchScreen &, const LCD::KeyboardProxy::KeyButtonTBar &);

    struct Walk
    {
        int halKey;
        QString keyName;
        int cutKey;
        int lastKey;
        bool noneLeft;
    };
    Walk walk() const;
    void answerKey(const Walk &key, int pressedKey);
    void rollBackKey(const Walk &key, QList<QPair<int, QString>> &keys);
    void clearKey();
    std::optional<QPair<int, QString>> takeNextKey();
    void leaveKey();
    void forgetKeys();
    void takeKeys(const QList<QPair<int, QString>> &keys);
    void listenToKeys();
    void giveVerdict(int code);

    ButtonFunctionBiz *q;
    FactoryMode::IKeyboardEvent *keyboardService = keyboardEventService();
    QList<QPair<int, QString>> keyList;
    int currentHalKey = NoKey;
    QString currentKeyName;
    int cutHalKey = 33;
    std::atomic<int> state = StateIdle;
    std::atomic<int> failCount = 0;
    int lastHalKey = NoKey;
    Listeners<int, int> stateCallbacks;
    std::string keyUnderTestRequester;
    Listener<unsigned int, const std::string &> keyUnderTestCallback;
    mutable std::mutex keyMutex;
    CallbackGuard m_callbackGuard;
};

ButtonFunctionBiz::Impl::~Impl()
{
    if (keyboardService)
        keyboardService->registerKeyCallback({});
}

ButtonFunctionBiz::Impl::Walk ButtonFunctionBiz::Impl::walk() const
{
    const std::lock_guard locker(keyMutex);
    return {currentHalKey, currentKeyName, cutHalKey, lastHalKey, keyList.isEmpty()};
}

// With keyMutex held.
void ButtonFunctionBiz::Impl::clearKey()
{
    currentHalKey = NoKey;
    currentKeyName.clear();
}

void ButtonFunctionBiz::Impl::rollBackKey(const Walk &key, QList<QPair<int, QString>> &keys)
{
    const std::lock_guard locker(keyMutex);
    currentHalKey = key.halKey;
    currentKeyName = key.keyName;
    keyList.swap(keys);
}

std::optional<QPair<int, QString>> ButtonFunctionBiz::Impl::takeNextKey()
{
    const std::lock_guard locker(keyMutex);
    if (keyList.isEmpty()) {
        clearKey();
        return std::nullopt;
    }
    const auto next = keyList.takeFirst();
    currentHalKey = next.first;
    currentKeyName = next.second;
    return next;
}

void ButtonFunctionBiz::Impl::leaveKey()
{
    const std::lock_guard locker(keyMutex);
    clearKey();
}

void ButtonFunctionBiz::Impl::forgetKeys()
{
    const std::lock_guard locker(keyMutex);
    keyList.clear();
    clearKey();
}

void ButtonFunctionBiz::Impl::takeKeys(const QList<QPair<int, QString>> &keys)
{
    const auto cut = std::find_if(keys.begin(), keys.end(), [](const auto &key) { return isCut(key.second); });
    const std::lock_guard locker(keyMutex);
    currentHalKey = NoKey;
    keyList = keys;
    if (cut != keys.end())
        cutHalKey = cut->first;
    lastHalKey = keys.isEmpty() ? NoKey : keys.last().first;
}

void ButtonFunctionBiz::Impl::notifyStateChanged(int code, int failures)
{
    state = code;
    failCount = failures;
    notifyAll(stateCallbacks, code, failures);
}

void ButtonFunctionBiz::Impl::updateButtonColor(int brightness, int mode, KeyLEDColor color)
{
    const int halKey = walk().halKey;
    if (!keyboardService || halKey == NoKey)
        return;
    keyboardService->setKeyLedUpdating(true);
    keyboardService->setKeyLed(halKey, {color, mode, brightness, LedPeriod});
    keyboardService->setKeyLedUpdating(false);
}

void ButtonFunctionBiz::Impl::nextButtonFunction()
{
    const auto key = takeNextKey();
    if (!key)
        return;
    qCDebug(componentLog) << "[ButtonFunctionBiz] Blinking light: halKey=" << key->first << "name=" << key->second;
    if (const auto callback = currentListener(keyUnderTestCallback))
        callback(static_cast<unsigned int>(key->first), key->second.toStdString());
    updateButtonColor(LedBrightness, Blinking, isCut(walk().keyName) ? CutColor : KeyColor);
}

// Runs on the thread of the keyboard service. A press for whose answer there is no memory leaves the walk where it is.
void ButtonFunctionBiz::Impl::onKeyPressed(uint32_t halKey, float, uint32_t, const KeyboardProxy::KeyButtonJoystick &,
                                           const KeyboardProxy::KeyTouchScreen &, const KeyboardProxy::KeyButtonTBar &)
{
    const Walk key = walk();
    if (key.halKey == NoKey)
        return;
    std::unique_lock locker(keyMutex);
    QList<QPair<int, QString>> keys = keyList;
    locker.unlock();
    const int stateBefore = state;
    callOrRollBack([&] { answerKey(key, static_cast<int>(halKey)); },
                   [&] {
                       state = stateBefore;
                       rollBackKey(key, keys);
                   });
}

void ButtonFunctionBiz::Impl::answerKey(const Walk &key, int pressedKey)
{
    // The last key is answered by any event: it must come before the comparison of keys.
    if (key.halKey == key.lastKey && key.noneLeft) {
        updateButtonColor(LedBrightness, Steady, KeyColor);
        leaveKey();
        notifyStateChanged(StateAllStepsDone, failCount);
        return;
    }
    if (pressedKey != key.halKey)
        return;
    qCDebug(componentLog) << "[ButtonFunctionBiz] Pressed key: halKey=" << static_cast<uint32_t>(pressedKey)
                          << "name=" << key.keyName;
    updateButtonColor(LedBrightness, Steady, key.halKey == key.cutKey ? CutColor : KeyColor);
    nextButtonFunction();
}

void ButtonFunctionBiz::Impl::listenToKeys()
{
    if (!keyboardService)
        return;
    keyboardService->registerKeyCallback(m_callbackGuard.wrapReport(
        "[ButtonFunctionBiz]",
        [this](uint32_t halKey, float value, uint32_t extra, const auto &joystick, const auto &touch,
               const auto &tbar) { onKeyPressed(halKey, value, extra, joystick, touch, tbar); }));
}

void ButtonFunctionBiz::Impl::giveVerdict(int code)
{
    state = code;
    notifyStateChanged(state, failCount);
    if (keyboardService)
        keyboardService->registerKeyCallback({});
}

ButtonFunctionBiz::ButtonFunctionBiz() : d(new Impl(this))
{
}

ButtonFunctionBiz::~ButtonFunctionBiz()
{
    delete d;
}

void ButtonFunctionBiz::enter()
{
    if (!d)
        return;
    d->state = StateIdle;
    d->failCount = 0;
    d->forgetKeys();
    d->listenToKeys();
}

void ButtonFunctionBiz::startTest()
{
    if (!d || !d->keyboardService)
        return;
    const auto *widget = factoryModeWidgetService<FactoryModeWidget>();
    if (!widget) {
        qCWarning(componentLog) << "[ButtonFunctionBiz] FactoryModeWidget not found, cannot get key check list";
        return;
    }
    const QList<QPair<int, QString>> keys = widget->getFactoryKeyCheckList();
    d->failCount = 0;
    d->keyboardService->setAllButtonBrightness(0);
    d->takeKeys(keys);
    d->nextButtonFunction();
}

void ButtonFunctionBiz::skipCurrentStep()
{
    if (!d)
        return;
    ++d->failCount;
    const Impl::Walk key = d->walk();
    qCDebug(componentLog) << "[ButtonFunctionBiz] Skipped key: halKey=" << key.halKey << "name=" << key.keyName;
    if (key.noneLeft) {
        d->leaveKey();
        d->notifyStateChanged(d->failCount <= 0 ? StatePass : StateNotPass, d->failCount);
        return;
    }
    d->updateButtonColor(LedBrightness, Steady, CutColor);
    d->nextButtonFunction();
}

void ButtonFunctionBiz::setPass()
{
    if (d)
        d->giveVerdict(StatePass);
}

void ButtonFunctionBiz::setNotPass()
{
    if (d)
        d->giveVerdict(StateNotPass);
}

int ButtonFunctionBiz::state() const
{
    return d ? d->state.load() : StateIdle;
}

int ButtonFunctionBiz::failCount() const
{
    return d ? d->failCount.load() : 0;
}

void ButtonFunctionBiz::registerStateCallback(const std::string &requester,
                                              const std::function<void(int, int)> &callback)
{
    if (d)
        registerListener(d->stateCallbacks, requester, callback);
}

void ButtonFunctionBiz::registerCurrentKeyUnderTestCallback(
    const std::string &requester, const std::function<void(unsigned int, const std::string &)> &callback)
{
    if (!d)
        return;
    setRequester(d->keyUnderTestRequester, requester);
    setListener(d->keyUnderTestCallback, callback);
}

}
