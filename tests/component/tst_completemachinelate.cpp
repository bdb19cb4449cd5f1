#include "calls.h"
#include "machinebench.h"
#include "machinepage.h"
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
        MachineBench bench;
        bench.startAndPassTo(6);
        bench.startAndPassTo(5);
        bench.netReport({{0, true}, {1, true}});
        QCOMPARE(bench.take(), QStringList{NetResult});
        bench.right();
        const QStringList started = bench.told();
        QCOMPARE(started.size(), 1);
        QVERIFY(
            started.first().startsWith(QStringLiteral("phase title=[FCNet]; icon=NetTest; stepTitle=[TestStep]; ")));
        QCOMPARE(bench.biz->currentPhaseIndex(), 5);
    }

    void leftOnThatVerdictFailsOnce()
    {
        MachineBench bench;
        bench.startAndPassTo(6);
        bench.startAndPassTo(5);
        bench.netReport({{0, true}, {1, true}});
        bench.take();
        bench.left();
        QCOMPARE(bench.take(), failure());
    }

    void aKeyEventOnItsWaySendsItsRecordBehindTheFailScreen()
    {
        MachineBench bench;
        bench.startAndPassTo(3);
        const auto listener = bench.host.keyboard.listener();
        bench.left();
        QCOMPARE(bench.told(), failure() + failure());
        std::thread([&] { listener(10, 0, 0, {}, {}, {}); }).join();
        QCOMPARE(bench.told(), calls({"phase noPassBlocked"}));
        QCOMPARE(bench.biz->result(), 2);
    }

    void theLastKeyOnItsWayPutsTheVerdictOverTheFailScreen()
    {
        MachineBench bench;
        bench.startAndPassTo(3);
        bench.host.keyboard.press(10);
        bench.host.keyboard.press(27);
        const auto listener = bench.host.keyboard.listener();
        bench.left();
        bench.take();
        std::thread([&] { listener(33, 0, 0, {}, {}, {}); }).join();
        QCOMPARE(bench.told(),
                 QStringList{judgeScreenOf(QStringLiteral("[ButtonFunction]"), QStringLiteral("ButtonFunction"))});
        bench.right();
        QCOMPARE(bench.told().first(), QStringLiteral("log Button function pass"));
        QCOMPARE(bench.biz->currentPhaseIndex(), 4);
        QCOMPARE(bench.biz->result(), 2);
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
