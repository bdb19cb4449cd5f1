#pragma once

#include "time/eventqueue.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QHash>
#include <QtCore/QPointer>

#include <atomic>
#include <memory>

namespace panelhost {

/// What the event dispatcher needs of the clock.
class EventClock
{
public:
    /// Fires what is due. Returns true if there was anything.
    virtual bool processDueEvents() = 0;
    /// Returns the real milliseconds until the next item is due; nothing if there is no item to wait for.
    virtual std::optional<int> millisecondsToNextEvent() const = 0;
    virtual Milliseconds now() const = 0;

protected:
    ~EventClock() = default;
};

/// The event dispatcher of the GUI thread. The native dispatcher handles sockets, posted events, input and wake-ups;
/// timers are kept in the event queue and fire by the virtual clock.
class VirtualEventDispatcher : public QAbstractEventDispatcher
{
    Q_OBJECT

public:
    VirtualEventDispatcher(EventQueue &queue, EventClock &clock);
    ~VirtualEventDispatcher() override;

    /// Sends the event of a timer that was taken from the queue, and adds the timer to the queue again.
    void fire(int timerId);

    bool processEvents(QEventLoop::ProcessEventsFlags flags) override;
    bool hasPendingEvents() override;
    void registerSocketNotifier(QSocketNotifier *notifier) override;
    void unregisterSocketNotifier(QSocketNotifier *notifier) override;
    void registerTimer(int timerId, int interval, Qt::TimerType timerType, QObject *object) override;
    bool unregisterTimer(int timerId) override;
    bool unregisterTimers(QObject *object) override;
    QList<TimerInfo> registeredTimers(QObject *object) const override;
    int remainingTime(int timerId) override;
    void wakeUp() override;
    void interrupt() override;
    void flush() override;

private:
    struct Timer
    {
        QObject *object = nullptr;
        int interval = 0;
        Qt::TimerType type = Qt::CoarseTimer;
        bool isFiring = false;
    };

    QAbstractEventDispatcher &native();
    void makeNative();
    void waitForInput(QEventLoop::ProcessEventsFlags flags);

    EventQueue &m_queue;
    EventClock &m_clock;
    std::unique_ptr<QAbstractEventDispatcher> m_native;
    bool m_isPlatformNative = false;
    QList<QSocketNotifier *> m_notifiers;
    QHash<int, Timer> m_timers;
    QObject m_waker;
    int m_wakerTimer = 0;
    std::atomic<bool> m_interrupted = false;
};

}
