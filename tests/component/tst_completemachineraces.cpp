#include "calls.h"
#include "keytranslation.h"
#include "machinebench.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

#include <condition_variable>
#include <mutex>
#include <new>
#include <optional>
#include <thread>
#include <utility>

namespace {

/// Blocks the first call from another thread than that of the test until release().
class Hold
{
public:
    void pass()
    {
        if (std::this_thread::get_id() == m_test)
            return;
        std::unique_lock locker(m_mutex);
        if (std::exchange(m_isHeld, true))
            return;
        m_changed.notify_all();
        m_changed.wait(locker, [this] { return m_isReleased; });
    }
    void waitUntilHeld()
    {
        std::unique_lock locker(m_mutex);
        m_changed.wait(locker, [this] { return m_isHeld; });
    }
    void release()
    {
        const std::lock_guard locker(m_mutex);
        m_isReleased = true;
        m_changed.notify_all();
    }

private:
    const std::thread::id m_test = std::this_thread::get_id();
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isHeld = false;
    bool m_isReleased = false;
};

/// Runs work on a thread of its own. The work is blocked when the constructor returns.
class HeldWork
{
public:
    template <class Work>
    HeldWork(Hold &hold, const Work &work) : m_hold(hold), m_thread(work)
    {
        m_hold.waitUntilHeld();
    }
    ~HeldWork()
    {
        if (m_thread.joinable())
            finish();
    }
    HeldWork(const HeldWork &) = delete;
    HeldWork &operator=(const HeldWork &) = delete;
    void finish()
    {
        m_hold.release();
        m_thread.join();
    }

private:
    Hold &m_hold;
    std::thread m_thread;
};

class HoldingFactoryBiz final : public LCD::FactoryMode::IFactoryModeBiz
{
public:
    explicit HoldingFactoryBiz(Hold &hold) : m_hold(hold) {}
    void setFactoryTestType(int) override { m_hold.pass(); }
    void setMachineTestKind(int) override {}

private:
    Hold &m_hold;
};

/// Throws std::bad_alloc at the first call from another thread than that of the test.
class ThrowingFactoryBiz final : public LCD::FactoryMode::IFactoryModeBiz
{
public:
    void setFactoryTestType(int) override
    {
        if (std::this_thread::get_id() != m_test && !std::exchange(m_thrown, true))
            throw std::bad_alloc();
    }
    void setMachineTestKind(int) override {}

private:
    const std::thread::id m_test = std::this_thread::get_id();
    bool m_thrown = false;
};

/// Forwards all calls to the recording keyboard. Can block the call that sets the brightness of the keys, calls a
/// function before it, and calls another one once after the next pattern.
class HoldingKeyboard final : public LCD::FactoryMode::IKeyboardEvent
{
public:
    HoldingKeyboard(RecordingKeyboard &keyboard, Hold &hold) : m_keyboard(keyboard), m_hold(hold) {}
    void setFactoryPanelMode(int mode) override { m_keyboard.setFactoryPanelMode(mode); }
    void setKeyLed(const int &halKey, LCD::KeyboardProxy::KeyLedRequest request) override
    {
        m_keyboard.setKeyLed(halKey, request);
    }
    void registerKeyCallback(const LCD::FactoryMode::KeyListener &listener) override
    {
        m_keyboard.registerKeyCallback(listener);
    }
    void setAllButtonBrightness(int level) override
    {
        m_hold.pass();
        if (onBrightness)
            onBrightness();
        m_keyboard.setAllButtonBrightness(level);
    }
    void setScreenBrightness(int screenIndex, int level) override
    {
        m_keyboard.setScreenBrightness(screenIndex, level);
    }
    void setKeyLedUpdating(bool updating) override { m_keyboard.setKeyLedUpdating(updating); }
    void setLcdTestPattern(int patternType, int patternIndex) override
    {
        m_keyboard.setLcdTestPattern(patternType, patternIndex);
        if (const auto action = std::exchange(afterPattern, nullptr))
            action();
    }
    int getTBarType() override { return m_keyboard.getTBarType(); }

    std::function<void()> afterPattern;
    std::function<void()> onBrightness;

private:
    RecordingKeyboard &m_keyboard;
    Hold &m_hold;
};

/// Runs @p work on a std::thread and waits for it.
template <class Work>
void elsewhere(const Work &work)
{
    std::thread thread(work);
    thread.join();
}

void holdLog(MachineBench &bench, Hold &hold)
{
    bench.biz->registerLogCallback("zz hold", [&hold](const QString &) { hold.pass(); });
}

/// Calls @p action once, during the next log callback on the thread of the test.
void insideTheNextLogLine(MachineBench &bench, const std::function<void()> &action)
{
    bench.biz->registerLogCallback("zz action",
                                   [action, own = std::this_thread::get_id(), done = false](const QString &) mutable {
                                       if (std::this_thread::get_id() == own && !std::exchange(done, true))
                                           action();
                                   });
}

void reportNet(MachineBench &bench)
{
    bench.netReport({{0, true}, {1, true}});
}

/// Gives the net test the state passed or failed, as after an earlier run.
void leaveNetPassed(MachineBench &bench)
{
    bench.startAndPassTo(11);
}

void leaveNetFailed(MachineBench &bench)
{
    bench.startAndPassTo(5);
    bench.right();
    bench.left();
}

QStringList screens(MachineBench &bench)
{
    return bench.told().filter(QRegularExpression(QStringLiteral("^phase ")));
}

/// Returns whether the next tick changes the brightness of the screens.
bool levelsWalkOn(MachineBench &bench)
{
    bench.take();
    VirtualTime::advance(2000);
    return bench.told().value(0).startsWith(QStringLiteral("phase title=[FCScreenLight] 30%"));
}

}

/// Reports on other threads that are delayed while the operator continues, and button presses overtaken by reports.
class CompleteMachineRacesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aHeldReportLeavesOnlyItsOwnPhase_data()
    {
        QTest::addColumn<int>("phase");
        QTest::newRow("patterns") << 1;
        QTest::newRow("USB ports") << 6;
    }

    void aHeldReportLeavesOnlyItsOwnPhase()
    {
        QFETCH(const int, phase);
        MachineBench bench;
        Hold hold;
        leaveNetPassed(bench);
        bench.startAndPassTo(phase);
        holdLog(bench, hold);
        HeldWork report(hold, [&] { reportNet(bench); });
        bench.pass();
        QCOMPARE(bench.biz->currentPhaseIndex(), phase + 1);
        report.finish();
        QCOMPARE(bench.biz->currentPhaseIndex(), phase + 1);
        QCOMPARE(screens(bench), QStringList());
    }

    void aHeldReportDoesNotMoveTheNextRun()
    {
        MachineBench bench;
        Hold hold;
        bench.startAndPassTo(6);
        holdLog(bench, hold);
        HeldWork report(hold, [&] { reportNet(bench); });
        bench.biz->start();
        bench.take();
        report.finish();
        QCOMPARE(bench.biz->currentPhaseIndex(), 0);
        QCOMPARE(bench.take(), QStringList());
        QVERIFY(levelsWalkOn(bench));
    }

    void aHeldReportDoesNotLeaveTheSamePhaseOfTheNextRun()
    {
        MachineBench bench;
        Hold hold;
        bench.startAndPassTo(6);
        holdLog(bench, hold);
        HeldWork report(hold, [&] { reportNet(bench); });
        bench.startAndPassTo(6);
        report.finish();
        QCOMPARE(bench.biz->currentPhaseIndex(), 6);
        QCOMPARE(bench.take(), QStringList());
    }

    void aHeldReportDoesNotLeaveAPhaseThatHasFailedSince()
    {
        MachineBench bench;
        Hold hold;
        bench.startAndPassTo(6);
        holdLog(bench, hold);
        HeldWork report(hold, [&] { reportNet(bench); });
        bench.left();
        bench.take();
        report.finish();
        QCOMPARE(bench.biz->currentPhaseIndex(), 6);
        QCOMPARE(bench.take(), QStringList());
    }

    void aHeldFailureDoesNotFailTheNextRun()
    {
        MachineBench bench;
        Hold hold;
        leaveNetFailed(bench);
        bench.startAndPassTo(1);
        holdLog(bench, hold);
        HeldWork report(hold, [&] { reportNet(bench); });
        QCOMPARE(bench.biz->result(), 2);
        bench.biz->start();
        bench.take();
        report.finish();
        QCOMPARE(bench.biz->result(), 0);
        QCOMPARE(bench.take(), QStringList());
        QVERIFY(levelsWalkOn(bench));
    }

    void aHeldFailureShowsItsScreenInThePhaseThatTheOperatorWentOnTo()
    {
        MachineBench bench;
        Hold hold;
        leaveNetFailed(bench);
        bench.startAndPassTo(1);
        holdLog(bench, hold);
        HeldWork report(hold, [&] { reportNet(bench); });
        bench.pass();
        report.finish();
        QCOMPARE(bench.take(), QStringList{failScreen()});
        QCOMPARE(bench.biz->currentPhaseIndex(), 2);
        QCOMPARE(bench.biz->result(), 2);
    }

    void aPressThatAReportOvertakesLeavesOnlyItsOwnPhase_data()
    {
        QTest::addColumn<int>("phase");
        QTest::newRow("patterns") << 1;
        QTest::newRow("net ports") << 5;
        QTest::newRow("USB ports") << 6;
    }

    void aPressThatAReportOvertakesLeavesOnlyItsOwnPhase()
    {
        QFETCH(const int, phase);
        MachineBench bench;
        leaveNetPassed(bench);
        bench.startAndPassTo(phase);
        bench.bringToVerdict();
        insideTheNextLogLine(bench, [&] { elsewhere([&] { reportNet(bench); }); });
        bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), phase + 1);
    }

    void aPressThatIsOvertakenBeforeItsTestReportsIsNotJudgedInTheNextPhase()
    {
        Hold hold;
        hold.release();
        MachineBench bench;
        HoldingKeyboard keyboard(bench.host.keyboard, hold);
        bench.host.offer("lcdKeyboardEvent", &keyboard);
        bench.make();
        leaveNetPassed(bench);
        bench.startAndPassTo(1);
        for (int pattern = 1; pattern < 12; ++pattern)
            bench.right();
        bench.take();
        keyboard.afterPattern = [&] { elsewhere([&] { reportNet(bench); }); };
        bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), 2);
        QVERIFY(!bench.told().contains(QStringLiteral("log Button light done")));
        VirtualTime::settle();
        VirtualTime::advance(2000);
        QVERIFY(bench.told().value(0).startsWith(QStringLiteral("phase title=[FCBtnLight] 30%")));
    }

    void aTickThatAFailureOvertakesShowsNothingMore()
    {
        MachineBench bench;
        leaveNetFailed(bench);
        bench.startAndPassTo(0);
        insideTheNextLogLine(bench, [&] { elsewhere([&] { reportNet(bench); }); });
        VirtualTime::advance(20000);
        const QStringList told = bench.told();
        QCOMPARE(told.mid(told.indexOf(QStringLiteral("log Screen brightness done"))),
                 calls({"log Screen brightness done"}) + failure());
    }

    void aPressWaitsForThePhaseThatAReportIsStarting()
    {
        Hold hold;
        HoldingFactoryBiz service(hold);
        MachineBench bench;
        bench.host.offer("lcdFactoryModeBiz", &service);
        bench.make();
        leaveNetPassed(bench);
        bench.startAndPassTo(1);
        HeldWork report(hold, [&] { reportNet(bench); });
        QCOMPARE(bench.biz->currentPhaseIndex(), 2);
        bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), 2);
        report.finish();
        VirtualTime::settle();
        bench.take();
        VirtualTime::advance(2000);
        QVERIFY(bench.told().value(0).startsWith(QStringLiteral("phase title=[FCBtnLight] 30%")));
        VirtualTime::advance(18000);
        bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), 3);
    }

    void aFailureEndsThePhaseThatAReportIsStarting()
    {
        Hold hold;
        HoldingFactoryBiz service(hold);
        MachineBench bench;
        bench.host.offer("lcdFactoryModeBiz", &service);
        bench.make();
        leaveNetPassed(bench);
        bench.startAndPassTo(1);
        HeldWork report(hold, [&] { reportNet(bench); });
        bench.left();
        bench.take();
        report.finish();
        VirtualTime::settle();
        VirtualTime::advance(100000);
        QCOMPARE(bench.told(), QStringList());
        QCOMPARE(bench.biz->result(), 2);
    }

    void theRightButtonRespondsAfterAFailureWhileAReportWasStartingThePhase()
    {
        Hold hold;
        HoldingFactoryBiz service(hold);
        MachineBench bench;
        bench.host.offer("lcdFactoryModeBiz", &service);
        bench.make();
        bench.startAndPassTo(5);
        bench.bringToVerdict();
        std::optional<HeldWork> report;
        insideTheNextLogLine(bench, [&] { report.emplace(hold, [&] { reportNet(bench); }); });
        bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), 6);
        bench.left();
        report->finish();
        QCOMPARE(bench.biz->result(), 2);
        bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), 7);
    }

    void aFailureWithoutMemoryChangesNothing_data()
    {
        QTest::addColumn<bool>("byLog");
        QTest::addColumn<bool>("onOwnThread");
        QTest::newRow("log line, another thread") << true << false;
        QTest::newRow("screen, another thread") << false << false;
        QTest::newRow("log line, own thread") << true << true;
        QTest::newRow("screen, own thread") << false << true;
    }

    void aFailureWithoutMemoryChangesNothing()
    {
        QFETCH(const bool, byLog);
        QFETCH(const bool, onOwnThread);
        MachineBench bench;
        leaveNetFailed(bench);
        bench.startAndPassTo(0);
        bool thrown = false;
        const auto throwOnce = [&thrown] {
            if (!std::exchange(thrown, true))
                throw std::bad_alloc();
        };
        if (byLog)
            bench.biz->registerLogCallback("zz", [throwOnce](const QString &) { throwOnce(); });
        else
            bench.biz->registerPhaseCallback(
                "zz", [throwOnce](const LCD::FactoryModeImpl::CompleteMachinePhaseInfo &) { throwOnce(); });
        if (onOwnThread)
            reportNet(bench);
        else
            elsewhere([&] { reportNet(bench); });
        QVERIFY(thrown);
        VirtualTime::settle();
        QCOMPARE(bench.biz->result(), 0);
        QVERIFY(levelsWalkOn(bench));
    }

    void theVerdictScreenOfTheKeyWalkIsTranslatedAfterTheLedsAreOff()
    {
        Hold hold;
        hold.release();
        MachineBench bench;
        HoldingKeyboard keyboard(bench.host.keyboard, hold);
        bench.host.offer("lcdKeyboardEvent", &keyboard);
        bench.make();
        bench.startAndPassTo(3);
        bench.host.keyboard.press(10);
        bench.host.keyboard.press(27);
        QStringList made;
        keyboard.onBrightness = [&made] { made << QStringLiteral("LEDs off"); };
        recordLookedUpKeys(&made);
        bench.host.keyboard.press(33);
        recordLookedUpKeys(nullptr);
        QCOMPARE(made,
                 calls({"LEDs off", "ButtonFunction", "FCTestComplete", "FCPleaseJudgePass", "FCNoPass", "FCPass"}));
    }

    void aReportWithoutMemoryForTheNextPhaseLeavesNone()
    {
        ThrowingFactoryBiz service;
        MachineBench bench;
        bench.host.offer("lcdFactoryModeBiz", &service);
        bench.make();
        leaveNetPassed(bench);
        bench.startAndPassTo(1);
        elsewhere([&] { reportNet(bench); });
        QCOMPARE(bench.biz->currentPhaseIndex(), 1);
        bench.pass();
        QCOMPARE(bench.biz->currentPhaseIndex(), 2);
        VirtualTime::advance(20000);
        bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), 3);
    }

    void aHeldKeyDoesNotReachTheNextRun()
    {
        Hold hold;
        MachineBench bench;
        HoldingKeyboard keyboard(bench.host.keyboard, hold);
        bench.host.offer("lcdKeyboardEvent", &keyboard);
        bench.make();
        bench.startAndPassTo(3);
        bench.host.keyboard.press(10);
        bench.host.keyboard.press(27);
        HeldWork key(hold, [&] { bench.host.keyboard.press(33); });
        bench.left();
        bench.biz->start();
        bench.take();
        key.finish();
        QCOMPARE(bench.told(), QStringList());
        while (bench.biz->currentPhaseIndex() < 3)
            bench.pass();
        // Without a verdict screen, the left button fails the key walk itself.
        bench.take();
        bench.left();
        QCOMPARE(bench.told(), failure() + failure());
    }

    void onOneThreadAPressInsideANotificationComesFirst_data()
    {
        QTest::addColumn<int>("phase");
        QTest::addColumn<bool>("byReport");
        QTest::addColumn<int>("expected");
        QTest::newRow("a press inside a press") << 7 << false << 10;
        QTest::newRow("a press inside a report") << 6 << true << 9;
    }

    void onOneThreadAPressInsideANotificationComesFirst()
    {
        QFETCH(const int, phase);
        QFETCH(const bool, byReport);
        QFETCH(const int, expected);
        MachineBench bench;
        bench.startAndPassTo(phase);
        insideTheNextLogLine(bench, [&] { bench.right(); });
        if (byReport)
            reportNet(bench);
        else
            bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), expected);
    }

    void onOneThreadAStartInsideANotificationComesFirst()
    {
        MachineBench bench;
        bench.startAndPassTo(7);
        insideTheNextLogLine(bench, [&] { bench.biz->start(); });
        bench.left();
        QCOMPARE(bench.biz->currentPhaseIndex(), 0);
        QCOMPARE(screens(bench).last(), failScreen());
    }
};

VIRTUAL_TIME_TEST_MAIN(CompleteMachineRacesTest)
#include "tst_completemachineraces.moc"
