#include "device/board/eventloop.h"

#include <QtCore/QStringList>
#include <QtTest/QtTest>

#include <fcntl.h>
#include <future>
#include <unistd.h>

using namespace panelhost;
using namespace std::chrono_literals;

namespace {

// The reading end of a pipe. It calls a function with what it has read.
class PipeSource : public EventSource
{
public:
    explicit PipeSource(std::function<void(const QByteArray &)> received) : m_received(std::move(received))
    {
        if (pipe2(m_ends, O_CLOEXEC | O_NONBLOCK) != 0)
            qFatal("no pipe");
    }
    ~PipeSource() override
    {
        closeReader();
        close(m_ends[1]);
    }

    int fd() const override { return m_ends[0]; }
    void ready() override
    {
        QByteArray text(64, '\0');
        const auto size = ::read(m_ends[0], text.data(), 64);
        m_received(text.left(static_cast<int>(size)));
    }
    void write(const char *text) const { QCOMPARE(::write(m_ends[1], text, strlen(text)), ssize_t(strlen(text))); }
    void closeReader()
    {
        if (m_ends[0] >= 0)
            close(m_ends[0]);
        m_ends[0] = -1;
    }

private:
    std::function<void(const QByteArray &)> m_received;
    int m_ends[2];
};

}

/// The thread of a board that waits for descriptors, work and timers.
class tst_BoardEventLoop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void workRunsInOrderOnTheLoop();
    void runReturnsWhenTheWorkIsDone();
    void endingDoesWhatWasPosted();
    void sourceIsCalledWhenItHasSomething();
    void removedSourceIsNotCalled();
    void sourceMayRemoveAnother();
    void sourceMayLoseItsDescriptor();
    void timersFireOnceInOrder();
    void stoppedTimerDoesNotFire();
    void idleLoopUsesNoProcessorTime();
};

void tst_BoardEventLoop::workRunsInOrderOnTheLoop()
{
    EventLoop loop;
    std::vector<int> done;
    bool wasCurrent = false;
    for (int number = 0; number < 1000; ++number)
        loop.post([&done, number] { done.push_back(number); });
    loop.run([&] { wasCurrent = loop.isCurrent(); });

    QVERIFY(wasCurrent);
    QVERIFY(!loop.isCurrent());
    QCOMPARE(done.size(), std::size_t(1000));
    QVERIFY(std::is_sorted(done.begin(), done.end()));
}

void tst_BoardEventLoop::runReturnsWhenTheWorkIsDone()
{
    EventLoop loop;
    int level = 0;
    loop.run([&] { loop.run([&] { level = 2; }); });
    QCOMPARE(level, 2);
}

void tst_BoardEventLoop::endingDoesWhatWasPosted()
{
    int done = 0;
    {
        EventLoop loop;
        for (int number = 0; number < 100; ++number)
            loop.post([&done] { ++done; });
    }
    QCOMPARE(done, 100);
}

void tst_BoardEventLoop::sourceIsCalledWhenItHasSomething()
{
    EventLoop loop;
    std::promise<QByteArray> received;
    PipeSource source([&](const QByteArray &text) { received.set_value(loop.isCurrent() ? text : "other thread"); });
    loop.run([&] { loop.add(source); });
    source.write("key");
    QCOMPARE(received.get_future().get(), QByteArray("key"));
    loop.run([&] { loop.remove(source); });
}

void tst_BoardEventLoop::removedSourceIsNotCalled()
{
    EventLoop loop;
    int calls = 0;
    std::promise<void> second;
    PipeSource removed([&](const QByteArray &) { ++calls; });
    PipeSource kept([&](const QByteArray &) { second.set_value(); });
    loop.run([&] {
        loop.add(removed);
        loop.add(kept);
        loop.remove(removed);
    });
    removed.write("a");
    kept.write("b");
    second.get_future().wait();
    QCOMPARE(calls, 0);
    loop.run([&] { loop.remove(kept); });
}

void tst_BoardEventLoop::sourceMayRemoveAnother()
{
    EventLoop loop;
    int calls = 0;
    PipeSource *other = nullptr;
    const auto removeOther = [&](const QByteArray &) {
        ++calls;
        loop.remove(*other);
    };
    PipeSource first(removeOther);
    PipeSource second([&](const QByteArray &) { ++calls; });
    other = &second;
    loop.run([&] {
        first.write("a");
        second.write("b"); // both are ready in the same turn
        loop.add(first);
        loop.add(second);
    });
    std::promise<void> turned;
    loop.run([&] { loop.startTimer(1ms, [&] { turned.set_value(); }); });
    turned.get_future().wait();
    QCOMPARE(calls, 1);
    loop.run([&] { loop.remove(first); });
}

void tst_BoardEventLoop::sourceMayLoseItsDescriptor()
{
    EventLoop loop;
    int calls = 0;
    PipeSource source([&](const QByteArray &) { ++calls; });
    loop.run([&] {
        loop.add(source);
        source.closeReader();
    });
    std::promise<void> turned;
    loop.run([&] { loop.startTimer(1ms, [&] { turned.set_value(); }); });
    turned.get_future().wait();
    QCOMPARE(calls, 0);
    loop.run([&] { loop.remove(source); });
}

void tst_BoardEventLoop::timersFireOnceInOrder()
{
    EventLoop loop;
    std::vector<int> fired;
    std::promise<void> last;
    loop.run([&] {
        loop.startTimer(20ms, [&] {
            fired.push_back(3);
            last.set_value();
        });
        loop.startTimer(5ms, [&] { fired.push_back(2); });
        loop.startTimer(0ms, [&] { fired.push_back(1); });
    });
    last.get_future().wait();
    QCOMPARE(fired, (std::vector<int>{1, 2, 3}));
}

void tst_BoardEventLoop::stoppedTimerDoesNotFire()
{
    EventLoop loop;
    int fired = 0;
    std::promise<void> last;
    loop.run([&] {
        const EventLoop::Timer timer = loop.startTimer(1ms, [&] { ++fired; });
        loop.stopTimer(timer);
        loop.stopTimer(timer);
        loop.stopTimer(0);
        loop.startTimer(5ms, [&] { last.set_value(); });
    });
    last.get_future().wait();
    QCOMPARE(fired, 0);
}

void tst_BoardEventLoop::idleLoopUsesNoProcessorTime()
{
    EventLoop loop;
    clockid_t clock = 0;
    loop.run([&clock] { pthread_getcpuclockid(pthread_self(), &clock); });
    const auto used = [clock] {
        timespec time{};
        clock_gettime(clock, &time);
        return time.tv_sec * 1000000000L + time.tv_nsec;
    };
    std::promise<void> later;
    loop.run([&] { loop.startTimer(300ms, [&] { later.set_value(); }); });
    const long before = used();
    later.get_future().wait();
    QVERIFY2(used() - before < 5000000L, qPrintable(QString::number(used() - before)));
}

QTEST_GUILESS_MAIN(tst_BoardEventLoop)
#include "tst_boardeventloop.moc"
