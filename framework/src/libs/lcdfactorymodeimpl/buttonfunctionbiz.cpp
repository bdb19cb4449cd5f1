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
#include <cstddef>
#include <mutex>
#include <optional>

namespace LCD::FactoryModeImpl {

namespace {

using KeyboardProxy::KeyLEDColor;
using KeyboardProxy::KeyLedRequest;

// The service takes the request by value, as four 32-bit fields in this order.
static_assert(sizeof(KeyLedRequest) == 16 && alignof(KeyLedRequest) == 4 && sizeof(KeyLEDColor) == 4);
static_assert(offsetof(KeyLedRequest, color) == 0);
static_assert(offsetof(KeyLedRequest, mode) == 4);
static_assert(offsetof(KeyLedRequest, brightness) == 8);
static_assert(offsetof(KeyLedRequest, period) == 12);

constexpr int NoKey = -1;
constexpr auto CutColor = static_cast<KeyLEDColor>(0);
constexpr auto KeyColor = static_cast<KeyLEDColor>(2);
constexpr int Steady = 0;
constexpr int Blinking = 1;
constexpr int LedBrightness = 100;
constexpr int BlinkPeriod = 800; // ms

bool isCut(const QString &keyName)
{
    return keyName == QLatin1String("CUT");
}

}

// The key walk: lights up one key after another and waits until it is pressed. Its LED blinks with BlinkPeriod.
//
// Two threads use the state of the walk: the thread of the owner and the one on which key events arrive. m_keyMutex
// protects it. It is never held while a listener or a service is called.
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

    /// A copy of the state of the walk.
    struct KeyWalkState
    {
        int halKey;
        QString keyName;
        int cutKey;
        int lastKey;
        int nextKey;
        bool isAtEnd;
    };
    KeyWalkState keyWalkState() const;
    void handleKey(const KeyWalkState &key, int pressedKey);
    void rollBackKey(const KeyWalkState &key, QList<QPair<int, QString>> &keys);
    void clearCurrentKeyLocked();
    std::optional<QPair<int, QString>> takeNextKey();
    void clearCurrentKey();
    void clearKeyWalk();
    void setKeys(const QList<QPair<int, QString>> &keys);
    void registerKeyListener();
    void setVerdict(int code);

    ButtonFunctionBiz *q;
    FactoryMode::IKeyboardEvent *keyboardService = keyboardEventService();
    QList<QPair<int, QString>> keyList;
    int nextKey = 0; ///< position in keyList
    int currentHalKey = NoKey;
    QString currentKeyName;
    int cutHalKey = 33;
    std::atomic<int> state = StateIdle;
    std::atomic<int> failCount = 0;
    int lastHalKey = NoKey;
    Listeners<int, int> stateCallbacks;
    std::string keyUnderTestRequester;
    Listener<unsigned int, const std::string &> keyUnderTestCallback;
    mutable std::mutex m_keyMutex;
    CallbackGuard m_callbackGuard;
};

ButtonFunctionBiz::Impl::~Impl()
{
    if (keyboardService)
        keyboardService->registerKeyCallback({});
}

ButtonFunctionBiz::Impl::KeyWalkState ButtonFunctionBiz::Impl::keyWalkState() const
{
    const std::lock_guard locker(m_keyMutex);
    return {currentHalKey, currentKeyName, cutHalKey, lastHalKey, nextKey, nextKey >= keyList.size()};
}

// The caller holds m_keyMutex.
void ButtonFunctionBiz::Impl::clearCurrentKeyLocked()
{
    currentHalKey = NoKey;
    currentKeyName.clear();
}

void ButtonFunctionBiz::Impl::rollBackKey(const KeyWalkState &key, QList<QPair<int, QString>> &keys)
{
    const std::lock_guard locker(m_keyMutex);
    currentHalKey = key.halKey;
    currentKeyName = key.keyName;
    keyList.swap(keys);
    nextKey = key.nextKey;
}

std::optional<QPair<int, QString>> ButtonFunctionBiz::Impl::takeNextKey()
{
    const std::lock_guard locker(m_keyMutex);
    if (nextKey >= keyList.size()) {
        clearCurrentKeyLocked();
        return std::nullopt;
    }
    const auto next = keyList.at(nextKey++);
    currentHalKey = next.first;
    currentKeyName = next.second;
    return next;
}

void ButtonFunctionBiz::Impl::clearCurrentKey()
{
    const std::lock_guard locker(m_keyMutex);
    clearCurrentKeyLocked();
}

void ButtonFunctionBiz::Impl::clearKeyWalk()
{
    const std::lock_guard locker(m_keyMutex);
    keyList.clear();
    nextKey = 0;
    clearCurrentKeyLocked();
}

void ButtonFunctionBiz::Impl::setKeys(const QList<QPair<int, QString>> &keys)
{
    const auto cut = std::find_if(keys.begin(), keys.end(), [](const auto &key) { return isCut(key.second); });
    const std::lock_guard locker(m_keyMutex);
    currentHalKey = NoKey;
    keyList = keys;
    nextKey = 0;
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
    const int halKey = keyWalkState().halKey;
    if (!keyboardService || halKey == NoKey)
        return;
    keyboardService->setKeyLedUpdating(true);
    keyboardService->setKeyLed(halKey, {color, mode, brightness, BlinkPeriod});
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
    updateButtonColor(LedBrightness, Blinking, isCut(keyWalkState().keyName) ? CutColor : KeyColor);
}

// Runs on the thread of the keyboard service. If memory runs out while the key is handled, the walk doesn't change.
void ButtonFunctionBiz::Impl::onKeyPressed(uint32_t halKey, float, uint32_t, const KeyboardProxy::KeyButtonJoystick &,
                                           const KeyboardProxy::KeyTouchScreen &, const KeyboardProxy::KeyButtonTBar &)
{
    const KeyWalkState key = keyWalkState();
    if (key.halKey == NoKey)
        return;
    std::unique_lock locker(m_keyMutex);
    QList<QPair<int, QString>> keys = keyList;
    locker.unlock();
    const int stateBefore = state;
    callOrRollBack([&] { handleKey(key, static_cast<int>(halKey)); },
                   [&] {
                       state = stateBefore;
                       rollBackKey(key, keys);
                   });
}

void ButtonFunctionBiz::Impl::handleKey(const KeyWalkState &key, int pressedKey)
{
    // Any event ends the walk at its last key, so this comes before the comparison of the hal keys.
    if (key.halKey == key.lastKey && key.isAtEnd) {
        updateButtonColor(LedBrightness, Steady, KeyColor);
        clearCurrentKey();
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

void ButtonFunctionBiz::Impl::registerKeyListener()
{
    if (!keyboardService)
        return;
    keyboardService->registerKeyCallback(m_callbackGuard.wrapReport(
        "[ButtonFunctionBiz]",
        [this](uint32_t halKey, float value, uint32_t extra, const auto &joystick, const auto &touch,
               const auto &tbar) { onKeyPressed(halKey, value, extra, joystick, touch, tbar); }));
}

void ButtonFunctionBiz::Impl::setVerdict(int code)
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
    d->clearKeyWalk();
    d->registerKeyListener();
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
    d->setKeys(keys);
    d->nextButtonFunction();
}

void ButtonFunctionBiz::skipCurrentStep()
{
    if (!d)
        return;
    ++d->failCount;
    const Impl::KeyWalkState key = d->keyWalkState();
    qCDebug(componentLog) << "[ButtonFunctionBiz] Skipped key: halKey=" << key.halKey << "name=" << key.keyName;
    if (key.isAtEnd) {
        d->clearCurrentKey();
        d->notifyStateChanged(d->failCount <= 0 ? StatePass : StateNotPass, d->failCount);
        return;
    }
    d->updateButtonColor(LedBrightness, Steady, CutColor);
    d->nextButtonFunction();
}

void ButtonFunctionBiz::setPass()
{
    if (d)
        d->setVerdict(StatePass);
}

void ButtonFunctionBiz::setNotPass()
{
    if (d)
        d->setVerdict(StateNotPass);
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
