#include "calls.h"
#include "machinetestfixture.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

#include <dlfcn.h>
#include <pthread.h>

#include <functional>
#include <thread>
#include <utility>

namespace {

/// While an object of this class exists, calls a function once, just before this thread locks a mutex for the time
/// @p number, counted from 1. Qt's own mutexes don't count.
class BeforeLock
{
public:
    BeforeLock(int number, std::function<void()> action) : m_action(std::move(action))
    {
        remaining = number;
        current = this;
    }
    ~BeforeLock() { current = nullptr; }
    BeforeLock(const BeforeLock &) = delete;
    BeforeLock &operator=(const BeforeLock &) = delete;

    static bool called() { return remaining <= 0; }
    static void lock()
    {
        if (current && --remaining == 0)
            std::exchange(current, nullptr)->m_action();
    }

private:
    static thread_local inline int remaining = 0;
    static thread_local inline BeforeLock *current = nullptr;
    const std::function<void()> m_action;
};

/// Runs @p work on a std::thread and waits for it.
template <class Work>
void elsewhere(const Work &work)
{
    std::thread thread(work);
    thread.join();
}

void reportNet(MachineTestFixture &fixture)
{
    fixture.netReport({{0, true}, {1, true}});
}

}

// Replaces that of the C library for the whole program, also for the component.
extern "C" int pthread_mutex_lock(pthread_mutex_t *mutex) noexcept
{
    using Lock = int (*)(pthread_mutex_t *);
    static const auto lock = reinterpret_cast<Lock>(dlsym(RTLD_NEXT, "pthread_mutex_lock"));
    BeforeLock::lock();
    return lock(mutex);
}

/// Another thread fails the run between any two accesses of an event to the state of the run.
class CompleteMachineInterleavingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFailureWhileAnEventIsHandled_data()
    {
        QTest::addColumn<int>("phase");
        QTest::addColumn<bool>("isTick");
        QTest::newRow("the last level of the screens") << 0 << true;
        QTest::newRow("from the key lights to the key walk") << 2 << false;
        QTest::newRow("from the key walk to the T-Bar") << 3 << false;
    }

    void aFailureWhileAnEventIsHandled()
    {
        QFETCH(const int, phase);
        QFETCH(const bool, isTick);
        int withoutConsequence = 0; // failures that leave the event nothing to do
        for (int number = 1;; ++number) {
            MachineTestFixture fixture;
            leaveNetFailed(fixture);
            fixture.startAndPassTo(phase);
            if (isTick)
                VirtualTime::advance(18000);
            else
                fixture.bringToVerdict();
            fixture.take();
            {
                const BeforeLock failure(number, [&] { elsewhere([&] { reportNet(fixture); }); });
                if (isTick)
                    VirtualTime::advance(2000);
                else
                    fixture.right();
            }
            const QStringList made = fixture.take();
            if (!BeforeLock::called()) {
                QVERIFY(withoutConsequence > 0);
                QVERIFY(withoutConsequence < number - 1);
                return;
            }
            QCOMPARE(fixture.biz->result(), 2);
            QCOMPARE(made.filter(failScreen()).size(), 1);
            if (made.last() == failScreen())
                ++withoutConsequence;
            fixture.biz->start();
            fixture.take();
            VirtualTime::advance(2000);
            QVERIFY(fixture.told().value(0).startsWith(QStringLiteral("phase title=[FCScreenLight] 30%")));
        }
    }

private:
    /// A report of the net test then fails the run, in whatever phase it is.
    static void leaveNetFailed(MachineTestFixture &fixture)
    {
        fixture.startAndPassTo(5);
        fixture.right();
        fixture.left();
    }
};

VIRTUAL_TIME_TEST_MAIN(CompleteMachineInterleavingsTest)
#include "tst_completemachineinterleavings.moc"
