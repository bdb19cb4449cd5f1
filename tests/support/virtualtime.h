#pragma once

#include <QtCore/QAbstractEventDispatcher>

#include <map>
#include <memory>
#include <vector>

/// An event dispatcher for tests. Its clock moves only when the test moves it. Timers of the main thread fire in the
/// order in which they are due; timers that are due at the same time fire in the order in which they were started.
/// Sockets, posted events and wake-ups from other threads work as usual. Install it before the application object is
/// created.
class VirtualTime : public QAbstractEventDispatcher
{
    Q_OBJECT

public:
    /// Installs the dispatcher for the application object that is created next.
    static VirtualTime *install();

    /// Advances the clock by @p milliseconds, fires the timers that become due, and delivers posted events.
    static void advance(qint64 milliseconds);
    /// Delivers posted events without moving the clock.
    static void settle() { advance(0); }
    /// Returns the milliseconds since install().
    static qint64 now();
    /// Returns the number of running timers of the main thread.
    static int timerCount();

    bool processEvents(QEventLoop::ProcessEventsFlags flags) override;
    bool hasPendingEvents() override;
    void registerSocketNotifier(QSocketNotifier *notifier) override;
    void unregisterSocketNotifier(QSocketNotifier *notifier) override;
    void registerTimer(int timerId, int interval, Qt::TimerType type, QObject *object) override;
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
        int id;
        int interval;
        Qt::TimerType type;
        QObject *object;
    };
    /// The due time, and the number of the start.
    using Due = std::pair<qint64, qint64>;

    VirtualTime();
    void schedule(const Timer &timer);
    bool fireNext(qint64 until);
    template <class Predicate>
    bool removeIf(const Predicate &predicate);

    std::unique_ptr<QAbstractEventDispatcher> m_native;
    std::map<Due, Timer> m_timers;
    qint64 m_now = 0;
    qint64 m_starts = 0;
};

/// The main function of a test in virtual time.
#define VIRTUAL_TIME_TEST_MAIN(TestClass)                                                                              \
    int main(int argc, char **argv)                                                                                    \
    {                                                                                                                  \
        VirtualTime::install();                                                                                        \
        QApplication application(argc, argv);                                                                          \
        TestClass test;                                                                                                \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }
