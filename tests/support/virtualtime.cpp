#include "virtualtime.h"

#include <QtCore/QCoreApplication>
#include <QtCore/private/qeventdispatcher_unix_p.h>
#include <QtGui/qpa/qwindowsysteminterface.h>

#include <limits>

VirtualTime::VirtualTime() : m_native(std::make_unique<QEventDispatcherUNIX>())
{
}

VirtualTime *VirtualTime::install()
{
    auto *dispatcher = new VirtualTime;
    QCoreApplication::setEventDispatcher(dispatcher);
    return dispatcher;
}

static VirtualTime *current()
{
    return static_cast<VirtualTime *>(QCoreApplication::eventDispatcher());
}

qint64 VirtualTime::now()
{
    return current()->m_now;
}

int VirtualTime::timerCount()
{
    return static_cast<int>(current()->m_timers.size());
}

void VirtualTime::advance(qint64 milliseconds)
{
    VirtualTime *time = current();
    const qint64 until = time->m_now + milliseconds;
    do
        time->m_native->processEvents(QEventLoop::AllEvents);
    while (time->fireNext(until));
    time->m_now = until;
}

// Advances the clock to the next timer that is due until then, and fires it.
bool VirtualTime::fireNext(qint64 until)
{
    if (m_timers.empty() || m_timers.begin()->first.first > until)
        return false;
    const auto due = m_timers.begin();
    const Timer timer = due->second;
    m_now = std::max(m_now, due->first.first);
    m_timers.erase(due);
    schedule(timer);
    QTimerEvent event(timer.id);
    QCoreApplication::sendEvent(timer.object, &event);
    return true;
}

void VirtualTime::schedule(const Timer &timer)
{
    m_timers.emplace(Due(m_now + timer.interval, ++m_starts), timer);
}

bool VirtualTime::processEvents(QEventLoop::ProcessEventsFlags flags)
{
    const bool fired = fireNext(m_now);
    const auto nativeFlags = fired ? flags & ~QEventLoop::WaitForMoreEvents : flags;
    const bool native = m_native->processEvents(nativeFlags);
    return QWindowSystemInterface::sendWindowSystemEvents(flags) || native || fired;
}

bool VirtualTime::hasPendingEvents()
{
    extern uint qGlobalPostedEventsCount();
    return qGlobalPostedEventsCount() > 0 || QWindowSystemInterface::windowSystemEventsQueued() > 0;
}

void VirtualTime::registerSocketNotifier(QSocketNotifier *notifier)
{
    m_native->registerSocketNotifier(notifier);
}

void VirtualTime::unregisterSocketNotifier(QSocketNotifier *notifier)
{
    m_native->unregisterSocketNotifier(notifier);
}

void VirtualTime::registerTimer(int timerId, int interval, Qt::TimerType type, QObject *object)
{
    schedule({timerId, interval, type, object});
}

template <class Predicate>
bool VirtualTime::removeIf(const Predicate &predicate)
{
    bool removed = false;
    for (auto timer = m_timers.begin(); timer != m_timers.end();) {
        const bool matches = predicate(timer->second);
        timer = matches ? m_timers.erase(timer) : std::next(timer);
        removed = removed || matches;
    }
    return removed;
}

bool VirtualTime::unregisterTimer(int timerId)
{
    return removeIf([timerId](const Timer &timer) { return timer.id == timerId; });
}

bool VirtualTime::unregisterTimers(QObject *object)
{
    return removeIf([object](const Timer &timer) { return timer.object == object; });
}

QList<QAbstractEventDispatcher::TimerInfo> VirtualTime::registeredTimers(QObject *object) const
{
    QList<TimerInfo> result;
    for (const auto &[due, timer] : m_timers) {
        if (timer.object == object)
            result << TimerInfo(timer.id, timer.interval, timer.type);
    }
    return result;
}

int VirtualTime::remainingTime(int timerId)
{
    for (const auto &[due, timer] : m_timers) {
        if (timer.id == timerId)
            return static_cast<int>(due.first - m_now);
    }
    return -1;
}

void VirtualTime::wakeUp()
{
    m_native->wakeUp();
}

void VirtualTime::interrupt()
{
    m_native->interrupt();
}

void VirtualTime::flush()
{
}
