#include "agetestfixture.h"
#include "agetestwidget.h"
#include "recordingframe.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

#include <atomic>
#include <thread>

using LCD::FactoryModeImpl::AgeTestWidget;

namespace {

/// Runs @p work on a std::thread, which has no event loop, and waits for it.
template <class Work>
void elsewhere(const Work &work)
{
    std::thread thread(work);
    thread.join();
}

/// A plain thread that reports a hundred times, as fast as it can.
class Reports
{
public:
    template <class Report>
    explicit Reports(const Report &report)
        : m_thread([this, report] {
              for (int number = 0; number < 100; ++number) {
                  report(number);
                  ++m_sent;
              }
          })
    {
    }
    void waitForAFew() const
    {
        while (m_sent < 5)
            std::this_thread::yield();
    }
    void join() { m_thread.join(); }

private:
    std::atomic<int> m_sent{0};
    std::thread m_thread;
};

QStringList stepLines(const QStringList &made)
{
    return made.filter(QRegularExpression(QStringLiteral("^white ")));
}

}

/// Link results from the threads of the host's services.
class AgeTestThreadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aResultFromAnotherThreadWaitsForTheLoop()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.take();
        elsewhere([&] { fixture.netChanged({{0, false}}); });
        QCOMPARE(fixture.take(), QStringList());
        VirtualTime::settle();
        const QStringList made = fixture.take();
        QCOMPARE(made.mid(0, 3), lines(QStringLiteral("[FCUSB]"), QStringLiteral(" [FCAgeNetNoPass]")));
        elsewhere([&] { fixture.usbChanged({{1}}); });
        VirtualTime::settle();
        QCOMPARE(fixture.take().mid(0, 3),
                 lines(QStringLiteral("[FCScreenLight]"), QStringLiteral(" [FCAgeNetNoPass]")));
        VirtualTime::advance(2000);
        QVERIFY(fixture.take().contains(QStringLiteral("keyboard.setScreenBrightness(0, 30)")));
    }

    void everyResultIsOneStep()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        elsewhere([&] {
            fixture.netChanged({});
            fixture.netChanged({});
        });
        VirtualTime::settle();
        fixture.take();
        VirtualTime::advance(2000);
        QVERIFY(fixture.take().contains(QStringLiteral("white [FCAging][FCScreenLight] 30%")));
    }

    void twoThreadsAtOnceLoseNoResult()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({});
        fixture.take();
        constexpr int Reports = 500;
        std::thread net([&] {
            for (int i = 0; i < Reports; ++i)
                fixture.netChanged({{0, i % 2 == 0}});
        });
        std::thread usb([&] {
            for (int i = 0; i < Reports; ++i)
                fixture.usbChanged({{0, 26, i % 2}});
        });
        net.join();
        usb.join();
        fixture.take();
        VirtualTime::settle();
        const QStringList steps = fixture.take().filter(QStringLiteral("white [FCAging]"));
        QCOMPARE(steps.size(), 2 * Reports);
        QCOMPARE(steps.last(), QStringLiteral("white [FCAging][FCUSB]"));
    }

    void aResultOnItsWayIsDroppedWithTheTest()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        elsewhere([&] { fixture.netChanged({{0, false}}); });
        fixture.biz.reset();
        fixture.take();
        VirtualTime::advance(10000);
        QCOMPARE(fixture.take(), QStringList());
    }

    void aPageMayGoWhileResultsPourIn()
    {
        for (int i = 0; i < 50; ++i) {
            RecordingHost host;
            recordFrameCalls(&host.calls);
            auto page = std::make_unique<AgeTestWidget>(nullptr);
            page->enterWindow();
            Q_EMIT frameOf(*page)->signalRightBtnClicked(false);
            VirtualTime::advance(76000);
            Reports reports([&](int number) {
                host.networkPort.changed.fire(RecordingNetworkPort::payload({{0, number % 2 == 0}}));
            });
            reports.waitForAFew();
            if (i % 2 == 0)
                VirtualTime::settle();
            page.reset();
            reports.join();
            recordFrameCalls(nullptr);
        }
    }

    void aResultFromAnotherThreadRevivesAStoppedTest()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.biz->stop();
        fixture.take();
        elsewhere([&] { fixture.netChanged({{0, false}}); });
        QCOMPARE(fixture.take(), QStringList());
        VirtualTime::settle();
        QCOMPARE(fixture.take().mid(0, 3),
                 lines(QStringLiteral("[FCScreenBadPixel]"), QStringLiteral(" [FCAgeNetNoPass]")));
        VirtualTime::advance(3000);
        QCOMPARE(fixture.take(), QStringList{QStringLiteral("keyboard.setLcdTestPattern(1, 2)")});
    }

    void aQueuedResultEndsTheFirstStepOfTheNextRun()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        elsewhere([&] { fixture.netChanged({{0, false}}); });
        fixture.biz->start();
        fixture.take();
        VirtualTime::settle();
        QCOMPARE(stepLines(fixture.take()), QStringList{QStringLiteral("white [FCAging][FCScreenBadPixel]")});
    }

    void aQueuedResultRevivesTheTestThatIsBeingStopped()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        elsewhere([&] { fixture.netChanged({{0, false}}); });
        fixture.biz->stop();
        fixture.take();
        VirtualTime::settle();
        QCOMPARE(fixture.take().mid(0, 3), lines(QStringLiteral("[FCScreenBadPixel]")));
        VirtualTime::advance(3000);
        QCOMPARE(fixture.take(), QStringList{QStringLiteral("keyboard.setLcdTestPattern(1, 2)")});
    }

    void startWhileResultsPourIn()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({});
        for (int i = 0; i < 50; ++i) {
            Reports net([&](int number) { fixture.netChanged({{0, number % 2 == 0}}); });
            Reports usb([&](int number) { fixture.usbChanged({{1, 26, number % 2}}); });
            net.waitForAFew();
            usb.waitForAFew();
            fixture.biz->start();
            VirtualTime::advance(1);
            net.join();
            usb.join();
        }
        VirtualTime::settle();
        fixture.biz->stop();
        fixture.take();
        fixture.biz->start();
        QCOMPARE(fixture.take().mid(0, 3), lines(QStringLiteral("[FCScreenLight] 10%")));
    }

    void stopAndRecountWhileResultsPourIn()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        for (int i = 0; i < 50; ++i) {
            Reports reports([&](int number) { fixture.netChanged({{0, number % 2 == 0}}); });
            reports.waitForAFew();
            fixture.biz->stop();
            fixture.biz->recount();
            VirtualTime::advance(1);
            reports.join();
        }
        VirtualTime::settle();
        fixture.biz->stop();
        fixture.take();
        VirtualTime::advance(100000);
        QCOMPARE(fixture.take(), QStringList());
    }
};

VIRTUAL_TIME_TEST_MAIN(AgeTestThreadsTest)
#include "tst_agetestthreads.moc"
