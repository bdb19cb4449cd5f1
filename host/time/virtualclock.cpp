#include "time/virtualclock.h"

#include "time/devicethread.h"
#include "time/eventqueue.h"
#include "time/virtualeventdispatcher.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QThread>
#include <QtGui/qpa/qwindowsysteminterface.h>

#include <atomic>
#include <cmath>
#include <deque>
#include <mutex>

// A function of Qt's core: returns the number of events that were posted to this thread and not sent yet.
Q_CORE_EXPORT uint qGlobalPostedEventsCount();

namespace panelhost {

namespace {

// When the clock is far behind, input is processed after this many real milliseconds.
constexpr qint64 MaxCatchUpTime = 50;

// Events posted by events are left for the next pass. Deletions that wait for a loop to end are never delivered.
constexpr int MaxPasses = 20;

void sendPosted()
{
    for (int pass = 0; pass < MaxPasses && qGlobalPostedEventsCount() > 0; ++pass)
        QCoreApplication::sendPostedEvents();
}

void deliverPosted()
{
    sendPosted();
    // Outside an event loop nothing else handles deleteLater().
    if (QThread::currentThread()->loopLevel() == 0)
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (QWindowSystemInterface::sendWindowSystemEvents(QEventLoop::ExcludeUserInputEvents))
        sendPosted();
}

}

class VirtualClock::Impl final : public EventClock
{
public:
    enum class Mode {
        Stopped,
        Fast,
        Paced
    };

    bool processDueEvents() override;
    std::optional<int> millisecondsToNextEvent() const override;
    Milliseconds now() const override { return m_now; }

    bool settle();
    bool advanceTo(Milliseconds target, const std::function<bool()> &done);
    bool catchUp(Milliseconds target);
    Mode mode() const { return m_mode; }
    void setMode(Mode mode, double factor);
    void restart();
    void post(std::function<void()> input);

    EventQueue queue;
    DeviceThread deviceThread;
    VirtualEventDispatcher *dispatcher = nullptr; // the application's
    std::thread::id guiThread;
    std::function<void()> observer;

private:
    void stepTo(Milliseconds instant) { m_now = std::max(m_now.load(), instant); }
    double pacedNow() const;
    void observe();
    bool processDue();
    bool takeInput();
    std::function<void()> nextInput();
    bool hasInput() const;

    mutable std::mutex m_inputMutex;
    std::deque<std::function<void()>> m_input;
    bool m_isTakingInput = false; // GUI thread only
    std::atomic<Milliseconds> m_now = 0;
    quint64 m_performed = 0;
    Mode m_mode = Mode::Stopped;
    double m_factor = 1;
    QElapsedTimer m_wall;
    Milliseconds m_wallStartsAt = 0;
    bool m_isObserving = false;
};

// Processes everything that is due now, in order. Events posted by one item are delivered before the next item.
bool VirtualClock::Impl::settle()
{
    const quint64 before = m_performed;
    deliverPosted();
    while (std::optional<EventQueue::Item> item = queue.take(m_now)) {
        ++m_performed;
        if (item->timerId)
            dispatcher->fire(item->timerId);
        else
            deviceThread.run(item->work);
        deliverPosted();
    }
    observe();
    return m_performed != before;
}

void VirtualClock::Impl::observe()
{
    if (!observer || m_isObserving)
        return;
    m_isObserving = true;
    observer();
    m_isObserving = false;
}

bool VirtualClock::Impl::advanceTo(Milliseconds target, const std::function<bool()> &done)
{
    settle();
    if (done && done())
        return true;
    for (std::optional<Milliseconds> due = queue.nextDue(); due && *due <= target; due = queue.nextDue()) {
        stepTo(*due);
        settle();
        if (done && done())
            return true;
    }
    stepTo(target);
    return false;
}

bool VirtualClock::Impl::catchUp(Milliseconds target)
{
    QElapsedTimer elapsed;
    elapsed.start();
    const quint64 before = m_performed;
    if (advanceTo(target, [&elapsed] { return elapsed.elapsed() >= MaxCatchUpTime; }))
        setMode(m_mode, m_factor); // input has priority: the clock falls behind the wall clock
    return m_performed != before;
}

void VirtualClock::Impl::post(std::function<void()> input)
{
    const std::lock_guard lock(m_inputMutex);
    m_input.push_back(std::move(input));
}

bool VirtualClock::Impl::hasInput() const
{
    const std::lock_guard lock(m_inputMutex);
    return !m_input.empty() && !m_isTakingInput;
}

// Returns an empty function if there is none.
std::function<void()> VirtualClock::Impl::nextInput()
{
    const std::lock_guard lock(m_inputMutex);
    if (m_input.empty())
        return {};
    std::function<void()> input = std::move(m_input.front());
    m_input.pop_front();
    return input;
}

// Input that is taken over may run an event loop; the next one waits until that has ended. After a burst, the window is
// served from time to time.
bool VirtualClock::Impl::takeInput()
{
    if (!hasInput())
        return false;
    QElapsedTimer elapsed;
    elapsed.start();
    m_isTakingInput = true;
    while (elapsed.elapsed() < MaxCatchUpTime) {
        const std::function<void()> input = nextInput();
        if (!input)
            break;
        input();
    }
    m_isTakingInput = false;
    return true;
}

bool VirtualClock::Impl::processDueEvents()
{
    const bool didAnything = processDue();
    return takeInput() || didAnything;
}

bool VirtualClock::Impl::processDue()
{
    switch (m_mode) {
    case Mode::Stopped:
        return settle();
    case Mode::Paced:
        return catchUp(static_cast<Milliseconds>(pacedNow()));
    case Mode::Fast:
        if (const std::optional<Milliseconds> due = queue.nextDue())
            stepTo(*due);
        return settle();
    }
    return false;
}

double VirtualClock::Impl::pacedNow() const
{
    return static_cast<double>(m_wallStartsAt) + static_cast<double>(m_wall.nsecsElapsed()) / 1e6 * m_factor;
}

std::optional<int> VirtualClock::Impl::millisecondsToNextEvent() const
{
    if (hasInput())
        return 0;
    const std::optional<Milliseconds> due = queue.nextDue();
    if (!due)
        return std::nullopt;
    if (m_mode == Mode::Fast || *due <= m_now)
        return 0;
    if (m_mode == Mode::Stopped)
        return std::nullopt;
    const double wait = std::ceil((static_cast<double>(*due) - pacedNow()) / m_factor);
    return static_cast<int>(std::clamp(wait, 0.0, 1e9));
}

void VirtualClock::Impl::setMode(Mode mode, double factor)
{
    m_mode = mode;
    m_factor = factor;
    m_wallStartsAt = m_now;
    m_wall.start();
}

void VirtualClock::Impl::restart()
{
    {
        const std::lock_guard lock(m_inputMutex);
        m_input.clear();
    }
    queue.dropWork();
    queue.shiftBack(m_now);
    m_now = 0;
    setMode(Mode::Stopped, 1);
}

VirtualClock::VirtualClock() : d(new Impl)
{
}

VirtualClock::~VirtualClock() = default;

VirtualClock &VirtualClock::instance()
{
    static VirtualClock clock;
    return clock;
}

void VirtualClock::install()
{
    // GLib's main loop would fire its own timers.
    qputenv("QT_NO_GLIB", "1");
    Impl &impl = *instance().d;
    impl.guiThread = std::this_thread::get_id();
    impl.dispatcher = new VirtualEventDispatcher(impl.queue, impl);
    QCoreApplication::setEventDispatcher(impl.dispatcher);
}

Milliseconds VirtualClock::now() const
{
    return d->now();
}

void VirtualClock::schedule(Milliseconds delay, std::function<void()> work)
{
    d->queue.addWork(d->now() + qMax<Milliseconds>(0, delay), std::move(work));
    if (currentThread() == ThreadKind::Other && d->dispatcher)
        d->dispatcher->wakeUp();
}

void VirtualClock::post(std::function<void()> input)
{
    d->post(std::move(input));
    if (d->dispatcher)
        d->dispatcher->wakeUp();
}

void VirtualClock::runOnDevice(const std::function<void()> &work)
{
    d->deviceThread.run(work);
}

ThreadKind VirtualClock::currentThread() const
{
    if (d->deviceThread.isCurrent())
        return ThreadKind::Device;
    return std::this_thread::get_id() == d->guiThread ? ThreadKind::Gui : ThreadKind::Other;
}

void VirtualClock::settle()
{
    d->settle();
}

void VirtualClock::advance(Milliseconds duration)
{
    d->advanceTo(d->now() + duration, {});
}

bool VirtualClock::advanceUntil(Milliseconds duration, const std::function<bool()> &done)
{
    return d->advanceTo(d->now() + duration, done);
}

void VirtualClock::stop()
{
    d->setMode(Impl::Mode::Stopped, 1);
}

void VirtualClock::run(double factor)
{
    d->setMode(factor > 0 ? Impl::Mode::Paced : Impl::Mode::Fast, factor);
    if (d->dispatcher)
        d->dispatcher->wakeUp();
}

bool VirtualClock::isPaced() const
{
    return d->mode() == Impl::Mode::Paced;
}

void VirtualClock::setObserver(std::function<void()> observer)
{
    d->observer = std::move(observer);
}

void VirtualClock::restart()
{
    d->restart();
}

}
