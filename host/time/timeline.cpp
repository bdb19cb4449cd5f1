#include "time/timeline.h"

#include "time/agenda.h"
#include "time/devicethread.h"
#include "time/virtualdispatcher.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QThread>
#include <QtGui/qpa/qwindowsysteminterface.h>

#include <atomic>
#include <cmath>

// Of Qt's core: events posted to this thread and not sent yet.
Q_CORE_EXPORT uint qGlobalPostedEventsCount();

namespace panelhost {

namespace {

// A turn that has so much to catch up lets input in after this many wall milliseconds.
constexpr qint64 longestTurn = 50;

// What an event posts is left for the next pass, and deletions that wait for a loop to end stay for ever.
constexpr int mostPasses = 20;

void sendPosted()
{
    for (int pass = 0; pass < mostPasses && qGlobalPostedEventsCount() > 0; ++pass)
        QCoreApplication::sendPostedEvents();
}

void deliverPosted()
{
    sendPosted();
    // Outside any loop nothing else would ever delete what has asked for it.
    if (QThread::currentThread()->loopLevel() == 0)
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (QWindowSystemInterface::sendWindowSystemEvents(QEventLoop::ExcludeUserInputEvents))
        sendPosted();
}

}

class Timeline::Impl final : public TurnClock
{
public:
    enum class Mode {
        Stopped,
        Fast,
        Paced
    };

    bool turn() override;
    std::optional<int> millisecondsToNext() const override;
    Instant now() const override { return m_now; }

    bool settle();
    bool advanceTo(Instant target, const std::function<bool()> &done);
    bool catchUp(Instant target);
    void setMode(Mode mode, double factor);
    void restart();

    Agenda agenda;
    DeviceThread deviceThread;
    VirtualDispatcher *dispatcher = nullptr; // the application's
    std::thread::id guiThread;
    std::function<void()> observer;

private:
    void stepTo(Instant instant) { m_now = std::max(m_now.load(), instant); }
    double pacedNow() const;
    void observe();

    std::atomic<Instant> m_now = 0;
    quint64 m_performed = 0;
    Mode m_mode = Mode::Stopped;
    double m_factor = 1;
    QElapsedTimer m_wall;
    Instant m_wallStartsAt = 0;
    bool m_isObserving = false;
};

// Everything due at the present instant, in order, with what it posted delivered before the next.
bool Timeline::Impl::settle()
{
    const quint64 before = m_performed;
    deliverPosted();
    while (std::optional<Agenda::Item> item = agenda.take(m_now)) {
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

void Timeline::Impl::observe()
{
    if (!observer || m_isObserving)
        return;
    m_isObserving = true;
    observer();
    m_isObserving = false;
}

bool Timeline::Impl::advanceTo(Instant target, const std::function<bool()> &done)
{
    settle();
    if (done && done())
        return true;
    for (std::optional<Instant> due = agenda.nextDue(); due && *due <= target; due = agenda.nextDue()) {
        stepTo(*due);
        settle();
        if (done && done())
            return true;
    }
    stepTo(target);
    return false;
}

bool Timeline::Impl::catchUp(Instant target)
{
    QElapsedTimer elapsed;
    elapsed.start();
    const quint64 before = m_performed;
    if (advanceTo(target, [&elapsed] { return elapsed.elapsed() >= longestTurn; }))
        setMode(m_mode, m_factor); // falls behind the wall clock rather than shut the operator out
    return m_performed != before;
}

bool Timeline::Impl::turn()
{
    switch (m_mode) {
    case Mode::Stopped:
        return settle();
    case Mode::Paced:
        return catchUp(static_cast<Instant>(pacedNow()));
    case Mode::Fast:
        if (const std::optional<Instant> due = agenda.nextDue())
            stepTo(*due);
        return settle();
    }
    return false;
}

double Timeline::Impl::pacedNow() const
{
    return static_cast<double>(m_wallStartsAt) + static_cast<double>(m_wall.nsecsElapsed()) / 1e6 * m_factor;
}

std::optional<int> Timeline::Impl::millisecondsToNext() const
{
    const std::optional<Instant> due = agenda.nextDue();
    if (!due)
        return std::nullopt;
    if (m_mode == Mode::Fast || *due <= m_now)
        return 0;
    if (m_mode == Mode::Stopped)
        return std::nullopt;
    const double wait = std::ceil((static_cast<double>(*due) - pacedNow()) / m_factor);
    return static_cast<int>(std::clamp(wait, 0.0, 1e9));
}

void Timeline::Impl::setMode(Mode mode, double factor)
{
    m_mode = mode;
    m_factor = factor;
    m_wallStartsAt = m_now;
    m_wall.start();
}

void Timeline::Impl::restart()
{
    agenda.dropWork();
    agenda.shiftBack(m_now);
    m_now = 0;
    setMode(Mode::Stopped, 1);
}

Timeline::Timeline() : d(new Impl)
{
}

Timeline::~Timeline() = default;

Timeline &Timeline::instance()
{
    static Timeline timeline;
    return timeline;
}

void Timeline::install()
{
    // A nested main loop of another library would fire timers of its own.
    qputenv("QT_NO_GLIB", "1");
    Impl &impl = *instance().d;
    impl.guiThread = std::this_thread::get_id();
    impl.dispatcher = new VirtualDispatcher(impl.agenda, impl);
    QCoreApplication::setEventDispatcher(impl.dispatcher);
}

Instant Timeline::now() const
{
    return d->now();
}

void Timeline::schedule(Instant delay, std::function<void()> work)
{
    d->agenda.addWork(d->now() + qMax<Instant>(0, delay), std::move(work));
    if (currentThread() == ThreadKind::Other && d->dispatcher)
        d->dispatcher->wakeUp();
}

void Timeline::runOnDevice(const std::function<void()> &work)
{
    d->deviceThread.run(work);
}

ThreadKind Timeline::currentThread() const
{
    if (d->deviceThread.isCurrent())
        return ThreadKind::Device;
    return std::this_thread::get_id() == d->guiThread ? ThreadKind::Gui : ThreadKind::Other;
}

void Timeline::settle()
{
    d->settle();
}

void Timeline::advance(Instant duration)
{
    d->advanceTo(d->now() + duration, {});
}

bool Timeline::advanceUntil(Instant duration, const std::function<bool()> &done)
{
    return d->advanceTo(d->now() + duration, done);
}

void Timeline::stop()
{
    d->setMode(Impl::Mode::Stopped, 1);
}

void Timeline::run(double factor)
{
    d->setMode(factor > 0 ? Impl::Mode::Paced : Impl::Mode::Fast, factor);
    if (d->dispatcher)
        d->dispatcher->wakeUp();
}

void Timeline::setObserver(std::function<void()> observer)
{
    d->observer = std::move(observer);
}

void Timeline::restart()
{
    d->restart();
}

}
