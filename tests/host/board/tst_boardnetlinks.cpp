#include "device/board/netlinks.h"
#include "linkswitch.h"
#include "networknamespace.h"
#include "pump.h"

#include <QtTest/QtTest>

#include <future>

using namespace panelhost;

namespace {

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

const char *const DownProblem = "The network interface \"%1\" is down, so it never has a link. "
                                "\"ip link set %1 up\" switches it on.";

// Resident memory in KiB.
int memoryInUse()
{
    QFile status(q("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toInt();
    }
    return -1;
}

}

#define IP(arguments) QCOMPARE(ip(arguments), QString())

/// Links of network interfaces, with pairs of virtual interfaces of the kernel: "port0" and "port1" are those of the
/// board, "far0" and "far1" are the other ends of the cables.
class tst_BoardNetLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!enterEmptyNetwork())
            QSKIP("This test needs a network of its own: run it as root.");
    }

    void init()
    {
        events.clear();
        IP("link add port0 type veth peer name far0");
        IP("link set port0 up");
        configuration = {};
        configuration.interfaces = QStringList{q("port0"), q("port1")};
    }

    void cleanup()
    {
        links.reset();
        ip("link del port0");
        ip("link del port1");
    }

    void linksOfTheStartAreReported()
    {
        IP("link add port1 type veth peer name far1");
        IP("link set port1 up");
        IP("link set far1 up");
        start();
        QCOMPARE(events, (QStringList{q("net2 linked")}));
        QVERIFY(!links->isLinked(0));
        QVERIFY(links->isLinked(1));
    }

    void missingInterfaceAndOneThatIsDownAreNamed()
    {
        IP("link set port0 down");
        start();
        QCOMPARE(events,
                 (QStringList{
                     q("net1 ") + q(DownProblem).arg(q("port0")),
                     q("net2 There is no network interface \"port1\". \"ip link\" lists those that there are."),
                 }));
    }

    void carrierChangesAreReported()
    {
        configuration.interfaces.removeLast();
        start();
        IP("link set far0 up");
        expect({q("net1 linked")});
        IP("link set far0 down");
        expect({q("net1 linked"), q("net1 open")});
    }

    void interfaceThatIsSwitchedOffHasNoLink()
    {
        configuration.interfaces.removeLast();
        IP("link set far0 up");
        start();
        IP("link set port0 down");
        IP("link set port0 up");
        expect({q("net1 linked"), q("net1 ") + q(DownProblem).arg(q("port0")), q("net1 open"), q("net1 "),
                q("net1 linked")});
    }

    void interfaceAppearsAndDisappears()
    {
        start();
        events.clear();
        IP("link add port1 type veth peer name far1");
        IP("link set port1 up");
        IP("link set far1 up");
        expect({q("net2 ") + q(DownProblem).arg(q("port1")), q("net2 "), q("net2 linked")});
        events.clear();
        IP("link del port1");
        const QString missing =
            q("net2 There is no network interface \"port1\". \"ip link\" lists those that there are.");
        QVERIFY(pump(links->sources(), [&] { return events.contains(missing); }));
        QVERIFY(events.contains(q("net2 open")));
        QVERIFY(!links->isLinked(1));
    }

    void renamedInterfaceIsFoundByItsNewName()
    {
        IP("link set far0 up");
        start();
        events.clear();
        IP("link set port0 down");
        IP("link set port0 name port1");
        IP("link set port1 up");
        QVERIFY(pump(links->sources(), [&] { return links->isLinked(1); }));
        QVERIFY(!links->isLinked(0));
        QVERIFY(events.contains(
            q("net1 There is no network interface \"port0\". \"ip link\" lists those that there are.")));
        IP("link set port1 down");
        IP("link set port1 name port0");
        IP("link set port0 up");
        QVERIFY(pump(links->sources(), [&] { return links->isLinked(0); }));
    }

    // A bridge says that the interface has left it with the same message that says that an interface is gone.
    void leavingABridgeIsNoDisappearance()
    {
        configuration.interfaces.removeLast();
        IP("link set far0 up");
        start();
        if (!ip("link add bridge0 type bridge").isEmpty())
            QSKIP("The kernel has no bridges.");
        IP("link set port0 master bridge0");
        IP("link set port0 nomaster");
        IP("link del bridge0");
        IP("link set far0 down");
        expect({q("net1 linked"), q("net1 open")});
    }

    // The kernel drops messages if the buffer is full; then the state is read anew.
    void overrunLosesNothingThatLasts()
    {
        configuration.interfaces.removeLast();
        configuration.receiveBuffer = 4096;
        start();
        LinkSwitch far("far0");
        for (int change = 0; change < 200; ++change)
            QVERIFY(far.set(change % 2 == 0));
        QVERIFY(far.set(true));
        QVERIFY(pump(links->sources(), [&] { return links->isLinked(0); }));
        drain(links->sources());
        QVERIFY(links->isLinked(0));
        QVERIFY2(events.size() < 100, qPrintable(QString::number(events.size())));
        QVERIFY(far.set(false));
        QVERIFY(pump(links->sources(), [&] { return !links->isLinked(0); }));
    }

    // The interface itself is switched, because the kernel reports each of these changes by a message of its own.
    void burstIsReportedCompletely()
    {
        configuration.interfaces.removeLast();
        IP("link set far0 up");
        start();
        LinkSwitch port("port0");
        constexpr int Plugs = 5000;
        int changes = 0;
        bool isAlternating = true;
        onChange = [&](bool linked) { isAlternating = isAlternating && linked == (changes++ % 2 == 1); };
        const auto change = [&port](int count) {
            for (int index = 0; index < count; ++index) {
                if (!port.set(index % 2 == 1))
                    return false;
            }
            return true;
        };
        auto warmUp = std::async(std::launch::async, change, 200);
        QVERIFY(pump(links->sources(), [&] { return changes == 200; }));
        QVERIFY(warmUp.get());
        const int before = memoryInUse();
        auto sender = std::async(std::launch::async, change, 2 * Plugs);
        QElapsedTimer elapsed;
        elapsed.start();
        while (changes < 200 + 2 * Plugs && pump(links->sources(), [&, seen = changes] { return changes > seen; }))
            ;
        QVERIFY(sender.get());
        drain(links->sources());
        QCOMPARE(changes, 200 + 2 * Plugs);
        QVERIFY(isAlternating);
        QVERIFY(links->isLinked(0));
        const int growth = memoryInUse() - before;
        qInfo("10,000 changes in %lld ms, memory grew by %d KiB", elapsed.elapsed(), growth);
#if !defined(__SANITIZE_ADDRESS__) // the sanitizer keeps freed memory for a while
        QVERIFY2(growth < 2048, qPrintable(QString::number(growth)));
#endif
    }

private:
    void start()
    {
        onChange = {};
        links = std::make_unique<NetLinks>(
            configuration,
            NetLinks::Callbacks{[this](int port, bool linked) {
                                    if (onChange)
                                        return onChange(linked);
                                    events << q("net%1 %2").arg(port + 1).arg(linked ? q("linked") : q("open"));
                                },
                                [this](int port, const QString &problem) {
                                    if (!onChange)
                                        events << q("net%1 %2").arg(port + 1).arg(problem);
                                }});
        QString error;
        QVERIFY2(links->start(&error), qPrintable(error));
    }

    void expect(const QStringList &expected)
    {
        QVERIFY2(pump(links->sources(), [&] { return events.size() >= expected.size(); }),
                 qPrintable(events.join(QLatin1Char('\n'))));
        drain(links->sources());
        QCOMPARE(events, expected);
    }

    NetLinks::Configuration configuration;
    std::unique_ptr<NetLinks> links;
    std::function<void(bool linked)> onChange;
    QStringList events;
};

QTEST_GUILESS_MAIN(tst_BoardNetLinks)
#include "tst_boardnetlinks.moc"
