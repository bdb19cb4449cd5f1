#include "calls.h"
#include "machinepage.h"
#include "machinetestfixture.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

#include <thread>

using LCD::FactoryMode::INetworkPort;
using LCD::FactoryMode::IUSB;

namespace {

// Port services that deliver an event on another thread before the registration of the changed listener returns.

class NetAnsweringElsewhere final : public INetworkPort
{
public:
    void registerReportCallback(const std::string &, int, const std::function<void(std::any)> &) override {}
    void reserved() override {}
    void registerChangedCallback(const std::string &, int, const std::function<void(std::any)> &callback) override
    {
        std::thread([&] { callback(RecordingNetworkPort::payload({{0, true}, {1, true}})); }).join();
    }
};

class UsbAnsweringElsewhere final : public IUSB
{
public:
    void registerReportCallback(const std::string &, int, const std::function<void(std::any)> &) override {}
    void registerChangedCallback(const std::string &, int, const std::function<void(std::any)> &callback) override
    {
        std::thread([&] { callback(RecordingUsb::payload({{1}})); }).join();
    }
};

/// Returns the status icon of the last screen and whether it is visible.
QStringList statusCalls(const QStringList &made)
{
    return made.filter(QStringLiteral("frame.setStatusIcon"));
}

QString usbIcon(const QStringList &made)
{
    return made.value(0).section(QStringLiteral("status="), 1).section(QLatin1Char(';'), 0, 0);
}

}

/// Statements of docs/behavior.md about the complete machine test that no other test covers.
class BehaviorMachineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNetReportFromAnotherThreadDuringTheStartShowsItsIcon()
    {
        NetAnsweringElsewhere net;
        MachinePage page;
        page.host.offer("lcdMemoryCacheNetworkPort", static_cast<INetworkPort *>(&net));
        page.make();
        page.startAndPassTo(5);
        page.clickRight();
        QCOMPARE(statusCalls(page.take()), calls({"frame.setStatusIconVisible(false)"}));
        VirtualTime::settle();
        QCOMPARE(statusCalls(page.take()), calls({"frame.setStatusIcon(NetPass)", "frame.setStatusIconVisible(true)"}));
    }

    void aUsbReportFromAnotherThreadDuringTheStartShowsItsIcon()
    {
        UsbAnsweringElsewhere usb;
        MachinePage page;
        page.host.offer("lcdMemoryCacheNodeUSB", static_cast<IUSB *>(&usb));
        page.make();
        page.startAndPassTo(5);
        page.operate.bringToVerdict(5);
        page.take();
        page.clickRight();
        QCOMPARE(statusCalls(page.take()),
                 calls({"frame.setStatusIcon(UsbNoPass)", "frame.setStatusIconVisible(false)"}));
        VirtualTime::settle();
        QCOMPARE(statusCalls(page.take()), calls({"frame.setStatusIcon(UsbPass)", "frame.setStatusIconVisible(true)"}));
    }

    void thePatternStaysOnTheScreensWhenANetReportPassesItsPhase()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(6);
        fixture.startAndPassTo(1);
        fixture.right();
        QCOMPARE(fixture.take(), calls({"keyboard.setLcdTestPattern(1, 2)"}));
        fixture.netReport({{0, true}});
        QStringList made;
        while (fixture.biz->isRunning()) {
            made << fixture.take();
            fixture.bringToVerdict();
            fixture.right();
        }
        QVERIFY(made.contains(QStringLiteral("log Screen bad pixel pass")));
        QCOMPARE(made.filter(QStringLiteral("setLcdTestPattern")), QStringList());
    }

    void anyKeyEndsTheWalkAtItsLastKey()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(3);
        for (const unsigned key : {999U, 10U, 999U, 27U}) {
            fixture.host.keyboard.press(key);
            QVERIFY(!fixture.told().contains(
                judgeScreenOf(QStringLiteral("[ButtonFunction]"), QStringLiteral("ButtonFunction"))));
        }
        fixture.host.keyboard.press(999);
        QCOMPARE(fixture.told(),
                 QStringList{judgeScreenOf(QStringLiteral("[ButtonFunction]"), QStringLiteral("ButtonFunction"))});
    }

    void theWalkGoesOnAfterANetReportHasFailedTheRun()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.right();
        fixture.left();
        fixture.startAndPassTo(3);
        fixture.netReport({{0, true}});
        QCOMPARE(fixture.told(), failure());
        fixture.host.keyboard.press(10);
        QCOMPARE(fixture.told(), calls({"phase noPassBlocked"}));
        fixture.host.keyboard.press(27);
        fixture.host.keyboard.press(33);
        QCOMPARE(fixture.told().last(),
                 judgeScreenOf(QStringLiteral("[ButtonFunction]"), QStringLiteral("ButtonFunction")));
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 4);
        QCOMPARE(fixture.biz->result(), 2);
    }

    void theLeftButtonStopsTheWalk()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(3);
        fixture.left();
        fixture.take();
        fixture.pressKeys();
        QCOMPARE(fixture.take(), QStringList());
    }

    void aNetReportBeforeTheFirstStartOfTheNetTestIsNotHeard()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.netReport({{0, true}, {1, true}});
        QCOMPARE(fixture.take(), QStringList());
    }

    void aNetReportAfterAFailureBeforeTheStartAnnouncesNoFailure()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(6);
        fixture.startAndPassTo(5);
        fixture.left();
        QCOMPARE(fixture.take(), failure());
        fixture.netReport({{0, true}, {1, true}});
        const QStringList told = fixture.take();
        QCOMPARE(told.size(), 1);
        QVERIFY(told.first().contains(QStringLiteral("status=NetPass; statusShown")));
    }

    void aLinkReportCoversTheEntryScreenAfterAFailure_data()
    {
        QTest::addColumn<int>("phase");
        QTest::addColumn<QString>("title");
        QTest::newRow("net") << 5 << QStringLiteral("frame.setTitle([FCNet])");
        QTest::newRow("USB") << 6 << QStringLiteral("frame.setTitle([USBA])");
    }

    void aLinkReportCoversTheEntryScreenAfterAFailure()
    {
        QFETCH(const int, phase);
        QFETCH(const QString, title);
        MachinePage page;
        page.startAndPassTo(phase);
        page.operate.bringToVerdict(phase);
        page.clickLeft();
        page.goBack();
        page.enter();
        if (phase == 5)
            page.operate.netReport({{0, true}, {1, true}});
        else
            page.operate.usbReport({{1}});
        const QStringList made = page.take();
        QVERIFY(made.contains(title));
        QVERIFY(made.contains(QStringLiteral("frame.setStatusIconVisible(true)")));
        page.clickLeft();
        QCOMPARE(page.take(), QStringList());
        page.clickRight();
        QVERIFY(page.take().contains(QStringLiteral("frame.setTitle([FCScreenLight] 10%)")));
    }

    void aKnownUsbPortThatAReportLacksIsDown()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(6);
        fixture.usbReport({{1}, {2}});
        QCOMPARE(usbIcon(fixture.take()), QStringLiteral("UsbPass"));
        fixture.usbReport({{1}});
        QCOMPARE(usbIcon(fixture.take()), QStringLiteral("UsbNoPass"));
        fixture.usbReport({{1}, {2}});
        QCOMPARE(usbIcon(fixture.take()), QStringLiteral("UsbPass"));
    }

    void anEmptyUsbReportShowsTheNoPassIconOnceAPortIsKnown()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(6);
        fixture.usbReport({{1}});
        fixture.take();
        fixture.usbReport({});
        QCOMPARE(usbIcon(fixture.take()), QStringLiteral("UsbNoPass"));
    }

    void anEmptyNetReportIsIgnoredAlsoWhenPortsWereSeen()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.bringToVerdict();
        fixture.take();
        fixture.netReport({});
        QCOMPARE(fixture.take(), QStringList());
    }

    void aScreenWithoutATextLeavesTheOneBefore()
    {
        MachinePage page;
        page.startAndPassTo(4);
        page.clickLeft();
        QCOMPARE(page.take().filter(QStringLiteral("setRightBtnText")), QStringList());
        page.startAndPassTo(3);
        page.operate.bringToVerdict(3);
        page.take();
        page.clickRight();
        QCOMPARE(page.take().filter(QStringLiteral("setLeftBtnText")), QStringList());
    }

    void theIconOfANetPhaseIsSetBeforeItIsShown()
    {
        MachinePage page;
        page.startAndPassTo(4);
        page.operate.bringToVerdict(4);
        page.take();
        page.clickRight();
        QCOMPARE(statusCalls(page.take()),
                 calls({"frame.setStatusIcon(NetNormal)", "frame.setStatusIconVisible(false)"}));
    }

    void withoutAKeyboardServiceTheWalkCanOnlyBeFailed()
    {
        MachineTestFixture fixture;
        fixture.host.remove("lcdKeyboardEvent");
        fixture.make();
        fixture.startAndPassTo(2);
        QCOMPARE(fixture.pass().filter(QStringLiteral("keyboard.")), QStringList());
        QCOMPARE(fixture.biz->currentPhaseIndex(), 3);
        fixture.right();
        VirtualTime::advance(100000);
        QCOMPARE(fixture.told(), QStringList());
        fixture.left();
        QCOMPARE(fixture.told(), failure() + failure());
    }

    void withoutPortServicesNoIconIsShown()
    {
        MachinePage page;
        page.host.remove("lcdMemoryCacheNetworkPort");
        page.host.remove("lcdMemoryCacheNodeUSB");
        page.make();
        page.startAndPassTo(5);
        page.clickRight();
        page.clickRight();
        page.clickRight();
        QVERIFY(!page.take().contains(QStringLiteral("frame.setStatusIconVisible(true)")));
    }
};

VIRTUAL_TIME_TEST_MAIN(BehaviorMachineTest)
#include "tst_behaviormachine.moc"
