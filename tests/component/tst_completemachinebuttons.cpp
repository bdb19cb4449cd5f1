#include "calls.h"
#include "keytranslation.h"
#include "machinetestfixture.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

#include <stdexcept>
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
        MachineTestFixture fixture;
        fixture.left();
        fixture.right();
        QCOMPARE(fixture.take(), QStringList());
        QCOMPARE(fixture.biz->currentPhaseIndex(), -1);
        QCOMPARE(fixture.biz->result(), 0);
    }

    void buttonsDoNothingAfterAPass()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(11);
        fixture.left();
        fixture.right();
        QCOMPARE(fixture.take(), QStringList());
        QCOMPARE(fixture.biz->result(), 1);
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
        MachineTestFixture fixture;
        bringToTheRow(fixture);
        fixture.take();
        fixture.left();
        QCOMPARE(fixture.take(), expected);
        QCOMPARE(fixture.biz->currentPhaseIndex(), phase);
        QCOMPARE(fixture.biz->result(), 2);
        VirtualTime::advance(100000);
        QCOMPARE(fixture.take(), QStringList());
    }

    void leftWhileTheNetTestWaitsForAReport()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.right();
        fixture.take();
        fixture.left();
        QCOMPARE(fixture.take(), failure() + failure());
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
        MachineTestFixture fixture;
        bringToTheRow(fixture);
        fixture.left();
        fixture.take();
        fixture.left();
        QCOMPARE(fixture.take(), expected);
        QCOMPARE(fixture.biz->currentPhaseIndex(), phase);
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
        MachineTestFixture fixture;
        bringToTheRow(fixture);
        fixture.left();
        fixture.take();
        fixture.right();
        QCOMPARE(fixture.take(), expected);
        QCOMPARE(fixture.biz->currentPhaseIndex(), then);
        QCOMPARE(fixture.biz->result(), result);
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
        MachineTestFixture fixture;
        fixture.startAndPassTo(phase);
        for (int tick = 0; tick < 10; ++tick) {
            fixture.take();
            fixture.right();
            QCOMPARE(fixture.take(), QStringList());
            QCOMPARE(fixture.biz->currentPhaseIndex(), phase);
            VirtualTime::advance(2000);
        }
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), phase + 1);
    }

    void rightDuringTheKeyWalkDoesNothing()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(3);
        fixture.right();
        fixture.host.keyboard.press(10);
        fixture.take();
        fixture.right();
        QCOMPARE(fixture.take(), QStringList());
        QCOMPARE(fixture.biz->currentPhaseIndex(), 3);
    }

    void rightAfterAFailedKeyWalkDoesNothing()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(3);
        fixture.left();
        fixture.take();
        fixture.right();
        QCOMPARE(fixture.take(), QStringList());
    }

    void rightOnTheVerdictOfTheKeyWalkTakesOnePress()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(3);
        fixture.pressKeys();
        fixture.left();
        fixture.take();
        fixture.right();
        QCOMPARE(fixture.take(), QStringList());
        QCOMPARE(fixture.biz->currentPhaseIndex(), 3);
    }

    void rightStartsTheNetTest()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.right();
        QCOMPARE(fixture.take(), NetSubscriptions + QStringList{NetRunning});
    }

    void rightPassesTheRunningNetTest()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.right();
        fixture.take();
        fixture.right();
        QCOMPARE(fixture.take().first(), QStringLiteral("log Net port pass"));
        QCOMPARE(fixture.biz->currentPhaseIndex(), 6);
    }

    void rightAfterAFailedNetTestPreparesItAgain()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.right();
        fixture.left();
        fixture.take();
        fixture.right();
        QCOMPARE(fixture.take(), QStringList{NetRetest});
        fixture.right();
        QCOMPARE(fixture.take(), NetSubscriptions + QStringList{NetRunning});
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 6);
        QCOMPARE(fixture.biz->result(), 2);
    }

    // The order of the screens: first the next phase, then the running screen of this phase.
    // The net test has passed, and a listener has prevented the run from going on.
    void rightAfterAPassThatAListenerHasInterrupted()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.right();
        fixture.biz->registerLogCallback("zz throws once", [thrown = false](const QString &) mutable {
            if (!std::exchange(thrown, true))
                throw std::runtime_error("no log");
        });
        QVERIFY_EXCEPTION_THROWN(fixture.right(), std::runtime_error);
        QCOMPARE(fixture.biz->currentPhaseIndex(), 5);
        fixture.take();
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 6);
        const QStringList told = fixture.told();
        QCOMPARE(told.size(), 1);
        QVERIFY2(told.first().startsWith(QStringLiteral("phase title=[USBA];")), qPrintable(told.first()));
    }

    void aPressDuringTheStartOfTheNetTestIsFollowedByTheRunningScreen()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.biz->registerPhaseCallback("zeta", [&](const LCD::FactoryModeImpl::CompleteMachinePhaseInfo &info) {
            if (!info.statusIconVisible)
                return;
            fixture.host.networkPort.answerAtOnce.reset();
            fixture.right();
        });
        fixture.host.networkPort.answerAtOnce = RecordingNetworkPort::payload({{0, true}, {1, true}});
        fixture.right();
        const QStringList told = fixture.told();
        QCOMPARE(told.size(), 4);
        QVERIFY(told.at(0).contains(QStringLiteral("status=NetPass; statusShown")));
        QCOMPARE(told.at(1), QStringLiteral("log Net port pass"));
        QVERIFY(told.at(2).startsWith(QStringLiteral("phase title=[USBA];")));
        QCOMPARE(told.at(3), NetRunning);
        QCOMPARE(fixture.biz->currentPhaseIndex(), 6);
    }

    void missingPortServicesDoNotMakeTheRunWait()
    {
        MachineTestFixture fixture;
        fixture.host.remove("lcdMemoryCacheNetworkPort");
        fixture.host.remove("lcdMemoryCacheNodeUSB");
        fixture.make();
        fixture.biz->start();
        while (fixture.biz->currentPhaseIndex() < 5)
            fixture.pass();
        fixture.take();
        fixture.right();
        QCOMPARE(fixture.take(), QStringList{NetRunning});
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 6);
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 7);
        QCOMPARE(fixture.log.warnings().filter(QStringLiteral("PortTestBiz")),
                 calls({"NetPortTestBiz: INetworkPort is null, cannot start test",
                        "UsbPortTestBiz: IUSB is null, cannot start test"}));
    }

    void rightPassesTheUsbTestOnlyWhileItRuns()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(6);
        fixture.left();
        fixture.take();
        fixture.right();
        QCOMPARE(fixture.take(), QStringList());
        QCOMPARE(fixture.biz->currentPhaseIndex(), 6);
    }

    void rightAfterAFailureByEyeGoesOnAndCanStillPass()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(7);
        fixture.left();
        fixture.take();
        fixture.right();
        QCOMPARE(fixture.take().first(), QStringLiteral("log Type-C USB communication pass"));
        QCOMPARE(fixture.biz->currentPhaseIndex(), 9);
        QCOMPARE(fixture.biz->result(), 2);
        fixture.right();
        fixture.right();
        QCOMPARE(fixture.take().last(), passScreen());
        QCOMPARE(fixture.biz->result(), 1);
    }

    void theTBarGoesOnWithoutACalibrationServiceNowhere()
    {
        MachineTestFixture fixture;
        fixture.host.remove("lcdTBarCalibration");
        fixture.make();
        fixture.startAndPassTo(3);
        fixture.pass();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 4);
        repeat(10, [&] { fixture.right(); });
        QCOMPARE(fixture.told(), QStringList());
        QCOMPARE(fixture.biz->currentPhaseIndex(), 4);
    }

    void aFailedCalibrationStillPassesThePhase()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(4);
        fixture.bringToVerdict();
        fixture.log.clear();
        for (const auto &result : fixture.host.tbarCalibration.results)
            result(false, "no answer");
        QCOMPARE(fixture.log.warnings(), calls({"[TbarTestBiz] T-Bar calibration end failed"}));
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 5);
    }

    void theKeyWalkNeedsItsList()
    {
        MachineTestFixture fixture;
        fixture.menu.load({});
        fixture.startAndPassTo(2);
        fixture.pass();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 3);
        fixture.pressKeys();
        fixture.take();
        fixture.right();
        QCOMPARE(fixture.take(), QStringList());
        fixture.left();
        QCOMPARE(fixture.told(), failure() + failure());
    }

    void onlyTextsOfTheRecordAreLookedUp()
    {
        MachineTestFixture fixture;
        QStringList differences;
        int records = 0;
        QStringList lookedUpSoFar;
        fixture.biz->registerPhaseCallback("texts", [&](const CompleteMachinePhaseInfo &info) {
            QStringList shown = translatedWords(describe(info));
            QStringList lookedUp = std::exchange(lookedUpSoFar, {});
            shown.sort();
            lookedUp.sort();
            ++records;
            if (lookedUp != shown)
                differences << QStringLiteral("%1 for %2").arg(lookedUp.join(QStringLiteral(", ")), describe(info));
        });
        recordLookedUpKeys(&lookedUpSoFar);
        fixture.startAndPassTo(5);
        fixture.right(); // net test runs
        fixture.left();  // failed
        fixture.right(); // set back
        while (fixture.biz->currentPhaseIndex() < 11)
            fixture.pass();
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
        MachineTestFixture fixture;
        QStringList lookedUp;
        fixture.startAndPassTo(phase);
        fixture.biz->registerLogCallback("keys", [&lookedUp](const QString &line) { lookedUp << line; });
        recordLookedUpKeys(&lookedUp);
        fixture.left();
        recordLookedUpKeys(nullptr);
        const QStringList once = calls({"Test failed", "MachineMode", "FCTestComplete", "FCNoPass", "FCReTest"});
        QCOMPARE(lookedUp, failures == 1 ? once : once + once);
    }

    void theCaptionsAreTranslatedFromLeftToRight()
    {
        MachineTestFixture fixture;
        QStringList lookedUp;
        fixture.startAndPassTo(5);
        recordLookedUpKeys(&lookedUp);
        fixture.right();
        QCOMPARE(std::exchange(lookedUp, {}),
                 calls({"FCNet", "TestStep", "FCNetConnectPort1Port2", "FCNoPass", "FCPass"}));
        fixture.netReport({{0, true}, {1, true}});
        QCOMPARE(std::exchange(lookedUp, {}), calls({"FCNet", "FCTestComplete", "FCNoPass", "FCPass"}));
        fixture.right();
        recordLookedUpKeys(nullptr);
        QCOMPARE(lookedUp, calls({"USBA", "TestStep", "FCUSB30TestStep", "FCNoPass", "FCPass"}));
    }

private:
    /// Passes the phases before that of the current data row, and brings that phase to its verdict if the row says so.
    static void bringToTheRow(MachineTestFixture &fixture)
    {
        QFETCH(const int, phase);
        QFETCH(const bool, atVerdict);
        fixture.startAndPassTo(phase);
        if (atVerdict)
            fixture.bringToVerdict();
    }
};

VIRTUAL_TIME_TEST_MAIN(CompleteMachineButtonsTest)
#include "tst_completemachinebuttons.moc"
