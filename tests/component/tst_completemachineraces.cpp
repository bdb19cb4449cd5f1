#include "calls.h"
#include "keytranslation.h"
#include "machinetestfixture.h"
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

/// Throws std::bad_alloc at the first call from another thread than that of the test, after it was blocked there.
class ThrowingFactoryBiz final : public LCD::FactoryMode::IFactoryModeBiz
{
public:
    explicit ThrowingFactoryBiz(Hold &hold) : m_hold(hold) {}
    void setFactoryTestType(int) override
    {
        if (std::this_thread::get_id() == m_test || std::exchange(m_thrown, true))
            return;
        m_hold.pass();
        throw std::bad_alloc();
    }
    void setMachineTestKind(int) override {}

private:
    Hold &m_hold;
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

void holdLog(MachineTestFixture &fixture, Hold &hold)
{
    fixture.biz->registerLogCallback("zz hold", [&hold](const QString &) { hold.pass(); });
}

/// Calls @p action once, during the next log callback on the thread of the test.
void insideTheNextLogLine(MachineTestFixture &fixture, const std::function<void()> &action)
{
    fixture.biz->registerLogCallback("zz action",
                                     [action, own = std::this_thread::get_id(), done = false](const QString &) mutable {
                                         if (std::this_thread::get_id() == own && !std::exchange(done, true))
                                             action();
                                     });
}

void reportNet(MachineTestFixture &fixture)
{
    fixture.netReport({{0, true}, {1, true}});
}

/// Gives the net test the state passed or failed, as after an earlier run.
void leaveNetPassed(MachineTestFixture &fixture)
{
    fixture.startAndPassTo(11);
}

void leaveNetFailed(MachineTestFixture &fixture)
{
    fixture.startAndPassTo(5);
    fixture.right();
    fixture.left();
}

QStringList screens(MachineTestFixture &fixture)
{
    return fixture.told().filter(QRegularExpression(QStringLiteral("^phase ")));
}

/// Returns whether the next tick changes the brightness of the screens.
bool levelsWalkOn(MachineTestFixture &fixture)
{
    fixture.take();
    VirtualTime::advance(2000);
    return fixture.told().value(0).startsWith(QStringLiteral("phase title=[FCScreenLight] 30%"));
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
        MachineTestFixture fixture;
        Hold hold;
        leaveNetPassed(fixture);
        fixture.startAndPassTo(phase);
        holdLog(fixture, hold);
        HeldWork report(hold, [&] { reportNet(fixture); });
        fixture.pass();
        QCOMPARE(fixture.biz->currentPhaseIndex(), phase + 1);
        report.finish();
        QCOMPARE(fixture.biz->currentPhaseIndex(), phase + 1);
        QCOMPARE(screens(fixture), QStringList());
    }

    void aHeldReportDoesNotMoveTheNextRun()
    {
        MachineTestFixture fixture;
        Hold hold;
        fixture.startAndPassTo(6);
        holdLog(fixture, hold);
        HeldWork report(hold, [&] { reportNet(fixture); });
        fixture.biz->start();
        fixture.take();
        report.finish();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 0);
        QCOMPARE(fixture.take(), QStringList());
        QVERIFY(levelsWalkOn(fixture));
    }

    void aHeldReportDoesNotLeaveTheSamePhaseOfTheNextRun()
    {
        MachineTestFixture fixture;
        Hold hold;
        fixture.startAndPassTo(6);
        holdLog(fixture, hold);
        HeldWork report(hold, [&] { reportNet(fixture); });
        fixture.startAndPassTo(6);
        report.finish();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 6);
        QCOMPARE(fixture.take(), QStringList());
    }

    void aHeldReportDoesNotLeaveAPhaseThatHasFailedSince()
    {
        MachineTestFixture fixture;
        Hold hold;
        fixture.startAndPassTo(6);
        holdLog(fixture, hold);
        HeldWork report(hold, [&] { reportNet(fixture); });
        fixture.left();
        fixture.take();
        report.finish();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 6);
        QCOMPARE(fixture.take(), QStringList());
    }

    void aHeldFailureDoesNotFailTheNextRun()
    {
        MachineTestFixture fixture;
        Hold hold;
        leaveNetFailed(fixture);
        fixture.startAndPassTo(1);
        holdLog(fixture, hold);
        HeldWork report(hold, [&] { reportNet(fixture); });
        QCOMPARE(fixture.biz->result(), 2);
        fixture.biz->start();
        fixture.take();
        report.finish();
        QCOMPARE(fixture.biz->result(), 0);
        QCOMPARE(fixture.take(), QStringList());
        QVERIFY(levelsWalkOn(fixture));
    }

    void aHeldFailureShowsItsScreenInThePhaseThatTheOperatorWentOnTo()
    {
        MachineTestFixture fixture;
        Hold hold;
        leaveNetFailed(fixture);
        fixture.startAndPassTo(1);
        holdLog(fixture, hold);
        HeldWork report(hold, [&] { reportNet(fixture); });
        fixture.pass();
        report.finish();
        QCOMPARE(fixture.take(), QStringList{failScreen()});
        QCOMPARE(fixture.biz->currentPhaseIndex(), 2);
        QCOMPARE(fixture.biz->result(), 2);
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
        MachineTestFixture fixture;
        leaveNetPassed(fixture);
        fixture.startAndPassTo(phase);
        fixture.bringToVerdict();
        insideTheNextLogLine(fixture, [&] { elsewhere([&] { reportNet(fixture); }); });
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), phase + 1);
    }

    void aPressThatIsOvertakenBeforeItsTestReportsIsNotJudgedInTheNextPhase()
    {
        Hold hold;
        hold.release();
        std::optional<HoldingKeyboard> keyboard; // lives longer than the test that uses it
        MachineTestFixture fixture;
        keyboard.emplace(fixture.host.keyboard, hold);
        fixture.host.offer("lcdKeyboardEvent", &*keyboard);
        fixture.make();
        leaveNetPassed(fixture);
        fixture.startAndPassTo(1);
        for (int pattern = 1; pattern < 12; ++pattern)
            fixture.right();
        fixture.take();
        keyboard->afterPattern = [&] { elsewhere([&] { reportNet(fixture); }); };
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 2);
        QVERIFY(!fixture.told().contains(QStringLiteral("log Button light done")));
        VirtualTime::settle();
        VirtualTime::advance(2000);
        QVERIFY(fixture.told().value(0).startsWith(QStringLiteral("phase title=[FCBtnLight] 30%")));
    }

    void aPressThatIsOvertakenBeforeItsTestHasPassedIsLoggedOnce()
    {
        Hold hold;
        hold.release();
        std::optional<HoldingKeyboard> keyboard; // lives longer than the test that uses it
        MachineTestFixture fixture;
        keyboard.emplace(fixture.host.keyboard, hold);
        fixture.host.offer("lcdKeyboardEvent", &*keyboard);
        fixture.make();
        leaveNetPassed(fixture);
        fixture.startAndPassTo(1);
        fixture.bringToVerdict();
        fixture.take();
        keyboard->afterPattern = [&] { elsewhere([&] { reportNet(fixture); }); };
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 2);
        QCOMPARE(fixture.told().filter(QStringLiteral("log ")), calls({"log Screen bad pixel pass"}));
    }

    void aTickThatAFailureOvertakesShowsNothingMore()
    {
        MachineTestFixture fixture;
        leaveNetFailed(fixture);
        fixture.startAndPassTo(0);
        insideTheNextLogLine(fixture, [&] { elsewhere([&] { reportNet(fixture); }); });
        VirtualTime::advance(20000);
        const QStringList told = fixture.told();
        QCOMPARE(told.mid(told.indexOf(QStringLiteral("log Screen brightness done"))),
                 calls({"log Screen brightness done"}) + failure());
    }

    void aPressWaitsForThePhaseThatAReportIsStarting()
    {
        Hold hold;
        HoldingFactoryBiz service(hold);
        MachineTestFixture fixture;
        fixture.host.offer("lcdFactoryModeBiz", &service);
        fixture.make();
        leaveNetPassed(fixture);
        fixture.startAndPassTo(1);
        HeldWork report(hold, [&] { reportNet(fixture); });
        QCOMPARE(fixture.biz->currentPhaseIndex(), 2);
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 2);
        report.finish();
        VirtualTime::settle();
        fixture.take();
        VirtualTime::advance(2000);
        QVERIFY(fixture.told().value(0).startsWith(QStringLiteral("phase title=[FCBtnLight] 30%")));
        VirtualTime::advance(18000);
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 3);
    }

    void aFailureEndsThePhaseThatAReportIsStarting()
    {
        Hold hold;
        HoldingFactoryBiz service(hold);
        MachineTestFixture fixture;
        fixture.host.offer("lcdFactoryModeBiz", &service);
        fixture.make();
        leaveNetPassed(fixture);
        fixture.startAndPassTo(1);
        HeldWork report(hold, [&] { reportNet(fixture); });
        fixture.left();
        fixture.take();
        report.finish();
        VirtualTime::settle();
        VirtualTime::advance(100000);
        QCOMPARE(fixture.told(), QStringList());
        QCOMPARE(fixture.biz->result(), 2);
    }

    void theRightButtonRespondsAfterAFailureWhileAReportWasStartingThePhase()
    {
        Hold hold;
        HoldingFactoryBiz service(hold);
        MachineTestFixture fixture;
        fixture.host.offer("lcdFactoryModeBiz", &service);
        fixture.make();
        fixture.startAndPassTo(5);
        fixture.bringToVerdict();
        std::optional<HeldWork> report;
        insideTheNextLogLine(fixture, [&] { report.emplace(hold, [&] { reportNet(fixture); }); });
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 6);
        fixture.left();
        report->finish();
        QCOMPARE(fixture.biz->result(), 2);
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 7);
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
        MachineTestFixture fixture;
        leaveNetFailed(fixture);
        fixture.startAndPassTo(0);
        bool thrown = false;
        const auto throwOnce = [&thrown] {
            if (!std::exchange(thrown, true))
                throw std::bad_alloc();
        };
        if (byLog)
            fixture.biz->registerLogCallback("zz", [throwOnce](const QString &) { throwOnce(); });
        else
            fixture.biz->registerPhaseCallback(
                "zz", [throwOnce](const LCD::FactoryModeImpl::CompleteMachinePhaseInfo &) { throwOnce(); });
        if (onOwnThread)
            reportNet(fixture);
        else
            elsewhere([&] { reportNet(fixture); });
        QVERIFY(thrown);
        VirtualTime::settle();
        QCOMPARE(fixture.biz->result(), 0);
        QVERIFY(levelsWalkOn(fixture));
    }

    void theVerdictScreenOfTheKeyWalkIsTranslatedAfterTheLedsAreOff()
    {
        Hold hold;
        hold.release();
        std::optional<HoldingKeyboard> keyboard; // lives longer than the test that uses it
        MachineTestFixture fixture;
        keyboard.emplace(fixture.host.keyboard, hold);
        fixture.host.offer("lcdKeyboardEvent", &*keyboard);
        fixture.make();
        fixture.startAndPassTo(3);
        fixture.host.keyboard.press(10);
        fixture.host.keyboard.press(27);
        QStringList made;
        keyboard->onBrightness = [&made] { made << QStringLiteral("LEDs off"); };
        recordLookedUpKeys(&made);
        fixture.host.keyboard.press(33);
        recordLookedUpKeys(nullptr);
        QCOMPARE(made,
                 calls({"LEDs off", "ButtonFunction", "FCTestComplete", "FCPleaseJudgePass", "FCNoPass", "FCPass"}));
    }

    void aReportWithoutMemoryForTheNextPhaseLeavesNone()
    {
        Hold hold;
        hold.release();
        ThrowingFactoryBiz service(hold);
        MachineTestFixture fixture;
        fixture.host.offer("lcdFactoryModeBiz", &service);
        fixture.make();
        leaveNetPassed(fixture);
        fixture.startAndPassTo(1);
        elsewhere([&] { reportNet(fixture); });
        QCOMPARE(fixture.biz->currentPhaseIndex(), 1);
        fixture.pass();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 2);
        VirtualTime::advance(20000);
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 3);
    }

    // The run has changed, so the report can't take back the phase that it couldn't start.
    void aReportWithoutMemoryForTheNextPhaseKeepsAFailure()
    {
        Hold hold;
        ThrowingFactoryBiz service(hold);
        MachineTestFixture fixture;
        fixture.host.offer("lcdFactoryModeBiz", &service);
        fixture.make();
        leaveNetPassed(fixture);
        fixture.startAndPassTo(1);
        HeldWork report(hold, [&] { reportNet(fixture); });
        fixture.take();
        fixture.left();
        report.finish();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 2);
        QCOMPARE(fixture.biz->result(), 2);
        QCOMPARE(screens(fixture), (QStringList{failScreen(), failScreen()}));
        fixture.biz->start();
        QVERIFY(levelsWalkOn(fixture));
    }

    // The report is blocked while it makes the screen of the failure.
    void aFailureThatIsHeldBeforeItIsRecordedDoesNotFailTheNextRun()
    {
        Hold hold;
        MachineTestFixture fixture;
        leaveNetFailed(fixture);
        fixture.startAndPassTo(1);
        setLookUpHook([&hold] { hold.pass(); });
        {
            HeldWork report(hold, [&] { reportNet(fixture); });
            QCOMPARE(fixture.biz->result(), 0);
            fixture.biz->start();
            fixture.take();
        }
        setLookUpHook({});
        QCOMPARE(fixture.biz->result(), 0);
        QCOMPARE(fixture.take(), QStringList());
        QVERIFY(levelsWalkOn(fixture));
    }

    void aHeldKeyDoesNotReachTheNextRun()
    {
        Hold hold;
        std::optional<HoldingKeyboard> keyboard; // lives longer than the test that uses it
        MachineTestFixture fixture;
        keyboard.emplace(fixture.host.keyboard, hold);
        fixture.host.offer("lcdKeyboardEvent", &*keyboard);
        fixture.make();
        fixture.startAndPassTo(3);
        fixture.host.keyboard.press(10);
        fixture.host.keyboard.press(27);
        HeldWork key(hold, [&] { fixture.host.keyboard.press(33); });
        fixture.left();
        fixture.biz->start();
        fixture.take();
        key.finish();
        QCOMPARE(fixture.told(), QStringList());
        while (fixture.biz->currentPhaseIndex() < 3)
            fixture.pass();
        // Without a verdict screen, the left button fails the key walk itself.
        fixture.take();
        fixture.left();
        QCOMPARE(fixture.told(), failure() + failure());
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
        MachineTestFixture fixture;
        fixture.startAndPassTo(phase);
        insideTheNextLogLine(fixture, [&] { fixture.right(); });
        if (byReport)
            reportNet(fixture);
        else
            fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), expected);
    }

    void onOneThreadAStartInsideANotificationComesFirst()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(7);
        insideTheNextLogLine(fixture, [&] { fixture.biz->start(); });
        fixture.left();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 0);
        QCOMPARE(screens(fixture).last(), failScreen());
    }
};

VIRTUAL_TIME_TEST_MAIN(CompleteMachineRacesTest)
#include "tst_completemachineraces.moc"
