#include "agetestwidget.h"
#include "machinepage.h"
#include "prooflength.h"
#include "virtualtime.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>

#include <malloc.h>
#include <memory>
#include <thread>

using LCD::FactoryModeImpl::AgeTestWidget;

namespace {

/// What the process uses.
struct Usage
{
    qint64 bytes;
    int descriptors;
    int threads;
    int timers;
};

int entriesOf(const char *directory)
{
    return QDir(QLatin1String(directory)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size();
}

Usage usage()
{
    return {static_cast<qint64>(mallinfo2().uordblks), entriesOf("/proc/self/fd"), entriesOf("/proc/self/task"),
            VirtualTime::timerCount()};
}

/// Returns the usage when there are at most @p threads threads: one that was joined is listed a moment longer.
Usage usageAfterThreads(int threads)
{
    QElapsedTimer waited;
    waited.start();
    while (entriesOf("/proc/self/task") > threads && waited.elapsed() < 5000)
        std::this_thread::yield();
    return usage();
}

/// What the caches of malloc() may take in addition.
constexpr qint64 CacheBytes = 65536;

/// Returns what has grown in @p rounds. With enough of them, one byte per round is more than the caches may take.
QString growth(const Usage &before, const Usage &after, int rounds)
{
    const qint64 bytes = after.bytes - before.bytes;
    if (bytes > CacheBytes + rounds / 2)
        return QStringLiteral("%1 bytes in %2 rounds").arg(bytes).arg(rounds);
    if (after.descriptors != before.descriptors)
        return QStringLiteral("file descriptors: %1, then %2").arg(before.descriptors).arg(after.descriptors);
    if (after.threads > before.threads)
        return QStringLiteral("threads: %1, then %2").arg(before.threads).arg(after.threads);
    if (after.timers != before.timers)
        return QStringLiteral("timers: %1, then %2").arg(before.timers).arg(after.timers);
    return {};
}

/// Does @p round many times, and returns what has grown since the warm-up.
template <class Round>
QString soak(int rounds, const Round &round)
{
    repeat(rounds / 5, round);
    const Usage before = usage();
    repeat(rounds, round);
    const Usage after = usageAfterThreads(before.threads);
    qInfo("%d rounds: %lld bytes more", rounds, static_cast<long long>(after.bytes - before.bytes));
    return growth(before, after, rounds);
}

/// Delivers a report of a service on a thread of its own.
template <class Report>
void onServiceThread(const Report &report)
{
    std::thread(report).join();
    VirtualTime::settle();
}

/// The page of the aging test, which runs.
class AgingPage
{
public:
    AgingPage()
    {
        recordFrameCalls(&m_host.calls);
        m_page.enterWindow();
        Q_EMIT frameOf(m_page)->signalRightBtnClicked(false);
    }
    ~AgingPage() { recordFrameCalls(nullptr); }
    AgingPage(const AgingPage &) = delete;
    AgingPage &operator=(const AgingPage &) = delete;

    void round()
    {
        VirtualTime::advance(76000);
        onServiceThread([this] { m_host.networkPort.changed.fire(RecordingNetworkPort::payload({{0, m_linked}})); });
        onServiceThread([this] { m_host.usb.changed.fire(RecordingUsb::payload({{1}, {2, 26, m_linked ? 1 : 0}})); });
        m_linked = !m_linked;
        m_calls += m_host.calls.take().size();
        m_log.clear();
        m_host.lookups.clear();
    }
    int calls() const { return m_calls; }

private:
    LogCapture m_log;
    RecordingHost m_host;
    AgeTestWidget m_page{nullptr};
    bool m_linked = false;
    int m_calls = 0;
};

/// A run that passes, or one that fails and is started again.
void runMachineTest(MachinePage &page, bool fails)
{
    page.widget->enterWindow();
    page.clickRight();
    if (fails) {
        page.clickLeft();
        page.clickLeft();
    }
    for (const int phase : {0, 1, 2, 3, 4, 5, 6, 7, 9, 10}) {
        onServiceThread([&] { page.operate.netReport({{0, true}}); });
        page.operate.bringToVerdict(phase);
        page.clickRight();
    }
    page.goBack();
}

}

/// Memory, file descriptors, threads and timers don't grow in long sessions.
class SoakTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void agingRounds()
    {
        const int rounds = proofLength(200, 10000, 100000);
        AgingPage page;
        const QString grown = soak(rounds, [&page] { page.round(); });
        QVERIFY2(grown.isEmpty(), qPrintable(grown));
        QVERIFY(page.calls() > rounds * 100);
    }

    void machineRuns()
    {
        const int runs = proofLength(30, 1000, 10000);
        MachinePage page;
        int passed = 0;
        const QString grown = soak(runs, [&] {
            runMachineTest(page, passed % 3 == 0);
            passed += page.take().contains(QStringLiteral("signalBackToFactoryMenu")) ? 1 : 0;
            page.log.clear();
            page.host.lookups.clear();
            page.host.tbarCalibration.commands.clear();
            page.host.tbarCalibration.results.clear();
        });
        QVERIFY2(grown.isEmpty(), qPrintable(grown));
        QCOMPARE(passed, runs + runs / 5);
    }

    void pagesThatAreDeletedAndMadeAgain()
    {
        const int rounds = proofLength(50, 2000, 20000);
        const QString grown = soak(rounds, [] {
            AgingPage aging;
            aging.round();
            MachinePage machine;
            machine.enter();
            machine.clickRight();
            VirtualTime::advance(5000);
        });
        QVERIFY2(grown.isEmpty(), qPrintable(grown));
    }

    void growthIsFound()
    {
        const Usage before = usage();
        QCOMPARE(growth(before, before, 1000), QString());
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
        std::vector<std::unique_ptr<char[]>> kept;
        kept.reserve(1000);
        const QString leak = soak(1000, [&kept] { kept.push_back(std::make_unique<char[]>(100)); });
        QVERIFY2(leak.endsWith(QStringLiteral("bytes in 1000 rounds")), qPrintable(leak));
#endif
        QTimer timer;
        timer.start(1000);
        QCOMPARE(growth(before, {before.bytes, before.descriptors, before.threads, VirtualTime::timerCount()}, 1),
                 QStringLiteral("timers: %1, then %2").arg(before.timers).arg(before.timers + 1));
        QFile file(QStringLiteral("/dev/null"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(growth(before, {before.bytes, usage().descriptors, before.threads, before.timers}, 1)
                    .startsWith(QStringLiteral("file descriptors")));
    }
};

VIRTUAL_TIME_TEST_MAIN(SoakTest)
#include "tst_soak.moc"
