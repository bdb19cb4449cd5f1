#include "calls.h"
#include "machinetestfixture.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

using LCD::FactoryModeImpl::CompleteMachinePhaseInfo;
using LCD::FactoryModeImpl::CompleteMachineTestBiz;

/// The public interface of the complete machine test: phase index, result, callbacks.
class CompleteMachineTestBizTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isOnePointer() { QCOMPARE(sizeof(CompleteMachineTestBiz), sizeof(void *)); }

    void aFreshRecordHasItsDefaults()
    {
        QCOMPARE(describe(CompleteMachinePhaseInfo()), QStringLiteral("phase "));
        const CompleteMachinePhaseInfo info;
        QVERIFY(!info.leftBtnVisible && info.rightBtnVisible && !info.statusIconVisible && info.keyEventsEnabled);
        QVERIFY(info.noPassBtnClickable && info.stepTitleVisible && !info.keepSteps);
        QCOMPARE(info.focusLeftBtn, 0);
        QCOMPARE(info.panelMode, -1);
    }

    void beforeTheFirstStart()
    {
        MachineTestFixture fixture;
        QCOMPARE(fixture.biz->currentPhaseIndex(), -1);
        QVERIFY(!fixture.biz->isRunning());
        QCOMPARE(fixture.biz->result(), 0);
        VirtualTime::advance(100000);
        QCOMPARE(fixture.take(), QStringList());
    }

    void servicesAreLookedUpInTheOrderOfTheSingleTests()
    {
        RecordingHost host;
        const CompleteMachineTestBiz biz;
        QCOMPARE(host.lookups,
                 calls({"lcdFactoryModeBiz", "lcdKeyboardEvent", "lcdFactoryModeBiz", "lcdKeyboardEvent",
                        "lcdMemoryCacheScreenDetail", "lcdFactoryModeBiz", "lcdKeyboardEvent", "lcdKeyboardEvent",
                        "lcdFactoryModeBiz", "lcdKeyboardEvent", "lcdTBarCalibration", "lcdMemoryCacheNetworkPort",
                        "lcdFactoryModeBiz", "lcdMemoryCacheNodeUSB", "lcdFactoryModeBiz", "lcdKeyboardEvent"}));
    }

    void startBeginsAtPhaseZero()
    {
        MachineTestFixture fixture;
        fixture.biz->start();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 0);
        QVERIFY(fixture.biz->isRunning());
        QCOMPARE(fixture.biz->result(), 0);
    }

    void aPassedRunStandsAtEleven()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(10);
        QVERIFY(fixture.biz->isRunning());
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 11);
        QVERIFY(!fixture.biz->isRunning());
        QCOMPARE(fixture.biz->result(), 1);
        QCOMPARE(fixture.take(), (QStringList{QStringLiteral("log Net port 1 POE power pass"), passScreen()}));
    }

    void thePhasesComeInOrderWithoutTheEighth()
    {
        MachineTestFixture fixture;
        QList<int> seen;
        fixture.biz->start();
        while (fixture.biz->isRunning()) {
            seen << fixture.biz->currentPhaseIndex();
            fixture.pass();
        }
        QCOMPARE(seen, (QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 9, 10}));
    }

    void aFailedRunStaysOnItsPhase_data()
    {
        QTest::addColumn<int>("phase");
        for (const int phase : {0, 1, 2, 3, 4, 5, 6, 7, 9, 10})
            QTest::addRow("phase %d", phase) << phase;
    }

    void aFailedRunStaysOnItsPhase()
    {
        QFETCH(const int, phase);
        MachineTestFixture fixture;
        fixture.startAndPassTo(phase);
        fixture.left();
        QCOMPARE(fixture.biz->currentPhaseIndex(), phase);
        QVERIFY(fixture.biz->isRunning());
        QCOMPARE(fixture.biz->result(), 2);
        VirtualTime::advance(100000);
        QCOMPARE(fixture.told().last(), failScreen());
    }

    void startAfterAFailureBeginsAgain_data() { aFailedRunStaysOnItsPhase_data(); }

    void startAfterAFailureBeginsAgain()
    {
        QFETCH(const int, phase);
        MachineTestFixture fixture;
        fixture.startAndPassTo(phase);
        fixture.left();
        fixture.take();
        fixture.biz->start();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 0);
        QCOMPARE(fixture.biz->result(), 0);
        QVERIFY(fixture.told().last().startsWith(QStringLiteral("phase title=[FCScreenLight] 10%")));
        while (fixture.biz->isRunning())
            fixture.pass();
        QCOMPARE(fixture.biz->result(), 1);
    }

    void startAfterAPassBeginsAgain()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(11);
        fixture.biz->start();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 0);
        QVERIFY(fixture.biz->isRunning());
        QCOMPARE(fixture.biz->result(), 0);
    }

    void startDuringARunBeginsAgain_data() { aFailedRunStaysOnItsPhase_data(); }

    void startDuringARunBeginsAgain()
    {
        QFETCH(const int, phase);
        MachineTestFixture fixture;
        fixture.startAndPassTo(phase);
        VirtualTime::advance(3000);
        fixture.biz->start();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 0);
        fixture.take();
        VirtualTime::advance(1999);
        QCOMPARE(fixture.told(), QStringList());
        VirtualTime::advance(1);
        QVERIFY(fixture.told().last().startsWith(QStringLiteral("phase title=[FCScreenLight] 30%")));
    }

    void aSecondCallbackOfOneRequesterReplacesTheFirst()
    {
        MachineTestFixture fixture;
        QStringList heard;
        fixture.biz->registerPhaseCallback("page",
                                           [&](const CompleteMachinePhaseInfo &) { heard << QStringLiteral("phase"); });
        fixture.biz->registerLogCallback("page", [&](const QString &) { heard << QStringLiteral("log"); });
        fixture.biz->registerStepIconCallback("page", [&](int) { heard << QStringLiteral("icon"); });
        fixture.startAndPassTo(4);
        heard.clear();
        fixture.right();
        fixture.right();
        fixture.left();
        QCOMPARE(heard, calls({"phase", "phase", "icon", "log", "phase", "log", "phase"}));
        QCOMPARE(fixture.told(), QStringList());
    }

    void anEmptyRequesterOrCallbackChangesNothing()
    {
        MachineTestFixture fixture;
        const auto fail = [](auto &&...) { QFAIL("called"); };
        fixture.biz->registerPhaseCallback("", fail);
        fixture.biz->registerLogCallback("", fail);
        fixture.biz->registerStepIconCallback("", fail);
        fixture.biz->registerPhaseCallback("page", {});
        fixture.biz->registerLogCallback("page", {});
        fixture.biz->registerStepIconCallback("page", {});
        fixture.startAndPassTo(4);
        fixture.right();
        fixture.right();
        QCOMPARE(fixture.told().last(), QStringLiteral("icon 0"));
        fixture.left();
        QCOMPARE(fixture.told(), failure() + failure());
    }

    void allRequestersHearInTheOrderOfTheirNames()
    {
        MachineTestFixture fixture;
        for (const char *name : {"zeta", "alpha"})
            fixture.biz->registerPhaseCallback(name, [&fixture, name](const CompleteMachinePhaseInfo &) {
                fixture.host.calls.add(QString::fromLatin1(name));
            });
        fixture.startAndPassTo(7);
        fixture.left();
        QCOMPARE(fixture.take(), (calls({"log Test failed", "alpha"}) << failScreen() << QStringLiteral("zeta")));
    }

    void destructionStopsNothing()
    {
        MachineTestFixture fixture;
        fixture.biz->start();
        VirtualTime::advance(5000);
        fixture.take();
        fixture.biz.reset();
        VirtualTime::advance(100000);
        QCOMPARE(fixture.take(), calls({"keyboard.registerKeyCallback(empty)"}));
    }

    void reportsAfterDestructionAreDropped()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(6);
        fixture.biz.reset();
        fixture.take();
        fixture.netReport({{0, true}});
        fixture.usbReport({{1}});
        fixture.host.keyboard.press(10);
        VirtualTime::settle();
        QCOMPARE(fixture.take(), QStringList());
    }

    void theListenersKeepTheirState()
    {
        MachineTestFixture fixture;
        QMap<QString, int> counts;
        const auto count = [&counts](const char *channel) {
            return [&counts, channel, n = 0](const auto &) mutable { counts[QLatin1String(channel)] = ++n; };
        };
        fixture.biz->registerPhaseCallback("count", count("phase"));
        fixture.biz->registerLogCallback("count", count("log"));
        fixture.biz->registerStepIconCallback("count", count("icon"));
        fixture.startAndPassTo(11);
        QVERIFY(counts.value(QStringLiteral("phase")) > 30);
        QCOMPARE(counts.value(QStringLiteral("log")), 9);
        QCOMPARE(counts.value(QStringLiteral("icon")), 6);
    }

    void ofItsOwnItLogsNothing()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(10);
        fixture.left();
        QVERIFY(!fixture.log.entries().empty());
        for (const LogCapture::Entry &entry : fixture.log.entries())
            QVERIFY2(!entry.file.contains("completemachine") && !entry.file.contains("phase"), qPrintable(entry.text));
    }

    void withoutAnyServiceARunStillMoves()
    {
        MachineTestFixture fixture;
        fixture.biz.reset();
        for (const char *name : {"lcdFactoryModeBiz", "lcdKeyboardEvent", "lcdMemoryCacheNetworkPort",
                                 "lcdMemoryCacheNodeUSB", "lcdTBarCalibration", "lcdFactoryModeWidget"})
            fixture.host.remove(name);
        CompleteMachineTestBiz biz;
        QString title;
        biz.registerPhaseCallback("page", [&](const CompleteMachinePhaseInfo &info) { title = info.title; });
        biz.start();
        VirtualTime::advance(20000);
        biz.onRightBtnClicked();
        repeat(13, [&] { biz.onRightBtnClicked(); });
        VirtualTime::advance(20000);
        biz.onRightBtnClicked();
        QCOMPARE(biz.currentPhaseIndex(), 3);
        QCOMPARE(title, QStringLiteral("[ButtonFunction]"));
        biz.onLeftBtnClicked();
        QCOMPARE(title, QStringLiteral("[MachineMode]"));
    }
};

VIRTUAL_TIME_TEST_MAIN(CompleteMachineTestBizTest)
#include "tst_completemachinetestbiz.moc"
