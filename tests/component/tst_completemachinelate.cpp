#include "calls.h"
#include "machinepage.h"
#include "machinetestfixture.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

#include <thread>

namespace {

const QString NetResult =
    QStringLiteral("phase title=[FCNet]; icon=NetTest; stepTitle=[FCTestComplete]; leftText=[FCNoPass]; "
                   "rightText=[FCPass]; left; status=NetPass; statusShown; mode=9");

/// Returns the titles and the buttons of the screens.
QStringList screens(const QStringList &made)
{
    return made.filter(QRegularExpression(QStringLiteral("^frame\\.(setTitle|setLeftBtnText|setRightBtnText|"
                                                         "setLeftBtnVisible|setRighttBtnVisible|log)\\(")));
}

const QStringList FailScreen =
    calls({"frame.log(Test failed, 0, 2)", "frame.setTitle([MachineMode])", "frame.setLeftBtnText([FCReTest])",
           "frame.setLeftBtnVisible(true)", "frame.setRighttBtnVisible(false)"});

QStringList verdictScreen(const char *title, const char *right = "frame.setRightBtnText([FCPass])")
{
    return calls({title, "frame.setLeftBtnText([FCNoPass])", right, "frame.setLeftBtnVisible(true)",
                  "frame.setRighttBtnVisible(true)"});
}

}

/// Events that the operator doesn't expect: reports on the fail screen, reports before the start, late keys.
class CompleteMachineLateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNetReportPutsTheResultOverTheFailScreen()
    {
        MachinePage page;
        failInNetPhase(page);
        page.operate.netReport({{0, true}, {1, true}});
        QCOMPARE(screens(page.take()), FailScreen + verdictScreen("frame.setTitle([FCNet])"));
    }

    void fromThereTheRightButtonLeadsOnWithTheRunFailed()
    {
        MachinePage page;
        failInNetPhase(page);
        page.operate.netReport({{0, true}, {1, true}});
        page.take();
        page.clickRight();
        QCOMPARE(screens(page.take()),
                 verdictScreen("frame.setTitle([FCNet])", "frame.setRightBtnText([FCAgeModeStartTest])"));
        page.clickRight();
        QCOMPARE(screens(page.take()), verdictScreen("frame.setTitle([FCNet])"));
        page.clickRight();
        QCOMPARE(screens(page.take()),
                 calls({"frame.log(Net port pass, 0, 2)"}) + verdictScreen("frame.setTitle([USBA])"));
        // The run is still failed, so the left button starts a re-test.
        page.clickLeft();
        QVERIFY(page.take().contains(QStringLiteral("frame.setTitle([FCScreenLight] 10%)")));
    }

    void fromThereTheLeftButtonTestsAgain()
    {
        MachinePage page;
        failInNetPhase(page);
        page.operate.netReport({{0, true}, {1, true}});
        page.take();
        page.clickLeft();
        QVERIFY(page.take().contains(QStringLiteral("frame.setTitle([FCScreenLight] 10%)")));
    }

    void aUsbReportPutsTheResultOverTheFailScreen()
    {
        MachinePage page;
        page.startAndPassTo(6);
        page.clickLeft();
        page.take();
        page.operate.usbReport({{1}});
        QCOMPARE(screens(page.take()), verdictScreen("frame.setTitle([USBA])"));
        page.clickRight();
        QCOMPARE(page.take(), QStringList());
        page.clickLeft();
        QVERIFY(page.take().contains(QStringLiteral("frame.setTitle([FCScreenLight] 10%)")));
    }

    void aNetReportBeforeTheStartOfALaterRunShowsTheVerdict()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(6);
        fixture.startAndPassTo(5);
        fixture.netReport({{0, true}, {1, true}});
        QCOMPARE(fixture.take(), QStringList{NetResult});
        fixture.right();
        const QStringList started = fixture.told();
        QCOMPARE(started.size(), 1);
        QVERIFY(
            started.first().startsWith(QStringLiteral("phase title=[FCNet]; icon=NetTest; stepTitle=[TestStep]; ")));
        QCOMPARE(fixture.biz->currentPhaseIndex(), 5);
    }

    void leftOnThatVerdictFailsOnce()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(6);
        fixture.startAndPassTo(5);
        fixture.netReport({{0, true}, {1, true}});
        fixture.take();
        fixture.left();
        QCOMPARE(fixture.take(), failure());
    }

    void aKeyEventOnItsWaySendsItsRecordBehindTheFailScreen()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(3);
        const auto listener = fixture.host.keyboard.listener();
        fixture.left();
        QCOMPARE(fixture.told(), failure() + failure());
        std::thread([&] { listener(10, 0, 0, {}, {}, {}); }).join();
        QCOMPARE(fixture.told(), calls({"phase noPassBlocked"}));
        QCOMPARE(fixture.biz->result(), 2);
    }

    void theLastKeyOnItsWayPutsTheVerdictOverTheFailScreen()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(3);
        fixture.host.keyboard.press(10);
        fixture.host.keyboard.press(27);
        const auto listener = fixture.host.keyboard.listener();
        fixture.left();
        fixture.take();
        std::thread([&] { listener(33, 0, 0, {}, {}, {}); }).join();
        QCOMPARE(fixture.told(),
                 QStringList{judgeScreenOf(QStringLiteral("[ButtonFunction]"), QStringLiteral("ButtonFunction"))});
        fixture.right();
        QCOMPARE(fixture.told().first(), QStringLiteral("log Button function pass"));
        QCOMPARE(fixture.biz->currentPhaseIndex(), 4);
        QCOMPARE(fixture.biz->result(), 2);
    }

private:
    static void failInNetPhase(MachinePage &page)
    {
        page.startAndPassTo(5);
        page.clickRight();
        page.clickLeft();
        page.take();
    }
};

VIRTUAL_TIME_TEST_MAIN(CompleteMachineLateTest)
#include "tst_completemachinelate.moc"
