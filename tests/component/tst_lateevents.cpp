#include "buttonfunctionbiz.h"
#include "emulation.h"
#include "netporttestbiz.h"
#include "singletestsupport.h"
#include "tbartestbiz.h"
#include "usbporttestbiz.h"

#include <QtCore/QProcess>

#include <atomic>
#include <memory>
#include <thread>

using namespace LCD::FactoryModeImpl;

namespace {

constexpr int Rounds = 15;
constexpr int EventsPerRound = 20;
constexpr int ThreadCount = 3;

/// Threads that deliver one event again and again until this object is deleted.
class Storm
{
public:
    explicit Storm(const std::function<void()> &event)
    {
        for (int i = 0; i < ThreadCount; ++i) {
            m_threads.emplace_back([this, event] {
                while (!m_over) {
                    event();
                    ++m_fired;
                }
            });
        }
    }
    ~Storm()
    {
        m_over = true;
        for (std::thread &thread : m_threads)
            thread.join();
    }
    Storm(const Storm &) = delete;
    Storm &operator=(const Storm &) = delete;

    void letPass(int events) const
    {
        const int enough = m_fired + events;
        while (m_fired < enough)
            std::this_thread::yield();
    }

private:
    std::atomic<bool> m_over = false;
    std::atomic<int> m_fired = 0;
    std::vector<std::thread> m_threads;
};

/// Counts the calls of a listener, and those calls that came after the object was deleted.
struct Witness
{
    std::function<void()> listener()
    {
        return [this] {
            ++heard;
            if (!alive)
                ++late;
        };
    }

    std::atomic<bool> alive = false;
    std::atomic<int> heard = 0;
    std::atomic<int> late = 0;
};

void watch(NetPortTestBiz &biz, const std::function<void()> &listener)
{
    biz.registerLinkStatusCallback("driver", [listener](const std::vector<bool> &, bool) { listener(); });
    biz.setCurRequester("driver");
}

void watch(UsbPortTestBiz &biz, const std::function<void()> &listener)
{
    biz.registerLinkStatusCallback("driver", [listener](const std::vector<bool> &) { listener(); });
    biz.setCurRequester("driver");
}

void watch(ButtonFunctionBiz &biz, const std::function<void()> &listener)
{
    biz.registerCurrentKeyUnderTestCallback("driver", [listener](unsigned, const std::string &) { listener(); });
}

void watch(TbarTestBiz &biz, const std::function<void()> &listener)
{
    biz.registerStateCallback("driver", [listener](int) { listener(); });
}

/// Creates an object and deletes it while events are delivered. Repeats this many times.
template <class Biz>
void destroyInStorm(const std::function<void()> &event, Witness &witness)
{
    const Storm storm(event);
    repeat(Rounds, [&] {
        witness.alive = true;
        {
            Biz biz;
            watch(biz, witness.listener());
            biz.enter();
            biz.startTest();
            storm.letPass(EventsPerRound);
        }
        witness.alive = false;
        storm.letPass(EventsPerRound);
        QCoreApplication::sendPostedEvents();
    });
}

/// A port test whose service delivers a wrong payload when this object is deleted.
class LastReport
{
public:
    LastReport() { m_net.startTest(); }
    ~LastReport() { m_host.networkPort.changed.fire(std::any()); }
    LastReport(const LastReport &) = delete;
    LastReport &operator=(const LastReport &) = delete;

private:
    RecordingHost m_host;
    NetPortTestBiz m_net;
};

constexpr const char *ReportAfterMain = "--report-after-main";

// Deleted at the end of the process: after Qt's objects, which were created later.
std::unique_ptr<LastReport> lastReport;

int reportAfterMain(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    qInfo("before the end of main");
    lastReport = std::make_unique<LastReport>();
    return 0;
}

}

class LateEventsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void afterDestruction_data() { addOrigins(); }

    void afterDestruction()
    {
        const LogCapture log;
        RecordingHost host;
        const KeyListWidget widget(host, {{1, QStringLiteral("A")}, {2, QStringLiteral("B")}});
        Witness witness;
        witness.alive = true;
        LCD::FactoryMode::KeyListener keyListener;
        {
            NetPortTestBiz net;
            UsbPortTestBiz usb;
            ButtonFunctionBiz button;
            TbarTestBiz tbar;
            startAll(witness, net, usb, button, tbar);
            tbar.requestNextStep();
            keyListener = host.keyboard.listener();
        }
        witness.alive = false;
        host.calls.clear();

        runOn(fetchOrigin(), [&] {
            host.networkPort.report.fire(RecordingNetworkPort::payload({{0, true}}));
            host.networkPort.changed.fire(RecordingNetworkPort::payload({{0, true}}));
            host.networkPort.changed.fire(std::any());
            host.usb.report.fire(RecordingUsb::payload({{0}}));
            host.usb.changed.fire(RecordingUsb::payload({{0}}));
            keyListener(1, 0, 0, {}, {}, {});
            host.tbarCalibration.listener.fire(LCD::ProtocolImpl::s_BarCalibration());
            host.tbarCalibration.results.at(0)(true, {});
        });
        QCoreApplication::sendPostedEvents();
        QCOMPARE(witness.late.load(), 0);
        QCOMPARE(host.calls.take(), QStringList());
        QCOMPARE(log.warnings().filter(QStringLiteral("PortTestBiz")), QStringList());
    }

    void lastCompletionAfterDestructionIsNotLogged()
    {
        RecordingHost host;
        {
            TbarTestBiz tbar;
            repeat(7, [&] { tbar.requestNextStep(); });
        }
        const LogCapture log;
        host.tbarCalibration.results.at(6)(false, {});
        QCOMPARE(log.lines(), QStringList());
    }

    // Qt has deleted its default category at this time.
    void aReportAfterMainIsLogged()
    {
        SKIP_IF_EMULATED();
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {QLatin1String(ReportAfterMain)});
        QVERIFY2(process.waitForFinished(120000), qPrintable(process.errorString()));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
        const QStringList lines =
            QString::fromUtf8(process.readAllStandardError()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines.first(), QStringLiteral("before the end of main"));
        QVERIFY2(lines.last().startsWith(QStringLiteral("NetPortTestBiz: need type ")), qPrintable(lines.last()));
    }

    void netReportsDuringDestruction()
    {
        RecordingHost host;
        Witness witness;
        const std::any payload = RecordingNetworkPort::payload({{0, true}, {7, true}});
        destroyInStorm<NetPortTestBiz>([&] { host.networkPort.changed.fire(payload); }, witness);
        QVERIFY(witness.heard > 0);
        QCOMPARE(witness.late.load(), 0);
    }

    void usbReportsDuringDestruction()
    {
        RecordingHost host;
        Witness witness;
        const std::any payload = RecordingUsb::payload({{0}, {7}});
        destroyInStorm<UsbPortTestBiz>([&] { host.usb.report.fire(payload); }, witness);
        QVERIFY(witness.heard > 0);
        QCOMPARE(witness.late.load(), 0);
    }

    void keyEventsDuringDestruction()
    {
        const LogCapture quiet;
        RecordingHost host;
        const KeyListWidget widget(host,
                                   {{1, QStringLiteral("A")}, {1, QStringLiteral("B")}, {1, QStringLiteral("C")}});
        Witness witness;
        destroyInStorm<ButtonFunctionBiz>([&] { host.keyboard.press(1); }, witness);
        QVERIFY(witness.heard > Rounds);
        QCOMPARE(witness.late.load(), 0);
    }

    void calibrationReportsDuringDestruction()
    {
        RecordingHost host;
        Witness witness;
        destroyInStorm<TbarTestBiz>([&] { host.tbarCalibration.listener.fire(LCD::ProtocolImpl::s_BarCalibration()); },
                                    witness);
        QCOMPARE(witness.late.load(), 0);
    }

    // The owner restarts the key walk again and again while keys are pressed.
    void keyEventsWhileTheListenerIsReplaced()
    {
        const LogCapture quiet;
        RecordingHost host;
        const KeyListWidget widget(host,
                                   {{1, QStringLiteral("A")}, {1, QStringLiteral("CUT")}, {1, QStringLiteral("C")}});
        ButtonFunctionBiz biz;
        std::atomic<int> ends = 0;
        biz.registerStateCallback("driver", [&ends](int state, int) { ends += state == 101 ? 1 : 0; });
        const Storm storm([&] { host.keyboard.press(1); });
        repeat(Rounds, [&] {
            biz.enter();
            biz.startTest();
            storm.letPass(EventsPerRound);
            biz.skipCurrentStep();
            biz.setPass();
        });
        QVERIFY(ends > 0);
    }

    void reportsOnSeveralThreadsWhileTheOwnerAsks()
    {
        RecordingHost host;
        UsbPortTestBiz usb;
        NetPortTestBiz net;
        net.startTest();
        usb.startTest();
        const std::any links = RecordingNetworkPort::payload({{0, true}, {100, true}});
        const std::any nodes = RecordingUsb::payload({{1}, {2}, {3}});
        {
            const Storm storm([&] {
                host.networkPort.changed.fire(links);
                host.usb.changed.fire(nodes);
            });
            repeat(Rounds, [&] {
                storm.letPass(EventsPerRound);
                net.isAllLinked();
                usb.isAllLinked();
                net.portCount();
                usb.portCount();
                net.reTest();
                usb.reTest();
            });
            storm.letPass(EventsPerRound);
        }
        QCOMPARE(net.portCount(), 101);
        QCOMPARE(usb.portCount(), 3);
        QVERIFY(usb.isAllLinked());
    }

    // A slow listener on one thread must not block an event on another thread.
    void listenersOnTwoThreadsDoNotWaitForEachOther()
    {
        RecordingHost host;
        NetPortTestBiz net;
        std::atomic<int> inside = 0;
        watch(net, [&inside] {
            ++inside;
            while (inside < 2)
                std::this_thread::yield();
        });
        net.startTest();
        const std::any payload = RecordingNetworkPort::payload({{0, true}});
        const auto fire = [&] { host.networkPort.changed.fire(payload); };
        std::thread first(fire);
        std::thread second(fire);
        first.join();
        second.join();
        QCOMPARE(inside.load(), 2);
    }

    void listenerMayDestroyTheTest()
    {
        RecordingHost host;
        auto net = std::make_unique<NetPortTestBiz>();
        watch(*net, [&net] { net.reset(); });
        net->startTest();
        host.networkPort.changed.fire(RecordingNetworkPort::payload({{0, true}}));
        QVERIFY(!net);
        host.networkPort.changed.fire(RecordingNetworkPort::payload({{0, true}}));
    }

private:
    template <class... Biz>
    static void startAll(Witness &witness, Biz &...biz)
    {
        (watch(biz, witness.listener()), ...);
        (biz.enter(), ...);
        (biz.startTest(), ...);
    }
};

int main(int argc, char *argv[])
{
    if (argc == 2 && qstrcmp(argv[1], ReportAfterMain) == 0)
        return reportAfterMain(argc, argv);
    QTEST_MAIN_IMPL(LateEventsTest)
}

#include "tst_lateevents.moc"
