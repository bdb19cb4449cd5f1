#include "../hosttest.h"
#include "linkswitch.h"
#include "networknamespace.h"
#include "session/session.h"

#include <QtCore/QEventLoop>
#include <QtCore/QSemaphore>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace panelhost;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int Changes = 200;
constexpr double MaxMedian = 5; // milliseconds

double milliseconds(Clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

/// Reads the kernel's messages on a thread of its own and does nothing else: as fast as it can be done.
class BareReader
{
public:
    BareReader() : m_socket(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE))
    {
        sockaddr_nl address = {};
        address.nl_family = AF_NETLINK;
        address.nl_groups = RTMGRP_LINK;
        m_isValid = bind(m_socket, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0;
    }
    ~BareReader() { close(m_socket); }
    BareReader(const BareReader &) = delete;
    BareReader &operator=(const BareReader &) = delete;

    bool isValid() const { return m_isValid; }

    /// Waits until the link of the interface number @p index is as @p linked says, and returns when it was.
    Clock::time_point waitFor(int index, bool linked)
    {
        alignas(nlmsghdr) char buffer[16384];
        for (;;) {
            const ssize_t size = recv(m_socket, buffer, sizeof buffer, 0);
            const auto *header = reinterpret_cast<const nlmsghdr *>(buffer);
            if (size <= 0 || header->nlmsg_type != RTM_NEWLINK)
                continue;
            const auto *info = reinterpret_cast<const ifinfomsg *>(NLMSG_DATA(header));
            if (info->ifi_index == index && ((info->ifi_flags & IFF_LOWER_UP) != 0) == linked)
                return Clock::now();
        }
    }

private:
    int m_socket;
    bool m_isValid = false;
};

}

/// How long it takes from a carrier change in the kernel to the record at the component, on a complete session.
class tst_BoardLatency : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recordArrivesWithinFiveMilliseconds()
    {
        if (!enterEmptyNetwork())
            QSKIP("This test needs a network of its own: run it as root.");
        QCOMPARE(ip("link add port0 type veth peer name far0"), QString());
        QCOMPARE(ip("link set port0 up"), QString());

        Session::Options options;
        options.share = q(LCD_SOURCE_DIR "/share");
        options.pages = Session::noPages;
        options.netPorts = 1;
        options.linkDelay = 0;
        BoardConfiguration board;
        board.parts = {{q("net"), BoardConfiguration::Source::Real}};
        board.net.interfaces = QStringList{q("port0")};
        board.netWhere = QStringList{q("board.yaml:1:7")};
        options.board = board;
        QSemaphore recorded;
        std::atomic<Clock::time_point> recordedAt = Clock::time_point();
        options.journalSink = [&](const Journal::Entry &entry) {
            if (entry.name != q("lcdMemoryCacheNetworkPort.changed"))
                return;
            recordedAt = Clock::now();
            recorded.release();
        };
        QString error;
        auto session = Session::open(options, &error);
        QVERIFY2(session, qPrintable(error));
        startAgingTest(*session);
        recorded.acquire(recorded.available()); // reports of the subscription
        QEventLoop loop;
        std::vector<double> records;
        std::vector<double> reads;
        std::thread sender([&] {
            measure(recorded, recordedAt, records, reads);
            QMetaObject::invokeMethod(&loop, "quit", Qt::QueuedConnection);
        });
        session->clock().run(1);
        loop.exec();
        sender.join();
        session.reset(); // it takes all messages for its journal
        QCOMPARE(records.size(), std::size_t(Changes));
        qInfo("%d changes: median %.3f ms to the record, %.3f ms to a bare reader", Changes, median(records),
              median(reads));
        QVERIFY2(median(records) < MaxMedian, qPrintable(QString::number(median(records))));
    }

private:
    // Up to the step that listens to the net ports.
    static void startAgingTest(Session &session)
    {
        QString error;
        QVERIFY(session.panelOperator().perform({OperatorAction::Kind::Navigate, {{q("key"), q("enter")}}}, &error));
        QVERIFY(session.panelOperator().perform({OperatorAction::Kind::Soft, {{q("side"), q("right")}}}, &error));
        session.clock().advance(80'000);
    }

    static void measure(QSemaphore &recorded, const std::atomic<Clock::time_point> &recordedAt,
                        std::vector<double> &records, std::vector<double> &reads)
    {
        BareReader reader;
        LinkSwitch far("far0");
        const int index = LinkSwitch("port0").index();
        if (!reader.isValid() || index == 0)
            return;
        for (int change = 0; change < Changes; ++change) {
            const bool linked = change % 2 == 0;
            Clock::time_point readAt;
            std::thread reading([&] { readAt = reader.waitFor(index, linked); });
            const Clock::time_point begin = Clock::now();
            const bool isSet = far.set(linked);
            reading.join();
            if (!isSet || !recorded.tryAcquire(1, 5000))
                return;
            records.push_back(milliseconds(recordedAt.load() - begin));
            reads.push_back(milliseconds(readAt - begin));
        }
    }
};

PANELHOST_TEST_MAIN(tst_BoardLatency)
#include "tst_boardlatency.moc"
