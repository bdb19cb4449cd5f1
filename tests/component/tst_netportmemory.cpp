#include "netporttestbiz.h"

#include "linksession.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

using namespace LCD::FactoryModeImpl;

namespace {

/// Allocations of at least this size, in bytes, fail.
std::atomic<std::size_t> memoryLimit = std::numeric_limits<std::size_t>::max();

constexpr std::size_t Small = 16U << 20;

}

void *operator new(std::size_t size)
{
    if (size < memoryLimit) {
        if (void *memory = std::malloc(size > 0 ? size : 1))
            return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

class NetPortMemoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { memoryLimit = std::numeric_limits<std::size_t>::max(); }

    void reportWithoutMemoryForItIsDropped()
    {
        LinkSession<NetPortTestBiz> session;
        int reports = 0;
        session->registerLinkStatusCallback("driver", [&reports](const std::vector<bool> &, bool) { ++reports; });
        session.begin();
        const auto &changed = session.host.networkPort.changed;
        session.callsOf(changed, RecordingNetworkPort::payload({{0, true}, {1, true}}));
        QCOMPARE(reports, 1);

        memoryLimit = Small;
        const auto calls = session.callsOf(changed, RecordingNetworkPort::payload({{0, true}, {HighestPort, true}}));
        memoryLimit = std::numeric_limits<std::size_t>::max();

        QCOMPARE(calls, QStringList());
        QCOMPARE(reports, 1);
        QCOMPARE(session->portCount(), 2);
        QVERIFY(session->isAllLinked());
        QCOMPARE(
            session.log.lines(),
            QStringList{QStringLiteral("warning|NetPortTestBiz: no memory for the port numbers of a report, dropped")});
    }

    void highestPortNumberIsAPort()
    {
        LinkSession<NetPortTestBiz> session;
        std::size_t size = 0;
        bool first = true;
        bool last = false;
        session->registerLinkStatusCallback("driver", [&](const std::vector<bool> &links, bool) {
            size = links.size();
            first = links.front();
            last = links.back();
        });
        session.begin();
        session.callsOf(session.host.networkPort.changed, RecordingNetworkPort::payload({{HighestPort, true}}));
        QCOMPARE(size, std::size_t(1) << 31);
        QVERIFY(!first);
        QVERIFY(last);
        QCOMPARE(session->portCount(), HighestPort); // one more doesn't fit
        QVERIFY(!session->isAllLinked());
    }

private:
    static constexpr int HighestPort = std::numeric_limits<int>::max();
};

QTEST_MAIN(NetPortMemoryTest)
#include "tst_netportmemory.moc"
