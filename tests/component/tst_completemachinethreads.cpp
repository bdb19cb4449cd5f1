#include "calls.h"
#include "machinepage.h"
#include "machinetestfixture.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

#include <atomic>
#include <thread>

namespace {

/// Runs @p work on a std::thread, which has no event loop, and waits for it.
template <class Work>
void elsewhere(const Work &work)
{
    std::thread thread(work);
    thread.join();
}

/// Calls a function once, just before the next timer event is delivered.
class BeforeTheTick : public QObject
{
public:
    explicit BeforeTheTick(std::function<void()> action) : m_action(std::move(action))
    {
        qApp->installEventFilter(this);
    }
    bool done() const { return m_done; }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (!m_done && event->type() == QEvent::Timer && qobject_cast<QTimer *>(watched)) {
            m_done = true;
            m_action();
        }
        return false;
    }

private:
    const std::function<void()> m_action;
    bool m_done = false;
};

QStringList frameCalls(const QStringList &made)
{
    return made.filter(QRegularExpression(QStringLiteral("^frame\\.")));
}

}

/// Reports on the threads of the host's services, valid and invalid ones.
class CompleteMachineThreadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRecordFromAnotherThreadWaitsForTheLoop()
    {
        MachinePage page;
        page.startAndPassTo(6);
        elsewhere([&] { page.operate.usbReport({{1}}); });
        QCOMPARE(page.take(), QStringList());
        VirtualTime::settle();
        const QStringList made = page.take();
        QCOMPARE(made.first(), QStringLiteral("frame.setTitle([USBA])"));
        QVERIFY(made.contains(QStringLiteral("frame.setStatusIcon(UsbPass)")));
        QVERIFY(made.filter(QStringLiteral("another thread")).isEmpty());
    }

    void aNetResultFromAnotherThreadWaitsForTheLoop()
    {
        MachinePage page;
        page.startAndPassTo(5);
        page.clickRight();
        page.take();
        elsewhere([&] { page.operate.netReport({{0, true}, {1, true}}); });
        QCOMPARE(page.take(), QStringList());
        VirtualTime::settle();
        const QStringList made = page.take();
        QVERIFY(made.contains(QStringLiteral("frame.setStatusIcon(NetPass)")));
        QCOMPARE(made.last(), QStringLiteral("keyboard.setFactoryPanelMode(9)"));
        QVERIFY(made.filter(QStringLiteral("another thread")).isEmpty());
    }

    void reportsFromAnotherThreadDoTheSame_data() { addPhases(); }

    void reportsFromAnotherThreadDoTheSame()
    {
        QFETCH(const int, phase);
        QStringList made[2];
        for (const bool foreign : {false, true}) {
            MachineTestFixture fixture;
            fixture.startAndPassTo(11);
            fixture.startAndPassTo(phase);
            const auto report = [&] {
                fixture.usbReport({{1}, {2}});
                fixture.netReport({{0, true}, {1, true}});
            };
            if (foreign)
                elsewhere(report);
            else
                report();
            made[foreign] = fixture.take() << QString::number(fixture.biz->currentPhaseIndex());
            VirtualTime::settle();
            VirtualTime::advance(2000);
            made[foreign] << fixture.take();
        }
        QCOMPARE(made[1], made[0]);
    }

    void aTickThatIsDueAfterAFailureElsewhereDoesNothing_data()
    {
        QTest::addColumn<int>("phase");
        QTest::addColumn<int>("before");
        QTest::newRow("screens, a tick on the way") << 0 << 5999;
        QTest::newRow("screens, the last tick") << 0 << 19999;
        QTest::newRow("keys, a tick on the way") << 2 << 5999;
        QTest::newRow("keys, the last tick") << 2 << 19999;
    }

    void aTickThatIsDueAfterAFailureElsewhereDoesNothing()
    {
        QFETCH(const int, phase);
        QFETCH(const int, before);
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.right();
        fixture.left();
        fixture.startAndPassTo(phase);
        VirtualTime::advance(before);
        fixture.take();
        BeforeTheTick failure([&] { elsewhere([&] { fixture.netReport({{0, true}}); }); });
        VirtualTime::advance(1);
        QVERIFY(failure.done());
        QCOMPARE(fixture.take(), ::failure());
        VirtualTime::advance(100000);
        QCOMPARE(fixture.take(), QStringList());
    }

    void startWhileReportsPourIn()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(6);
        fixture.biz->start();
        for (int i = 0; i < 50; ++i) {
            std::atomic<int> sent{0};
            std::thread service([&] {
                for (int number = 0; number < 100; ++number) {
                    fixture.netReport({{0, number % 2 == 0}});
                    fixture.usbReport({{1, 26, number % 2}});
                    ++sent;
                }
            });
            while (sent < 5)
                std::this_thread::yield();
            fixture.biz->start();
            service.join();
        }
        QCOMPARE(fixture.biz->currentPhaseIndex(), 0);
        QCOMPARE(fixture.biz->result(), 0);
    }

    void recordsKeepTheirOrder()
    {
        MachinePage page;
        page.startAndPassTo(6);
        elsewhere([&] {
            for (int i = 0; i < 100; ++i)
                page.operate.usbReport({{1, 26, i % 2}});
        });
        VirtualTime::settle();
        const QStringList icons = page.take().filter(QStringLiteral("frame.setStatusIcon("));
        QCOMPARE(icons.size(), 100);
        for (int i = 0; i < 100; ++i)
            QCOMPARE(icons.at(i),
                     i % 2 == 0 ? QStringLiteral("frame.setStatusIcon(UsbNoPass)")
                                : QStringLiteral("frame.setStatusIcon(UsbPass)"));
    }

    void recordsAreDroppedWithThePage()
    {
        MachinePage page;
        page.startAndPassTo(6);
        elsewhere([&] { page.operate.usbReport({{1}}); });
        page.widget.reset();
        page.take();
        VirtualTime::settle();
        QCOMPARE(page.take(), QStringList());
    }

    void aKeyWalkFromAnotherThreadEndsOnTheVerdictScreen()
    {
        MachinePage page;
        page.startAndPassTo(3);
        elsewhere([&] { page.operate.pressKeys(); });
        const QStringList atOnce = page.take();
        QCOMPARE(frameCalls(atOnce), QStringList());
        QCOMPARE(atOnce.last(), QStringLiteral("keyboard.setAllButtonBrightness(0)"));
        VirtualTime::settle();
        const QStringList later = frameCalls(page.take());
        QCOMPARE(later.mid(0, 3),
                 calls({"frame.setNoPassButtonCanClicked(false)", "frame.setNoPassButtonCanClicked(true)",
                        "frame.setTitle([ButtonFunction])"}));
        page.clickRight();
        QCOMPARE(page.take().first(), QStringLiteral("frame.log(Button function pass, 0, 2)"));
    }

    void theLogOfALateReportComesOnItsOwnThread()
    {
        MachinePage page;
        page.startAndPassTo(6);
        elsewhere([&] { page.operate.netReport({{0, true}}); });
        QCOMPARE(page.take(), calls({"frame.log(USB port pass, 0, 2) on another thread"}));
        VirtualTime::settle();
        QVERIFY(page.take().contains(QStringLiteral("frame.setTitle([TypecCommuication])")));
    }

    void aLateReportThatPassesThePatternsStartsTheLightTimer()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(11);
        fixture.startAndPassTo(1);
        elsewhere([&] { fixture.netReport({{0, true}}); });
        QCOMPARE(fixture.biz->currentPhaseIndex(), 2);
        VirtualTime::settle();
        fixture.take();
        VirtualTime::advance(2000);
        QVERIFY(fixture.told().value(0).startsWith(QStringLiteral("phase title=[FCBtnLight] 30%")));
        QCOMPARE(fixture.log.warnings().filter(QStringLiteral("Timer")), QStringList());
    }

    void aLateReportThatFailsTheLevelsStopsTheirTimer()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.right();
        fixture.left();
        fixture.startAndPassTo(0);
        elsewhere([&] { fixture.netReport({{0, true}}); });
        QCOMPARE(fixture.take(), failure());
        VirtualTime::settle();
        VirtualTime::advance(100000);
        QCOMPARE(fixture.take(), QStringList());
        QCOMPARE(fixture.log.warnings().filter(QStringLiteral("Timer")), QStringList());
    }

    void aStopThatComesLateDoesNotStopTheNextRun()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.right();
        fixture.left();
        fixture.startAndPassTo(0);
        elsewhere([&] { fixture.netReport({{0, true}}); });
        fixture.biz->start();
        fixture.take();
        VirtualTime::advance(2000);
        QVERIFY(fixture.told().value(0).startsWith(QStringLiteral("phase title=[FCScreenLight] 30%")));
    }

    void wrongReportsAtEveryMoment_data() { addPhases(); }

    void wrongReportsAtEveryMoment()
    {
        QFETCH(const int, phase);
        MachinePage page;
        page.startAndPassTo(11);
        page.startAndPassTo(phase);
        elsewhere([&] {
            for (const std::any &payload :
                 {std::any(), std::any(42), std::any(std::shared_ptr<std::vector<LCD::ProtocolImpl::s_NodeUSB>>()),
                  std::any(std::shared_ptr<std::vector<LCD::ProtocolImpl::s_NetworkPortLink>>())}) {
                page.host.networkPort.report.fire(payload);
                page.host.networkPort.changed.fire(payload);
                page.host.usb.report.fire(payload);
                page.host.usb.changed.fire(payload);
            }
            page.host.usb.changed.fire(RecordingUsb::payload({{1, 7}}));
            page.host.tbarCalibration.listener.fire(LCD::ProtocolImpl::s_BarCalibration());
            page.host.keyboard.press(12345);
        });
        VirtualTime::settle();
        QCOMPARE(frameCalls(page.take()), QStringList());
    }

    void aPageMayGoWhileReportsPourIn()
    {
        for (int i = 0; i < 30; ++i) {
            MachinePage page;
            page.startAndPassTo(6);
            std::atomic<int> sent{0};
            std::thread service([&] {
                for (int number = 0; number < 100; ++number) {
                    page.operate.usbReport({{1, 26, number % 2}});
                    ++sent;
                }
            });
            while (sent < 5)
                std::this_thread::yield();
            if (i % 2 == 0)
                VirtualTime::settle();
            page.widget.reset();
            service.join();
        }
    }

    void keysMayComeWhileTheOperatorFailsThePhase()
    {
        for (int i = 0; i < 30; ++i) {
            MachinePage page;
            page.startAndPassTo(3);
            std::atomic<bool> begun{false};
            std::thread service([&] {
                begun = true;
                page.operate.pressKeys();
            });
            while (!begun)
                std::this_thread::yield();
            page.clickLeft();
            service.join();
            VirtualTime::settle();
            page.take();
            page.clickLeft();
            VirtualTime::settle();
            QVERIFY(!page.take().isEmpty());
        }
    }

private:
    static void addPhases()
    {
        QTest::addColumn<int>("phase");
        for (const int phase : {0, 1, 2, 3, 4, 5, 6, 7, 9, 10, 11})
            QTest::addRow("phase %d", phase) << phase;
    }
};

VIRTUAL_TIME_TEST_MAIN(CompleteMachineThreadsTest)
#include "tst_completemachinethreads.moc"
