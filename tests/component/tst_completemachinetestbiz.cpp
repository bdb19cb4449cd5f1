#include "calls.h"
#include "machinebench.h"
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
        MachineBench bench;
        QCOMPARE(bench.biz->currentPhaseIndex(), -1);
        QVERIFY(!bench.biz->isRunning());
        QCOMPARE(bench.biz->result(), 0);
        VirtualTime::advance(100000);
        QCOMPARE(bench.take(), QStringList());
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
        MachineBench bench;
        bench.biz->start();
        QCOMPARE(bench.biz->currentPhaseIndex(), 0);
        QVERIFY(bench.biz->isRunning());
        QCOMPARE(bench.biz->result(), 0);
    }

    void aPassedRunStandsAtEleven()
    {
        MachineBench bench;
        bench.startAndPassTo(10);
        QVERIFY(bench.biz->isRunning());
        bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), 11);
        QVERIFY(!bench.biz->isRunning());
        QCOMPARE(bench.biz->result(), 1);
        QCOMPARE(bench.take(), (QStringList{QStringLiteral("log Net port 1 POE power pass"), passScreen()}));
    }

    void thePhasesComeInOrderWithoutTheEighth()
    {
        MachineBench bench;
        QList<int> seen;
        bench.biz->start();
        while (bench.biz->isRunning()) {
            seen << bench.biz->currentPhaseIndex();
            bench.pass();
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
        MachineBench bench;
        bench.startAndPassTo(phase);
        bench.left();
        QCOMPARE(bench.biz->currentPhaseIndex(), phase);
        QVERIFY(bench.biz->isRunning());
        QCOMPARE(bench.biz->result(), 2);
        VirtualTime::advance(100000);
        QCOMPARE(bench.told().last(), failScreen());
    }

    void startAfterAFailureBeginsAgain_data() { aFailedRunStaysOnItsPhase_data(); }

    void startAfterAFailureBeginsAgain()
    {
        QFETCH(const int, phase);
        MachineBench bench;
        bench.startAndPassTo(phase);
        bench.left();
        bench.take();
        bench.biz->start();
        QCOMPARE(bench.biz->currentPhaseIndex(), 0);
        QCOMPARE(bench.biz->result(), 0);
        QVERIFY(bench.told().last().startsWith(QStringLiteral("phase title=[FCScreenLight] 10%")));
        while (bench.biz->isRunning())
            bench.pass();
        QCOMPARE(bench.biz->result(), 1);
    }

    void startAfterAPassBeginsAgain()
    {
        MachineBench bench;
        bench.startAndPassTo(11);
        bench.biz->start();
        QCOMPARE(bench.biz->currentPhaseIndex(), 0);
        QVERIFY(bench.biz->isRunning());
        QCOMPARE(bench.biz->result(), 0);
    }

    void startDuringARunBeginsAgain_data() { aFailedRunStaysOnItsPhase_data(); }

    void startDuringARunBeginsAgain()
    {
        QFETCH(const int, phase);
        MachineBench bench;
        bench.startAndPassTo(phase);
        VirtualTime::advance(3000);
        bench.biz->start();
        QCOMPARE(bench.biz->currentPhaseIndex(), 0);
        bench.take();
        VirtualTime::advance(1999);
        QCOMPARE(bench.told(), QStringList());
        VirtualTime::advance(1);
        QVERIFY(bench.told().last().startsWith(QStringLiteral("phase title=[FCScreenLight] 30%")));
    }

    void aSecondCallbackOfOneRequesterReplacesTheFirst()
    {
        MachineBench bench;
        QStringList heard;
        bench.biz->registerPhaseCallback("page",
                                         [&](const CompleteMachinePhaseInfo &) { heard << QStringLiteral("phase"); });
        bench.biz->registerLogCallback("page", [&](const QString &) { heard << QStringLiteral("log"); });
        bench.biz->registerStepIconCallback("page", [&](int) { heard << QStringLiteral("icon"); });
        bench.startAndPassTo(4);
        heard.clear();
        bench.right();
        bench.right();
        bench.left();
        QCOMPARE(heard, calls({"phase", "phase", "icon", "log", "phase", "log", "phase"}));
        QCOMPARE(bench.told(), QStringList());
    }

    void anEmptyRequesterOrCallbackChangesNothing()
    {
        MachineBench bench;
        const auto fail = [](auto &&...) { QFAIL("called"); };
        bench.biz->registerPhaseCallback("", fail);
        bench.biz->registerLogCallback("", fail);
        bench.biz->registerStepIconCallback("", fail);
        bench.biz->registerPhaseCallback("page", {});
        bench.biz->registerLogCallback("page", {});
        bench.biz->registerStepIconCallback("page", {});
        bench.startAndPassTo(4);
        bench.right();
        bench.right();
        QCOMPARE(bench.told().last(), QStringLiteral("icon 0"));
        bench.left();
        QCOMPARE(bench.told(), failure() + failure());
    }

    void allRequestersHearInTheOrderOfTheirNames()
    {
        MachineBench bench;
        for (const char *name : {"zeta", "alpha"})
            bench.biz->registerPhaseCallback(name, [&bench, name](const CompleteMachinePhaseInfo &) {
                bench.host.calls.add(QString::fromLatin1(name));
            });
        bench.startAndPassTo(7);
        bench.left();
        QCOMPARE(bench.take(), (calls({"log Test failed", "alpha"}) << failScreen() << QStringLiteral("zeta")));
    }

    void destructionStopsNothing()
    {
        MachineBench bench;
        bench.biz->start();
        VirtualTime::advance(5000);
        bench.take();
        bench.biz.reset();
        VirtualTime::advance(100000);
        QCOMPARE(bench.take(), calls({"keyboard.registerKeyCallback(empty)"}));
    }

    void reportsAfterDestructionAreDropped()
    {
        MachineBench bench;
        bench.startAndPassTo(6);
        bench.biz.reset();
        bench.take();
        bench.netReport({{0, true}});
        bench.usbReport({{1}});
        bench.host.keyboard.press(10);
        VirtualTime::settle();
        QCOMPARE(bench.take(), QStringList());
    }

    void theListenersKeepTheirState()
    {
        MachineBench bench;
        QMap<QString, int> counts;
        const auto count = [&counts](const char *channel) {
            return [&counts, channel, n = 0](const auto &) mutable { counts[QLatin1String(channel)] = ++n; };
        };
        bench.biz->registerPhaseCallback("count", count("phase"));
        bench.biz->registerLogCallback("count", count("log"));
        bench.biz->registerStepIconCallback("count", count("icon"));
        bench.startAndPassTo(11);
        QVERIFY(counts.value(QStringLiteral("phase")) > 30);
        QCOMPARE(counts.value(QStringLiteral("log")), 9);
        QCOMPARE(counts.value(QStringLiteral("icon")), 6);
    }

    void ofItsOwnItLogsNothing()
    {
        MachineBench bench;
        bench.startAndPassTo(10);
        bench.left();
        QVERIFY(!bench.log.entries().empty());
        for (const LogCapture::Entry &entry : bench.log.entries())
            QVERIFY2(!entry.file.contains("completemachine") && !entry.file.contains("phase"), qPrintable(entry.text));
    }

    void withoutAnyServiceARunStillMoves()
    {
        MachineBench bench;
        bench.biz.reset();
        for (const char *name : {"lcdFactoryModeBiz", "lcdKeyboardEvent", "lcdMemoryCacheNetworkPort",
                                 "lcdMemoryCacheNodeUSB", "lcdTBarCalibration", "lcdFactoryModeWidget"})
            bench.host.remove(name);
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
