#include "calls.h"
#include "keytranslation.h"
#include "machinetestfixture.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

#include <optional>

namespace {

QString levelScreen(const QString &title, const QString &icon, const QString &step, int mode)
{
    return QStringLiteral("phase title=%1; icon=%2; stepTitle=[TestStep]; steps=%3; noRight; mode=%4")
        .arg(title, icon, step, QString::number(mode));
}

QString screenLight(const QString &suffix)
{
    return levelScreen(QStringLiteral("[FCScreenLight]") + suffix, QStringLiteral("ScreenLight"),
                       QStringLiteral("[FCScreenBrightnessStep]"), 15);
}

QString buttonLight(const QString &suffix)
{
    return levelScreen(QStringLiteral("[FCBtnLight]") + suffix, QStringLiteral("ButtonLight"),
                       QStringLiteral("[FCBtnBrightnessStep]"), 16);
}

QString tbarScreen(const QString &caption)
{
    return QStringLiteral("phase title=T-Bar; icon=fc_tbar_slider; stepTitle=[TestStep]; "
                          "steps=1.[Push T-Bar to Top] | 2.[Push T-Bar to Bottom] | 3.[Push T-Bar to Top] | "
                          "4.[Push T-Bar to Bottom] | 5.[Push T-Bar to Top] | 6.[Push T-Bar to Bottom]; "
                          "rightText=%1; noStepTitle; ")
        .arg(caption);
}

QString instruction(const QString &title, const QString &icon, const QString &steps)
{
    return QStringLiteral("phase title=%1; icon=%2; stepTitle=[TestStep]; steps=%3; "
                          "leftText=[FCNoPass]; rightText=[FCPass]; left; mode=9")
        .arg(title, icon, steps);
}

/// A keyboard service that calls a function in its brightness operation.
class OperatorInsideTheScreens final : public LCD::FactoryMode::IKeyboardEvent
{
public:
    explicit OperatorInsideTheScreens(RecordingKeyboard &behind) : m_behind(behind) {}
    void setFactoryPanelMode(int mode) override { m_behind.setFactoryPanelMode(mode); }
    void setKeyLed(const int &halKey, LCD::KeyboardProxy::KeyLedRequest request) override
    {
        m_behind.setKeyLed(halKey, request);
    }
    void registerKeyCallback(const LCD::FactoryMode::KeyListener &listener) override
    {
        m_behind.registerKeyCallback(listener);
    }
    void setAllButtonBrightness(int level) override { m_behind.setAllButtonBrightness(level); }
    void setScreenBrightness(int screenIndex, int level) override
    {
        m_behind.setScreenBrightness(screenIndex, level);
        if (const auto now = act)
            now();
    }
    void setKeyLedUpdating(bool updating) override { m_behind.setKeyLedUpdating(updating); }
    void setLcdTestPattern(int patternType, int patternIndex) override
    {
        m_behind.setLcdTestPattern(patternType, patternIndex);
    }
    int getTBarType() override { return m_behind.getTBarType(); }

    std::function<void()> act;

private:
    RecordingKeyboard &m_behind;
};

const QStringList ScreensAtTen = calls({"keyboard.setScreenBrightness(0, 10)", "keyboard.setScreenBrightness(1, 10)",
                                        "keyboard.setScreenBrightness(2, 10)"});

}

/// How each phase starts, and how the run continues with the next one.
class CompleteMachinePhasesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { setTestLanguage(QString()); }

    void theTimerRunsOnlyWhileLevelsAreShown()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(1);
        const int others = VirtualTime::timerCount();
        for (const int phase : {0, 2}) {
            fixture.startAndPassTo(phase);
            QCOMPARE(VirtualTime::timerCount(), others + 1);
            fixture.bringToVerdict();
            QCOMPARE(VirtualTime::timerCount(), others);
            fixture.right();
            QCOMPARE(fixture.biz->currentPhaseIndex(), phase + 1);
            QCOMPARE(VirtualTime::timerCount(), others);
        }
        fixture.biz->start();
        QCOMPARE(VirtualTime::timerCount(), others + 1);
        fixture.left();
        QCOMPARE(VirtualTime::timerCount(), others);
    }

    void phaseZeroStarts()
    {
        MachineTestFixture fixture;
        fixture.biz->start();
        QCOMPARE(fixture.take(),
                 calls({"factoryBiz.setFactoryTestType(0)"}) + ScreensAtTen << screenLight(QStringLiteral(" 10%")));
    }

    void laterPhasesStart_data();
    void laterPhasesStart()
    {
        QFETCH(const int, previous);
        QFETCH(const QStringList, expected);
        MachineTestFixture fixture;
        fixture.startAndPassTo(previous);
        QCOMPARE(fixture.pass(), expected);
    }

    void theKeyWalkTellsEachKey()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(3);
        fixture.host.keyboard.press(10);
        QCOMPARE(fixture.told(), calls({"phase noPassBlocked"}));
        fixture.host.keyboard.press(27);
        QCOMPARE(fixture.told(), calls({"phase "}));
        fixture.host.keyboard.press(33);
        QCOMPARE(fixture.told(),
                 QStringList{judgeScreenOf(QStringLiteral("[ButtonFunction]"), QStringLiteral("ButtonFunction"))});
    }

    void theEndOfTheKeyWalkDarkensTheKeysBeforeTheVerdict()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(3);
        fixture.host.keyboard.press(10);
        fixture.host.keyboard.press(27);
        fixture.take();
        fixture.host.keyboard.press(99);
        const QStringList made = fixture.take();
        QCOMPARE(made.mid(made.size() - 2),
                 (QStringList{QStringLiteral("keyboard.setAllButtonBrightness(0)"),
                              judgeScreenOf(QStringLiteral("[ButtonFunction]"), QStringLiteral("ButtonFunction"))}));
    }

    void theLevelsRunByTheClock_data()
    {
        QTest::addColumn<int>("phase");
        QTest::addColumn<QStringList>("screens");
        QTest::addColumn<QStringList>("end");
        QStringList screens;
        QStringList keys;
        for (const int level : {30, 50, 70, 100, 10, 30, 50, 70, 100}) {
            screens << screenLight(QStringLiteral(" %1%").arg(level));
            keys << buttonLight(QStringLiteral(" %1%").arg(level));
        }
        QTest::newRow("screens") << 0 << screens
                                 << (calls({"log Screen brightness done"}) << judgeScreenOf(
                                         QStringLiteral("[FCScreenLight]"), QStringLiteral("ScreenLight")));
        QTest::newRow("keys") << 2 << keys
                              << (calls({"log Button light done"})
                                  << judgeScreenOf(QStringLiteral("[FCBtnLight]"), QStringLiteral("ButtonLight")));
    }

    void theLevelsRunByTheClock()
    {
        QFETCH(const int, phase);
        QFETCH(const QStringList, screens);
        QFETCH(const QStringList, end);
        MachineTestFixture fixture;
        fixture.startAndPassTo(phase);
        for (const QString &screen : screens) {
            VirtualTime::advance(1999);
            QCOMPARE(fixture.told(), QStringList());
            VirtualTime::advance(1);
            QCOMPARE(fixture.told(), QStringList{screen});
        }
        VirtualTime::advance(1999);
        QCOMPARE(fixture.told(), QStringList());
        VirtualTime::advance(1);
        QCOMPARE(fixture.told(), end);
        VirtualTime::advance(100000);
        QCOMPARE(fixture.take(), QStringList());
        fixture.right();
        QCOMPARE(fixture.told().filter(QStringLiteral("log ")), QStringList());
        QCOMPARE(fixture.biz->currentPhaseIndex(), phase + 1);
    }

    void thePatternsGoOnByTheRightButtonAlone()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(1);
        VirtualTime::advance(100000);
        QCOMPARE(fixture.take(), QStringList());
        repeat(11, [&] { fixture.right(); });
        QCOMPARE(fixture.take().last(), QStringLiteral("keyboard.setLcdTestPattern(3, 4)"));
        fixture.right();
        QCOMPARE(fixture.take(),
                 (calls({"keyboard.setLcdTestPattern(0, 0)"})
                  << judgeScreenOf(QStringLiteral("[FCScreenBadPixel]"), QStringLiteral("ScreenBadPixel"))));
        fixture.right();
        QCOMPARE(fixture.take().mid(0, 2), calls({"keyboard.setLcdTestPattern(0, 0)", "log Screen bad pixel pass"}));
    }

    void keysOutsideTheirPhaseChangeNothing()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(3);
        fixture.biz->start();
        fixture.take();
        fixture.pressKeys();
        QCOMPARE(fixture.told(), QStringList());
        QCOMPARE(fixture.biz->currentPhaseIndex(), 0);
    }

    void aLateFailureOfTheNetTestFailsAnyPhase_data()
    {
        QTest::addColumn<int>("phase");
        for (const int phase : {0, 1, 2, 3, 4})
            QTest::addRow("phase %d", phase) << phase;
    }

    void aLateFailureOfTheNetTestFailsAnyPhase()
    {
        QFETCH(const int, phase);
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.right();
        fixture.left();
        fixture.startAndPassTo(phase);
        fixture.netReport({{0, true}});
        QCOMPARE(fixture.take(), failure());
        QCOMPARE(fixture.biz->result(), 2);
        QCOMPARE(fixture.biz->currentPhaseIndex(), phase);
        VirtualTime::advance(100000);
        QCOMPARE(fixture.take(), QStringList());
    }

    void aLatePassOfTheNetTestIsTakenByThePresentPhase_data()
    {
        QTest::addColumn<int>("phase");
        QTest::addColumn<QStringList>("made");
        QTest::addColumn<int>("then");
        const QStringList usbPass = calls({"log USB port pass"})
            << instruction(QStringLiteral("[TypecCommuication]"), QStringLiteral("TypecTest"),
                           QStringLiteral("[FCTypecCommStep1] | [FCTypecCommStep2] | [FCPleaseJudgePass]"));
        QTest::newRow("brightness") << 0 << QStringList() << 0;
        // The test pattern isn't cleared: the screens keep the current one.
        QTest::newRow("bad pixel") << 1
                                   << (calls({"log Screen bad pixel pass", "factoryBiz.setFactoryTestType(2)",
                                              "keyboard.setAllButtonBrightness(10)"})
                                       << buttonLight(QStringLiteral(" 10%")))
                                   << 2;
        QTest::newRow("button light") << 2 << QStringList() << 2;
        QTest::newRow("button function") << 3 << QStringList() << 3;
        QTest::newRow("T-Bar") << 4 << calls({"log T-bar pass"}) << 4;
        QTest::newRow("USB port") << 6 << usbPass << 7;
        QTest::newRow("Type-C communication") << 7 << QStringList() << 7;
        QTest::newRow("Type-C power") << 9 << QStringList() << 9;
        QTest::newRow("POE") << 10 << QStringList() << 10;
        QTest::newRow("finished") << 11 << QStringList() << 11;
    }

    void aLatePassOfTheNetTestIsTakenByThePresentPhase()
    {
        QFETCH(const int, phase);
        QFETCH(const QStringList, made);
        QFETCH(const int, then);
        MachineTestFixture fixture;
        fixture.startAndPassTo(11);
        fixture.startAndPassTo(phase);
        fixture.netReport({{0, true}});
        QCOMPARE(fixture.take(), made);
        QCOMPARE(fixture.biz->currentPhaseIndex(), then);
        QCOMPARE(fixture.biz->result(), phase == 11 ? 1 : 0);
    }

    void theTitleOfTheTBarIsNotTranslated()
    {
        MachineTestFixture fixture;
        setTestLanguage(QStringLiteral("de"));
        fixture.startAndPassTo(3);
        const QStringList made = fixture.pass();
        QCOMPARE(made.first(), QStringLiteral("log Button function pass"));
        QVERIFY(
            made.last().startsWith(QStringLiteral("phase title=T-Bar; icon=fc_tbar_slider; stepTitle=[de:TestStep]; "
                                                  "steps=1.[de:Push T-Bar to Top] | ")));
    }

    void aNewLanguageShowsOnTheNextScreen()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(0);
        setTestLanguage(QStringLiteral("de"));
        VirtualTime::settle();
        QCOMPARE(fixture.take(), QStringList());
        VirtualTime::advance(2000);
        QVERIFY(fixture.told().value(0).startsWith(
            QStringLiteral("phase title=[de:FCScreenLight] 30%; icon=ScreenLight; stepTitle=[de:TestStep];")));
        setTestLanguage(QStringLiteral("fr"));
        VirtualTime::advance(18000);
        const QStringList told = fixture.told();
        QCOMPARE(told.at(told.size() - 2), QStringLiteral("log Screen brightness done"));
        QVERIFY(told.last().contains(QStringLiteral("steps=[fr:FCPleaseJudgePass]")));
    }

    void aTestThatIsFailedWhileItShowsItsFirstLevelHasABareTitle()
    {
        std::optional<OperatorInsideTheScreens> keyboard; // lives longer than the test that uses it
        MachineTestFixture fixture;
        keyboard.emplace(fixture.host.keyboard);
        fixture.host.offer("lcdKeyboardEvent", static_cast<LCD::FactoryMode::IKeyboardEvent *>(&*keyboard));
        fixture.make();
        fixture.biz->start();
        fixture.take();
        keyboard->act = [&] {
            keyboard->act = {};
            fixture.left();
        };
        fixture.biz->start();
        const QStringList told = fixture.told();
        QCOMPARE(told, failure() + failure() + failure() << screenLight(QString()));
        QCOMPARE(fixture.biz->result(), 2);
    }

    void theAdapterPhaseIsNeverSeen()
    {
        MachineTestFixture fixture;
        fixture.biz->start();
        QStringList told;
        while (fixture.biz->isRunning()) {
            fixture.bringToVerdict();
            fixture.right();
            told << fixture.told();
        }
        QCOMPARE(told.filter(QStringLiteral("log ")),
                 calls({"log Screen brightness done", "log Screen bad pixel pass", "log Button light done",
                        "log Button function pass", "log Net port pass", "log USB port pass",
                        "log Type-C USB communication pass", "log Type-C power port pass",
                        "log Net port 1 POE power pass"}));
        QCOMPARE(told.last(), passScreen());
    }

    void aBarOfAnotherKindHasAnotherIcon_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("icon");
        QTest::newRow("0") << 0 << QStringLiteral("icon=fc_tbar_fader;");
        QTest::newRow("1") << 1 << QStringLiteral("icon=fc_tbar_slider;");
        QTest::newRow("2") << 2 << QStringLiteral("icon=fc_tbar_fader;");
    }

    void aBarOfAnotherKindHasAnotherIcon()
    {
        QFETCH(const int, type);
        QFETCH(const QString, icon);
        MachineTestFixture fixture;
        fixture.host.keyboard.tbarType = type;
        fixture.startAndPassTo(3);
        QVERIFY(fixture.pass().last().contains(icon));
    }
};

void CompleteMachinePhasesTest::laterPhasesStart_data()
{
    QTest::addColumn<int>("previous");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("1")
        << 0
        << calls({"factoryBiz.setFactoryTestType(1)", "keyboard.setLcdTestPattern(1, 1)",
                  "phase title=[FCScreenBadPixel]; icon=ScreenBadPixel; stepTitle=[TestStep]; "
                  "steps=[FCObserveScreenShowStep1] | [FCObserveScreenShowStep2]; rightText=[FCNextStep]; mode=14"});
    QTest::newRow("2") << 1
                       << (calls({"keyboard.setLcdTestPattern(0, 0)", "log Screen bad pixel pass",
                                  "factoryBiz.setFactoryTestType(2)", "keyboard.setAllButtonBrightness(10)"})
                           << buttonLight(QStringLiteral(" 10%")));
    QTest::newRow("3") << 2
                       << calls({"phase title=[ButtonFunction]; icon=ButtonFunction; stepTitle=[TestStep]; "
                                 "steps=[FCClickGreenFlashingBtn]; leftText=[FCNoPass]; left; noRight; focusLeft=1; "
                                 "noKeyEvents; mode=10",
                                 "keyboard.registerKeyCallback(listener)", "keyboard.setAllButtonBrightness(0)",
                                 "phase ", "keyboard.setKeyLedUpdating(true)",
                                 "keyboard.setKeyLed(10, {color 2, mode 1, brightness 100, period 800})",
                                 "keyboard.setKeyLedUpdating(false)"});
    QTest::newRow("4")
        << 3
        << (calls({"log Button function pass", "factoryBiz.setFactoryTestType(6)", "keyboard.getTBarType()"})
            << tbarScreen(QStringLiteral("[FCNextStep]")) + QStringLiteral("keepSteps; mode=12")
            << QStringLiteral("tbar.registerBarCalibrationCallback(TbarTestBiz)")
            << QStringLiteral("keyboard.getTBarType()")
            << tbarScreen(QStringLiteral("[FCAgeModeStartTest]")) + QStringLiteral("mode=12"));
    QTest::newRow("5")
        << 4
        << calls({"factoryBiz.setFactoryTestType(10)",
                  "phase title=[FCNet]; icon=NetTest; stepTitle=[TestStep]; steps=[FCNetConnectPort1Port2]; "
                  "rightText=[FCAgeModeStartTest]; status=NetNormal; mode=13"});
    QTest::newRow("6") << 5
                       << calls({"log Net port pass", "factoryBiz.setFactoryTestType(9)",
                                 "usb.registerReportCallback(UsbPortTestBiz, 2)",
                                 "usb.registerChangedCallback(UsbPortTestBiz, 2)",
                                 "phase title=[USBA]; icon=UsbTest; stepTitle=[TestStep]; steps=[FCUSB30TestStep]; "
                                 "leftText=[FCNoPass]; rightText=[FCPass]; left; status=UsbNoPass; mode=9"});
    QTest::newRow("7") << 6
                       << (calls({"log USB port pass"}) << instruction(
                               QStringLiteral("[TypecCommuication]"), QStringLiteral("TypecTest"),
                               QStringLiteral("[FCTypecCommStep1] | [FCTypecCommStep2] | [FCPleaseJudgePass]")));
    QTest::newRow("9") << 7
                       << (calls({"log Type-C USB communication pass"}) << instruction(
                               QStringLiteral("[TypecPower]"), QStringLiteral("TypecTest"),
                               QStringLiteral("[FCTypecPowerStep1] | [FCTypecPowerStep2] | [FCPleaseJudgePass]")));
    QTest::newRow("10")
        << 9
        << (calls({"log Type-C power port pass"})
            << instruction(QStringLiteral("[NET1POE]"), QStringLiteral("NetTest"),
                           QStringLiteral("[FCNetPort1PowerStep1] | [FCNetPort1PowerStep2] | [FCPleaseJudgePass]")));
    QTest::newRow("passed") << 10 << (calls({"log Net port 1 POE power pass"}) << passScreen());
}

VIRTUAL_TIME_TEST_MAIN(CompleteMachinePhasesTest)
#include "tst_completemachinesequence.moc"
