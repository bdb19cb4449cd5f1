#include "calls.h"
#include "machinepage.h"
#include "virtualtime.h"

#include <QtTest/QtTest>
#include <QtWidgets/QVBoxLayout>

using LCD::FactoryModeImpl::CompleteMachineTestWidget;

namespace {

const QStringList Entered = calls({
    "factoryBiz.setMachineTestKind(1)",
    "frame.setIsReponseEvent(true)",
    "frame.setTitle([MachineMode])",
    "frame.setTitleIcon(FactoryIconLabel, MachineMode)",
    "frame.setStepTitle(, #ffffff)",
    "frame.clearAllSteps()",
    "frame.setLeftBtnVisible(false)",
    "frame.setRighttBtnVisible(true)",
    "frame.setRightBtnText([FCAgeModeStartTest])",
    "frame.setControlFocus(1)",
    "frame.setStatusIconVisible(false)",
    "keyboard.setFactoryPanelMode(8)",
});

const QStringList Started = calls({
    "frame.setIsReponseEvent(true)",
    "factoryBiz.setFactoryTestType(0)",
    "keyboard.setScreenBrightness(0, 10)",
    "keyboard.setScreenBrightness(1, 10)",
    "keyboard.setScreenBrightness(2, 10)",
    "frame.setTitle([FCScreenLight] 10%)",
    "frame.setTitleIcon(FactoryIconLabel, ScreenLight)",
    "frame.setStepTitle([TestStep], #ffffff)",
    "frame.setStepTitleVisible(true)",
    "frame.clearAllSteps()",
    "frame.addTestStep([FCScreenBrightnessStep], #ffffff, false)",
    "frame.setLeftBtnVisible(false)",
    "frame.setRighttBtnVisible(false)",
    "frame.setNoPassButtonCanClicked(true)",
    "frame.setKeyEventsEnabled(true)",
    "frame.setStatusIconVisible(false)",
    "frame.setControlFocus(1)",
    "keyboard.setFactoryPanelMode(15)",
});

const QStringList FailScreen = calls({
    "frame.log(Test failed, 0, 2)",
    "frame.setTitle([MachineMode])",
    "frame.setTitleIcon(FactoryIconLabel, MachineMode)",
    "frame.setStepTitle([FCTestComplete], #ffffff)",
    "frame.setStepTitleVisible(true)",
    "frame.clearAllSteps()",
    "frame.addTestStep([FCNoPass], #ff483c, false)",
    "frame.setLeftBtnText([FCReTest])",
    "frame.setLeftBtnVisible(true)",
    "frame.setRighttBtnVisible(false)",
    "frame.setNoPassButtonCanClicked(true)",
    "frame.setKeyEventsEnabled(true)",
    "frame.setStatusIconVisible(false)",
    "frame.setControlFocus(0)",
    "keyboard.setFactoryPanelMode(8)",
});

}

/// The page of the complete machine test.
class CompleteMachineTestWidgetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isAWidgetAndOnePointer() { QCOMPARE(sizeof(CompleteMachineTestWidget), sizeof(QWidget) + 8); }

    void asksForTheKeyModeWhenItMakesItsFrame()
    {
        MachinePage page;
        QCOMPARE(page.take(),
                 calls({"frame.FactoryTestFrame()", "config.getFactoryTestKeyMode()",
                        "frame.setFactoryTestKeyMode(mode-a)"}));
        page.widget->resize(640, 400);
        page.widget->show();
        QCOMPARE(frameOf(*page.widget)->geometry(), QRect(0, 0, 640, 400));
        QVERIFY(qobject_cast<QVBoxLayout *>(page.widget->layout()));
    }

    void withoutConfigurationTheFrameIsToldNoKeyMode()
    {
        MachinePage page;
        page.host.remove("lcdConfig");
        page.take();
        page.make();
        QCOMPARE(page.take().filter(QStringLiteral("frame.")), calls({"frame.FactoryTestFrame()"}));
    }

    void enteringShowsTheEntryScreen()
    {
        MachinePage page;
        page.take();
        page.widget->enterWindow();
        QCOMPARE(page.take(), Entered);
        page.widget->enterWindow();
        QCOMPARE(page.take(), Entered);
    }

    void theFontSizeGoesToTheFrame()
    {
        MachinePage page;
        page.take();
        page.widget->setContentFontSize(30);
        QCOMPARE(page.take(), calls({"frame.setContentFontSize(30)"}));
    }

    void rightStartsTheRun()
    {
        MachinePage page;
        page.enter();
        page.clickRight();
        QCOMPARE(page.take(), Started);
    }

    void leftOnTheEntryScreenDoesNothing()
    {
        MachinePage page;
        page.enter();
        page.clickLeft();
        QCOMPARE(page.take(), QStringList());
    }

    void beforeTheFirstEntryTheButtonsActAsOnTheEntryScreen()
    {
        MachinePage page;
        page.take();
        page.clickLeft();
        QCOMPARE(page.take(), QStringList());
        page.clickRight();
        QCOMPARE(page.take(), Started);
    }

    void leftDuringARunFailsIt()
    {
        MachinePage page;
        page.startAndPassTo(0);
        page.clickLeft();
        QCOMPARE(page.take(), FailScreen + FailScreen);
    }

    void leftAfterAFailureTestsAgain()
    {
        MachinePage page;
        page.startAndPassTo(0);
        page.clickLeft();
        page.take();
        page.clickLeft();
        QCOMPARE(page.take(), Started);
    }

    void leftAfterAPassTestsAgain()
    {
        MachinePage page;
        page.startAndPassTo(11);
        page.take();
        page.clickLeft();
        QCOMPARE(page.take(), Started);
    }

    void comingBackAfterAPassShowsTheEntryScreen()
    {
        MachinePage page;
        page.startAndPassTo(11);
        page.goBack();
        page.take();
        page.widget->enterWindow();
        QCOMPARE(page.take(), Entered);
        page.clickLeft();
        QCOMPARE(page.take(), QStringList());
        page.clickRight();
        QCOMPARE(page.take(), Started);
    }

    void backLeavesWhenNoRunIsUnderWay_data()
    {
        QTest::addColumn<int>("phase");
        QTest::addColumn<bool>("fail");
        QTest::addColumn<bool>("leaves");
        QTest::newRow("entry screen") << -1 << false << true;
        QTest::newRow("first phase") << 0 << false << false;
        QTest::newRow("key walk") << 3 << false << false;
        QTest::newRow("last phase") << 10 << false << false;
        QTest::newRow("failed") << 4 << true << true;
        QTest::newRow("passed") << 11 << false << true;
    }

    void backLeavesWhenNoRunIsUnderWay()
    {
        QFETCH(const int, phase);
        QFETCH(const bool, fail);
        QFETCH(const bool, leaves);
        MachinePage page;
        page.enter();
        if (phase >= 0)
            page.startAndPassTo(phase);
        if (fail)
            page.clickLeft();
        page.take();
        page.goBack();
        QCOMPARE(page.take(),
                 leaves ? calls({"signalBackToFactoryMenu", "keyboard.setFactoryPanelMode(3)"}) : QStringList());
    }

    void aPartialRecordChangesTheNoPassButtonAlone()
    {
        MachinePage page;
        page.startAndPassTo(3);
        page.host.keyboard.press(10);
        QCOMPARE(page.take().filter(QRegularExpression(QStringLiteral("^(frame|keyboard.setFactoryPanelMode)"))),
                 calls({"frame.setNoPassButtonCanClicked(false)"}));
        page.host.keyboard.press(27);
        QCOMPARE(page.take().filter(QRegularExpression(QStringLiteral("^(frame|keyboard.setFactoryPanelMode)"))),
                 calls({"frame.setNoPassButtonCanClicked(true)"}));
    }

    void theButtonLightPhaseTellsNoPanelMode()
    {
        MachinePage page;
        page.startAndPassTo(1);
        page.operate.bringToVerdict(1);
        page.take();
        page.clickRight();
        VirtualTime::advance(18000);
        const QStringList made = page.take();
        QCOMPARE(made.filter(QStringLiteral("frame.setTitle([FCBtnLight]")).size(), 10);
        QCOMPARE(made.filter(QStringLiteral("setFactoryPanelMode")), QStringList());
    }

    void thePassScreenKeepsTheIconOfTheLastPhase()
    {
        MachinePage page;
        page.startAndPassTo(10);
        page.clickRight();
        QCOMPARE(page.take(),
                 calls({
                     "frame.log(Net port 1 POE power pass, 0, 2)",
                     "frame.setTitle([FCTestComplete])",
                     "frame.setStepTitle([FCTestComplete], #ffffff)",
                     "frame.setStepTitleVisible(true)",
                     "frame.clearAllSteps()",
                     "frame.addTestStep([FCTestPass], #129a37, false)",
                     "frame.setLeftBtnText([FCReTest])",
                     "frame.setLeftBtnVisible(true)",
                     "frame.setRighttBtnVisible(false)",
                     "frame.setNoPassButtonCanClicked(true)",
                     "frame.setKeyEventsEnabled(true)",
                     "frame.setStatusIconVisible(false)",
                     "frame.setControlFocus(0)",
                     "keyboard.setFactoryPanelMode(8)",
                 }));
    }

    void theTBarMarksItsLinesAndKeepsThem()
    {
        MachinePage page;
        page.startAndPassTo(4);
        page.clickRight();
        page.take();
        page.clickRight();
        const QStringList made = page.take();
        QVERIFY(made.contains(QStringLiteral("frame.setStepIcon(0, 0)")));
        QVERIFY(!made.contains(QStringLiteral("frame.clearAllSteps()")));
        QCOMPARE(made.filter(QStringLiteral("addTestStep")), QStringList());
    }

    void withoutServicesThePageStillWorks()
    {
        MachinePage page;
        for (const char *name : {"lcdKeyboardEvent", "lcdFactoryModeBiz", "lcdConfig"})
            page.host.remove(name);
        page.make();
        page.enter();
        page.clickRight();
        VirtualTime::advance(20000);
        page.clickLeft();
        page.goBack();
        const QStringList made = page.take();
        QCOMPARE(made.filter(QRegularExpression(QStringLiteral("^(keyboard|factoryBiz|config)"))), QStringList());
        QCOMPARE(made.last(), QStringLiteral("signalBackToFactoryMenu"));
    }

    void aPageEnteredDuringARunIsWrittenOverByTheClock()
    {
        MachinePage page;
        page.startAndPassTo(0);
        page.widget->enterWindow();
        QCOMPARE(page.take(), Entered);
        page.clickLeft();
        QCOMPARE(page.take(), QStringList());
        VirtualTime::advance(2000);
        const QStringList made = page.take();
        QVERIFY(made.contains(QStringLiteral("frame.setTitle([FCScreenLight] 30%)")));
        QVERIFY(made.contains(QStringLiteral("frame.setRighttBtnVisible(false)")));
        page.goBack();
        QCOMPARE(page.take(), calls({"signalBackToFactoryMenu", "keyboard.setFactoryPanelMode(3)"}));
        page.clickRight();
        QCOMPARE(page.take(), Started);
    }

    void aPageEnteredDuringTheKeyWalkKeepsItsKeysAndTheBlockedButton()
    {
        MachinePage page;
        page.startAndPassTo(3);
        page.host.keyboard.press(10);
        QVERIFY(page.take().contains(QStringLiteral("frame.setNoPassButtonCanClicked(false)")));
        page.widget->enterWindow();
        QCOMPARE(page.take(), Entered);
        page.clickRight();
        QCOMPARE(page.take(), Started);
    }

    void aPageEnteredDuringARunStartsItAnew_data() { addPhases(); }

    void aPageEnteredDuringARunStartsItAnew()
    {
        QFETCH(const int, phase);
        MachinePage page;
        page.startAndPassTo(phase);
        page.widget->enterWindow();
        QCOMPARE(page.take(), Entered);
        page.clickRight();
        QCOMPARE(page.take(), Started);
    }

    void aPageDestroyedDuringARunSaysNothingMore_data() { addPhases(); }

    void aPageDestroyedDuringARunSaysNothingMore()
    {
        QFETCH(const int, phase);
        MachinePage page;
        page.startAndPassTo(phase);
        page.widget.reset();
        page.take();
        VirtualTime::advance(100000);
        page.operate.netReport({{0, true}, {1, true}});
        page.operate.usbReport({{1}});
        page.operate.pressKeys();
        for (const auto &result : page.host.tbarCalibration.results)
            result(false, "late");
        VirtualTime::settle();
        QCOMPARE(page.take(), QStringList());
    }

    void theMetaObjectIsTheToldOne()
    {
        const MachinePage page;
        const QMetaObject *meta = page.widget->metaObject();
        QCOMPARE(QByteArray(meta->className()), QByteArray("LCD::FactoryModeImpl::CompleteMachineTestWidget"));
        QCOMPARE(meta->methodCount(), meta->methodOffset() + 1);
        QCOMPARE(QByteArray(meta->method(meta->methodOffset()).methodSignature()),
                 QByteArray("signalBackToFactoryMenu()"));
    }

private:
    static void addPhases()
    {
        QTest::addColumn<int>("phase");
        for (const int phase : {0, 1, 2, 3, 4, 5, 6, 7, 9, 10})
            QTest::addRow("phase %d", phase) << phase;
    }
};

VIRTUAL_TIME_TEST_MAIN(CompleteMachineTestWidgetTest)
#include "tst_completemachinetestwidget.moc"
