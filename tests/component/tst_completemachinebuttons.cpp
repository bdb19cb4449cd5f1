#include "calls.h"
#include "keytranslation.h"
#include "machinebench.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

#include <utility>

using LCD::FactoryModeImpl::CompleteMachinePhaseInfo;

namespace {

const QString NetRunning =
    QStringLiteral("phase title=[FCNet]; icon=NetTest; stepTitle=[TestStep]; steps=[FCNetConnectPort1Port2]; "
                   "leftText=[FCNoPass]; rightText=[FCPass]; left; mode=9");
const QString NetRetest =
    QStringLiteral("phase title=[FCNet]; icon=NetTest; stepTitle=[TestStep]; steps=[FCNetConnectPort1Port2]; "
                   "leftText=[FCNoPass]; rightText=[FCAgeModeStartTest]; left; mode=9");

const QStringList NetSubscriptions = calls({"networkPort.registerReportCallback(NetPortTestBiz, 2)",
                                            "networkPort.registerChangedCallback(NetPortTestBiz, 2)"});

/// Returns the keys of the translated texts in @p record.
QStringList translatedWords(const QString &record)
{
    static const QRegularExpression word(QStringLiteral("\\[([^\\]]+)\\]"));
    QStringList keys;
    for (auto match = word.globalMatch(record); match.hasNext();)
        keys << match.next().captured(1);
    return keys;
}

}

/// What the two soft buttons do in each phase and state.
class CompleteMachineButtonsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void buttonsDoNothingBeforeARun()
    {
        MachineBench bench;
        bench.left();
        bench.right();
        QCOMPARE(bench.take(), QStringList());
        QCOMPARE(bench.biz->currentPhaseIndex(), -1);
        QCOMPARE(bench.biz->result(), 0);
    }

    void buttonsDoNothingAfterAPass()
    {
        MachineBench bench;
        bench.startAndPassTo(11);
        bench.left();
        bench.right();
        QCOMPARE(bench.take(), QStringList());
        QCOMPARE(bench.biz->result(), 1);
    }

    void leftFailsThePhase_data()
    {
        QTest::addColumn<int>("phase");
        QTest::addColumn<bool>("atVerdict");
        QTest::addColumn<QStringList>("expected");
        const QStringList once = failure();
        const QStringList twice = failure() + failure();
        const QStringList clear = calls({"keyboard.setLcdTestPattern(0, 0)"});
        const QStringList dark = calls({"keyboard.setAllButtonBrightness(0)"});
        const QStringList unregistered = calls({"keyboard.registerKeyCallback(empty)"});
        QTest::newRow("0 while the levels run") << 0 << false << twice;
        QTest::newRow("0 on the verdict screen") << 0 << true << twice;
        QTest::newRow("1 while patterns show") << 1 << false << clear + twice;
        QTest::newRow("1 on the verdict screen") << 1 << true << clear + twice;
        QTest::newRow("2 while the levels run") << 2 << false << twice;
        QTest::newRow("2 on the verdict screen") << 2 << true << twice;
        QTest::newRow("3 during the key walk") << 3 << false << dark + once + unregistered + once;
        QTest::newRow("3 on the verdict screen") << 3 << true << once;
        QTest::newRow("4 at the first step") << 4 << false << twice;
        QTest::newRow("4 after the last step") << 4 << true << twice;
        QTest::newRow("5 before the start") << 5 << false << once;
        QTest::newRow("5 on the result screen") << 5 << true << twice;
        QTest::newRow("6") << 6 << false << twice;
        QTest::newRow("6 on the result screen") << 6 << true << twice;
        QTest::newRow("7") << 7 << false << once;
        QTest::newRow("9") << 9 << false << once;
        QTest::newRow("10") << 10 << false << once;
    }

    void leftFailsThePhase()
    {
        QFETCH(const int, phase);
        QFETCH(const QStringList, expected);
        MachineBench bench;
        bringToTheRow(bench);
        bench.take();
        bench.left();
        QCOMPARE(bench.take(), expected);
        QCOMPARE(bench.biz->currentPhaseIndex(), phase);
        QCOMPARE(bench.biz->result(), 2);
        VirtualTime::advance(100000);
        QCOMPARE(bench.take(), QStringList());
    }

    void leftWhileTheNetTestWaitsForAReport()
    {
        MachineBench bench;
        bench.startAndPassTo(5);
        bench.right();
        bench.take();
        bench.left();
        QCOMPARE(bench.take(), failure() + failure());
    }

    void leftASecondTime_data()
    {
        QTest::addColumn<int>("phase");
        QTest::addColumn<bool>("atVerdict");
        QTest::addColumn<QStringList>("expected");
        const QStringList once = failure();
        const QStringList twice = failure() + failure();
        const QStringList walk = calls({"keyboard.setAllButtonBrightness(0)"}) + once
            + calls({"keyboard.registerKeyCallback(empty)"}) + once;
        QTest::newRow("0") << 0 << false << twice;
        QTest::newRow("1") << 1 << false << calls({"keyboard.setLcdTestPattern(0, 0)"}) + twice;
        QTest::newRow("2") << 2 << false << twice;
        QTest::newRow("3 during the key walk") << 3 << false << walk;
        QTest::newRow("3 on the verdict screen") << 3 << true << walk;
        QTest::newRow("4") << 4 << false << twice;
        QTest::newRow("5 before the start") << 5 << false << once;
        QTest::newRow("5 on the result screen") << 5 << true << once;
        QTest::newRow("6") << 6 << false << once;
        QTest::newRow("7") << 7 << false << once;
        QTest::newRow("9") << 9 << false << once;
        QTest::newRow("10") << 10 << false << once;
    }

    void leftASecondTime()
    {
        QFETCH(const int, phase);
        QFETCH(const QStringList, expected);
        MachineBench bench;
        bringToTheRow(bench);
        bench.left();
        bench.take();
        bench.left();
        QCOMPARE(bench.take(), expected);
        QCOMPARE(bench.biz->currentPhaseIndex(), phase);
    }

    void rightAfterAFailure_data()
    {
        QTest::addColumn<int>("phase");
        QTest::addColumn<bool>("atVerdict");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<int>("then");
        QTest::addColumn<int>("result");
        const QString poe =
            QStringLiteral("phase title=[NET1POE]; icon=NetTest; stepTitle=[TestStep]; "
                           "steps=[FCNetPort1PowerStep1] | [FCNetPort1PowerStep2] | "
                           "[FCPleaseJudgePass]; leftText=[FCNoPass]; rightText=[FCPass]; left; mode=9");
        QTest::newRow("0 while the levels run") << 0 << false << QStringList() << 0 << 2;
        QTest::newRow("0 on the verdict screen") << 0 << true << QStringList() << 0 << 2;
        QTest::newRow("1") << 1 << false << calls({"keyboard.setLcdTestPattern(0, 0)"}) << 1 << 2;
        QTest::newRow("2 while the levels run") << 2 << false << QStringList() << 2 << 2;
        QTest::newRow("2 on the verdict screen") << 2 << true << QStringList() << 2 << 2;
        const QString bar = QStringLiteral(
            "phase title=T-Bar; icon=fc_tbar_slider; stepTitle=[TestStep]; steps=1.[Push T-Bar to Top] | "
            "2.[Push T-Bar to Bottom] | 3.[Push T-Bar to Top] | 4.[Push T-Bar to Bottom] | 5.[Push T-Bar to Top] | "
            "6.[Push T-Bar to Bottom]; rightText=[FCNextStep]; noStepTitle; keepSteps; mode=12");
        QTest::newRow("4") << 4 << false
                           << (calls({"keyboard.getTBarType()"})
                               << bar << QStringLiteral("tbar.setBarCalibration(0, 2, 0)"))
                           << 4 << 2;
        QTest::newRow("9") << 9 << false << (calls({"log Type-C power port pass"}) << poe) << 10 << 2;
        QTest::newRow("10") << 10 << false << (calls({"log Net port 1 POE power pass"}) << passScreen()) << 11 << 1;
    }

    void rightAfterAFailure()
    {
        QFETCH(const QStringList, expected);
        QFETCH(const int, then);
        QFETCH(const int, result);
        MachineBench bench;
        bringToTheRow(bench);
        bench.left();
        bench.take();
        bench.right();
        QCOMPARE(bench.take(), expected);
        QCOMPARE(bench.biz->currentPhaseIndex(), then);
        QCOMPARE(bench.biz->result(), result);
    }

    void rightInALevelPhaseWaitsForTheEnd_data()
    {
        QTest::addColumn<int>("phase");
        QTest::newRow("screens") << 0;
        QTest::newRow("keys") << 2;
    }

    void rightInALevelPhaseWaitsForTheEnd()
    {
        QFETCH(const int, phase);
        MachineBench bench;
        bench.startAndPassTo(phase);
        for (int tick = 0; tick < 10; ++tick) {
            bench.take();
            bench.right();
            QCOMPARE(bench.take(), QStringList());
            QCOMPARE(bench.biz->currentPhaseIndex(), phase);
            VirtualTime::advance(2000);
        }
        bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), phase + 1);
    }

    void rightDuringTheKeyWalkDoesNothing()
    {
        MachineBench bench;
        bench.startAndPassTo(3);
        bench.right();
        bench.host.keyboard.press(10);
        bench.take();
        bench.right();
        QCOMPARE(bench.take(), QStringList());
        QCOMPARE(bench.biz->currentPhaseIndex(), 3);
    }

    void rightAfterAFailedKeyWalkDoesNothing()
    {
        MachineBench bench;
        bench.startAndPassTo(3);
        bench.left();
        bench.take();
        bench.right();
        QCOMPARE(bench.take(), QStringList());
    }

    void rightOnTheVerdictOfTheKeyWalkTakesOnePress()
    {
        MachineBench bench;
        bench.startAndPassTo(3);
        bench.pressKeys();
        bench.left();
        bench.take();
        bench.right();
        QCOMPARE(bench.take(), QStringList());
        QCOMPARE(bench.biz->currentPhaseIndex(), 3);
    }

    void rightStartsTheNetTest()
    {
        MachineBench bench;
        bench.startAndPassTo(5);
        bench.right();
        QCOMPARE(bench.take(), NetSubscriptions + QStringList{NetRunning});
    }

    void rightPassesTheRunningNetTest()
    {
        MachineBench bench;
        bench.startAndPassTo(5);
        bench.right();
        bench.take();
        bench.right();
        QCOMPARE(bench.take().first(), QStringLiteral("log Net port pass"));
        QCOMPARE(bench.biz->currentPhaseIndex(), 6);
    }

    void rightAfterAFailedNetTestPreparesItAgain()
    {
        MachineBench bench;
        bench.startAndPassTo(5);
        bench.right();
        bench.left();
        bench.take();
        bench.right();
        QCOMPARE(bench.take(), QStringList{NetRetest});
        bench.right();
        QCOMPARE(bench.take(), NetSubscriptions + QStringList{NetRunning});
        bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), 6);
        QCOMPARE(bench.biz->result(), 2);
    }

    // The order of the screens: first the next phase, then the running screen of this phase.
    void aPressDuringTheStartOfTheNetTestIsFollowedByTheRunningScreen()
    {
        MachineBench bench;
        bench.startAndPassTo(5);
        bench.biz->registerPhaseCallback("zeta", [&](const LCD::FactoryModeImpl::CompleteMachinePhaseInfo &info) {
            if (!info.statusIconVisible)
                return;
            bench.host.networkPort.answerAtOnce.reset();
            bench.right();
        });
        bench.host.networkPort.answerAtOnce = RecordingNetworkPort::payload({{0, true}, {1, true}});
        bench.right();
        const QStringList told = bench.told();
        QCOMPARE(told.size(), 4);
        QVERIFY(told.at(0).contains(QStringLiteral("status=NetPass; statusShown")));
        QCOMPARE(told.at(1), QStringLiteral("log Net port pass"));
        QVERIFY(told.at(2).startsWith(QStringLiteral("phase title=[USBA];")));
        QCOMPARE(told.at(3), NetRunning);
        QCOMPARE(bench.biz->currentPhaseIndex(), 6);
    }

    void missingPortServicesDoNotMakeTheRunWait()
    {
        MachineBench bench;
        bench.host.remove("lcdMemoryCacheNetworkPort");
        bench.host.remove("lcdMemoryCacheNodeUSB");
        bench.make();
        bench.biz->start();
        while (bench.biz->currentPhaseIndex() < 5)
            bench.pass();
        bench.take();
        bench.right();
        QCOMPARE(bench.take(), QStringList{NetRunning});
        bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), 6);
        bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), 7);
        QCOMPARE(bench.log.warnings().filter(QStringLiteral("PortTestBiz")),
                 calls({"NetPortTestBiz: INetworkPort is null, cannot start test",
                        "UsbPortTestBiz: IUSB is null, cannot start test"}));
    }

    void rightPassesTheUsbTestOnlyWhileItRuns()
    {
        MachineBench bench;
        bench.startAndPassTo(6);
        bench.left();
        bench.take();
        bench.right();
        QCOMPARE(bench.take(), QStringList());
        QCOMPARE(bench.biz->currentPhaseIndex(), 6);
    }

    void rightAfterAFailureByEyeGoesOnAndCanStillPass()
    {
        MachineBench bench;
        bench.startAndPassTo(7);
        bench.left();
        bench.take();
        bench.right();
        QCOMPARE(bench.take().first(), QStringLiteral("log Type-C USB communication pass"));
        QCOMPARE(bench.biz->currentPhaseIndex(), 9);
        QCOMPARE(bench.biz->result(), 2);
        bench.right();
        bench.right();
        QCOMPARE(bench.take().last(), passScreen());
        QCOMPARE(bench.biz->result(), 1);
    }

    void theTBarGoesOnWithoutACalibrationServiceNowhere()
    {
        MachineBench bench;
        bench.host.remove("lcdTBarCalibration");
        bench.make();
        bench.startAndPassTo(3);
        bench.pass();
        QCOMPARE(bench.biz->currentPhaseIndex(), 4);
        repeat(10, [&] { bench.right(); });
        QCOMPARE(bench.told(), QStringList());
        QCOMPARE(bench.biz->currentPhaseIndex(), 4);
    }

    void aFailedCalibrationStillPassesThePhase()
    {
        MachineBench bench;
        bench.startAndPassTo(4);
        bench.bringToVerdict();
        bench.log.clear();
        for (const auto &result : bench.host.tbarCalibration.results)
            result(false, "no answer");
        QCOMPARE(bench.log.warnings(), calls({"[TbarTestBiz] T-Bar calibration end failed"}));
        bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), 5);
    }

    void theKeyWalkNeedsItsList()
    {
        MachineBench bench;
        bench.menu.load({});
        bench.startAndPassTo(2);
        bench.pass();
        QCOMPARE(bench.biz->currentPhaseIndex(), 3);
        bench.pressKeys();
        bench.take();
        bench.right();
        QCOMPARE(bench.take(), QStringList());
        bench.left();
        QCOMPARE(bench.told(), failure() + failure());
    }

    void onlyTextsOfTheRecordAreLookedUp()
    {
        MachineBench bench;
        QStringList differences;
        int records = 0;
        QStringList lookedUpSoFar;
        bench.biz->registerPhaseCallback("texts", [&](const CompleteMachinePhaseInfo &info) {
            QStringList shown = translatedWords(describe(info));
            QStringList lookedUp = std::exchange(lookedUpSoFar, {});
            shown.sort();
            lookedUp.sort();
            ++records;
            if (lookedUp != shown)
                differences << QStringLiteral("%1 for %2").arg(lookedUp.join(QStringLiteral(", ")), describe(info));
        });
        recordLookedUpKeys(&lookedUpSoFar);
        bench.startAndPassTo(5);
        bench.right(); // net test runs
        bench.left();  // failed
        bench.right(); // set back
        while (bench.biz->currentPhaseIndex() < 11)
            bench.pass();
        recordLookedUpKeys(nullptr);
        QCOMPARE(differences, QStringList());
        QVERIFY(records > 40);
    }

    void theFailScreenIsTranslatedAfterTheLogLine_data()
    {
        QTest::addColumn<int>("phase");
        QTest::addColumn<int>("failures");
        QTest::newRow("by the button alone") << 7 << 1;
        QTest::newRow("by the test and the button") << 1 << 2;
    }

    void theFailScreenIsTranslatedAfterTheLogLine()
    {
        QFETCH(const int, phase);
        QFETCH(const int, failures);
        MachineBench bench;
        QStringList lookedUp;
        bench.startAndPassTo(phase);
        bench.biz->registerLogCallback("keys", [&lookedUp](const QString &line) { lookedUp << line; });
        recordLookedUpKeys(&lookedUp);
        bench.left();
        recordLookedUpKeys(nullptr);
        const QStringList once = calls({"Test failed", "MachineMode", "FCTestComplete", "FCNoPass", "FCReTest"});
        QCOMPARE(lookedUp, failures == 1 ? once : once + once);
    }

    void theCaptionsAreTranslatedFromLeftToRight()
    {
        MachineBench bench;
        QStringList lookedUp;
        bench.startAndPassTo(5);
        recordLookedUpKeys(&lookedUp);
        bench.right();
        QCOMPARE(std::exchange(lookedUp, {}),
                 calls({"FCNet", "TestStep", "FCNetConnectPort1Port2", "FCNoPass", "FCPass"}));
        bench.netReport({{0, true}, {1, true}});
        QCOMPARE(std::exchange(lookedUp, {}), calls({"FCNet", "FCTestComplete", "FCNoPass", "FCPass"}));
        bench.right();
        recordLookedUpKeys(nullptr);
        QCOMPARE(lookedUp, calls({"USBA", "TestStep", "FCUSB30TestStep", "FCNoPass", "FCPass"}));
    }

private:
    /// Passes the phases before that of the current data row, and brings that phase to its verdict if the row says so.
    static void bringToTheRow(MachineBench &bench)
    {
        QFETCH(const int, phase);
        QFETCH(const bool, atVerdict);
        bench.startAndPassTo(phase);
        if (atVerdict)
            bench.bringToVerdict();
    }
};

VIRTUAL_TIME_TEST_MAIN(CompleteMachineButtonsTest)
#include "tst_completemachinebuttons.moc"
