#include "time/virtualeventdispatcher.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTimerEvent>
#include <QtCore/private/qabstracteventdispatcher_p.h>
#include <QtCore/private/qeventdispatcher_unix_p.h>
#include <QtGui/private/qguiapplication_p.h>
#include <QtGui/qpa/qplatformintegration.h>

namespace panelhost {

VirtualEventDispatcher::VirtualEventDispatcher(EventQueue &queue, EventClock &clock)
    : m_queue(queue), m_clock(clock), m_wakerTimer(QAbstractEventDispatcherPrivate::allocateTimerId())
{
}

VirtualEventDispatcher::~VirtualEventDispatcher()
{
    QAbstractEventDispatcherPrivate::releaseTimerId(m_wakerTimer);
}

// The dispatcher of the platform plugin delivers its input. Before the platform plugin is loaded, and without a GUI,
// the plain UNIX dispatcher is used.
QAbstractEventDispatcher &VirtualEventDispatcher::native()
{
    const bool hasPlatform = QGuiApplicationPrivate::platformIntegration();
    if (!m_native || (hasPlatform && !m_isPlatformNative))
        makeNative();
    return *m_native;
}

void VirtualEventDispatcher::makeNative()
{
    const QList<QSocketNotifier *> notifiers = m_notifiers;
    for (QSocketNotifier *notifier : notifiers) {
        if (m_native)
            m_native->unregisterSocketNotifier(notifier);
    }
    QPlatformIntegration *platform = QGuiApplicationPrivate::platformIntegration();
    m_isPlatformNative = platform;
    m_native.reset(platform ? platform->createEventDispatcher() : new QEventDispatcherUNIX);
    m_native->startingUp();
    for (QSocketNotifier *notifier : notifiers)
        m_native->registerSocketNotifier(notifier);
}

void VirtualEventDispatcher::fire(int timerId)
{
    const auto timer = m_timers.find(timerId);
    if (timer == m_timers.end())
        return;
    // A repeating timer of 0 ms would keep the clock from advancing, so it fires again after a millisecond.
    m_queue.addTimer(timerId, m_clock.now() + qMax(1, timer->interval));
    if (timer->isFiring)
        return;
    timer->isFiring = true;
    QTimerEvent event(timerId);
    QCoreApplication::sendEvent(timer->object, &event);
    const auto after = m_timers.find(timerId);
    if (after != m_timers.end())
        after->isFiring = false;
}

bool VirtualEventDispatcher::processEvents(QEventLoop::ProcessEventsFlags flags)
{
    m_interrupted = false;
    Q_EMIT awake();
    bool didAnything = !flags.testFlag(QEventLoop::X11ExcludeTimers) && m_clock.processDueEvents();
    if (m_interrupted)
        return didAnything;
    auto notWaiting = flags;
    notWaiting.setFlag(QEventLoop::WaitForMoreEvents, false);
    didAnything = native().processEvents(notWaiting) || didAnything;
    if (didAnything || m_interrupted || !flags.testFlag(QEventLoop::WaitForMoreEvents))
        return didAnything;
    waitForInput(flags);
    return true;
}

// Input that arrives while waiting stays queued until the next turn, when the clock has reached its time.
void VirtualEventDispatcher::waitForInput(QEventLoop::ProcessEventsFlags flags)
{
    const std::optional<int> wait =
        flags.testFlag(QEventLoop::X11ExcludeTimers) ? std::nullopt : m_clock.millisecondsToNextEvent();
    if (wait == 0)
        return;
    Q_EMIT aboutToBlock();
    if (wait)
        native().registerTimer(m_wakerTimer, *wait, Qt::PreciseTimer, &m_waker);
    native().processEvents(flags | QEventLoop::ExcludeUserInputEvents);
    native().unregisterTimer(m_wakerTimer);
}

bool VirtualEventDispatcher::hasPendingEvents()
{
    const std::optional<Milliseconds> due = m_queue.nextDue();
    return (due && *due <= m_clock.now()) || native().hasPendingEvents();
}

void VirtualEventDispatcher::registerSocketNotifier(QSocketNotifier *notifier)
{
    native().registerSocketNotifier(notifier);
    m_notifiers << notifier;
}

void VirtualEventDispatcher::unregisterSocketNotifier(QSocketNotifier *notifier)
{
    m_notifiers.removeOne(notifier);
    native().unregisterSocketNotifier(notifier);
}

void VirtualEventDispatcher::registerTimer(int timerId, int interval, Qt::TimerType timerType, QObject *object)
{
    m_timers.insert(timerId, {object, interval, timerType, false});
    m_queue.addTimer(timerId, m_clock.now() + interval);
    wakeUp();
}

bool VirtualEventDispatcher::unregisterTimer(int timerId)
{
    m_queue.removeTimer(timerId);
    return m_timers.remove(timerId) > 0;
}

bool VirtualEventDispatcher::unregisterTimers(QObject *object)
{
    const QList<TimerInfo> timers = registeredTimers(object);
    for (const TimerInfo &timer : timers)
        unregisterTimer(timer.timerId);
    return !timers.isEmpty();
}

QList<QAbstractEventDispatcher::TimerInfo> VirtualEventDispatcher::registeredTimers(QObject *object) const
{
    QList<TimerInfo> result;
    for (auto timer = m_timers.begin(); timer != m_timers.end(); ++timer) {
        if (timer->object == object)
            result << TimerInfo(timer.key(), timer->interval, timer->type);
    }
    return result;
}

int VirtualEventDispatcher::remainingTime(int timerId)
{
    const std::optional<Milliseconds> due = m_queue.dueTime(timerId);
    return due ? static_cast<int>(qMax<Milliseconds>(0, *due - m_clock.now())) : -1;
}

void VirtualEventDispatcher::wakeUp()
{
    if (m_native)
        m_native->wakeUp();
}

void VirtualEventDispatcher::interrupt()
{
    m_interrupted = true;
    native().interrupt();
}

void VirtualEventDispatcher::flush()
{
    native().flush();
}

}
