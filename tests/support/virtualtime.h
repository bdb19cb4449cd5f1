#pragma once

#include <QtCore/QAbstractEventDispatcher>

#include <map>
#include <memory>
#include <vector>

/// An event dispatcher for tests whose clock moves only when the test says so. Timers of the main thread fire in the
/// order in which they are due, those of one instant in the order in which they were started. Sockets, posted events
/// and wake-ups from other threads work as ever. Install it before the application object is made.
class VirtualTime : public QAbstractEventDispatcher
{
    Q_OBJECT

public:
    /// Makes the dispatcher of the coming application object.
    static VirtualTime *install();

    /// Moves the clock by @p milliseconds and fires all that is due on the way, with everything that is posted.
    static void advance(qint64 milliseconds);
    /// Delivers what is posted, without moving the clock.
    static void settle() { advance(0); }
    /// Milliseconds since install().
    static qint64 now();

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
    /// When it is due, and the how manieth start it was.
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
