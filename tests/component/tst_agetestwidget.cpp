#include "agetestwidget.h"
#include "calls.h"
#include "recordingframe.h"
#include "virtualtime.h"

#include <QtTest/QtTest>
#include <QtWidgets/QVBoxLayout>

#include <memory>

using LCD::FactoryModeImpl::AgeTestWidget;

namespace {

const QStringList Entered = calls({
    "factoryBiz.setMachineTestKind(0)",
    "frame.setTitle([FCAgeMode])",
    "frame.setTitleIcon(FactoryIconLabel, AgingMode)",
    "frame.setStepTitle(, #ffffff)",
    "frame.addTestSteps([FCAgeModeTestPreparation] | [FCAgeModeStartTips])",
    "frame.setLeftBtnVisible(false)",
    "frame.setRighttBtnVisible(true)",
    "frame.setRightBtnText([FCAgeModeStartTest])",
    "frame.setControlFocus(1)",
    "frame.setStatusIconVisible(false)",
    "frame.setStepTitleVisible(false)",
    "keyboard.setFactoryPanelMode(4)",
});

const QStringList Started = calls({
    "keyboard.setFactoryPanelMode(5)",
    "frame.setLeftBtnVisible(true)",
    "frame.setRighttBtnVisible(true)",
    "frame.setRightBtnText([FCAgeModeStopTest])",
    "frame.setLeftBtnText([FCAgeModeRecount])",
    "frame.setIsReponseEvent(false)",
    "frame.clearAllSteps()",
    "frame.addTestStep([FCAging][FCScreenLight] 10%, #ffffff, false)",
    "frame.addTestStep( , #ff0000, false)",
    "factoryBiz.setFactoryTestType(0)",
    "keyboard.setScreenBrightness(0, 10)",
    "keyboard.setScreenBrightness(1, 10)",
    "keyboard.setScreenBrightness(2, 10)",
});

/// The page with a recording frame and recording services.
class Page
{
public:
    Page()
    {
        recordFrameCalls(&host.calls);
        widget = std::make_unique<AgeTestWidget>(nullptr);
    }
    ~Page()
    {
        widget.reset();
        recordFrameCalls(nullptr);
    }
    QStringList take() { return host.calls.take(); }
    void enter()
    {
        widget->enterWindow();
        take();
    }
    void clickRight() { Q_EMIT frameOf(*widget)->signalRightBtnClicked(false); }
    void clickLeft() { Q_EMIT frameOf(*widget)->signalLeftBtnClicked(false); }
    void goBack() { Q_EMIT frameOf(*widget)->signalBackPrevious(); }

    RecordingHost host;
    std::unique_ptr<AgeTestWidget> widget;
};

}

/// The page of the aging test.
class AgeTestWidgetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isAWidgetAndOnePointer() { QCOMPARE(sizeof(AgeTestWidget), sizeof(QWidget) + 8); }

    void makesOneFrameThatFillsIt()
    {
        Page page;
        QCOMPARE(page.take(), calls({"frame.FactoryTestFrame()"}));
        page.widget->resize(640, 400);
        page.widget->show();
        QCOMPARE(frameOf(*page.widget)->geometry(), QRect(0, 0, 640, 400));
        QCOMPARE(page.widget->layout()->contentsMargins(), QMargins());
        QVERIFY(qobject_cast<QVBoxLayout *>(page.widget->layout()));
    }

    void asksForItsServicesInOrder()
    {
        const Page page;
        QCOMPARE(page.host.lookups.mid(0, 2), calls({"lcdKeyboardEvent", "lcdFactoryModeBiz"}));
    }

    void enteringPreparesThePage()
    {
        Page page;
        page.take();
        page.widget->enterWindow();
        QCOMPARE(page.take(), Entered);
    }

    void enteringAgainPreparesAgainAndConnectsNothingTwice()
    {
        Page page;
        page.enter();
        page.widget->enterWindow();
        QCOMPARE(page.take(), Entered);
        page.clickRight();
        QCOMPARE(page.take(), Started);
    }

    void theFontSizeGoesToTheFrame()
    {
        Page page;
        page.take();
        page.widget->setContentFontSize(30);
        QCOMPARE(page.take(), calls({"frame.setContentFontSize(30)"}));
    }

    void rightStarts()
    {
        Page page;
        page.enter();
        page.clickRight();
        QCOMPARE(page.take(), Started);
    }

    void rightAgainStopsWithoutAsking()
    {
        Page page;
        page.enter();
        page.clickRight();
        VirtualTime::advance(2000);
        page.take();
        page.clickRight();
        QCOMPARE(page.take(),
                 calls({
                     "keyboard.setFactoryPanelMode(6)",
                     "frame.setLeftBtnVisible(false)",
                     "frame.setRighttBtnVisible(false)",
                     "frame.setIsReponseEvent(true)",
                     "frame.setControlFocus(2)",
                     "frame.clearAllSteps()",
                     "frame.addTestStep([FCAging][FCScreenLight] 30%, #ffffff, false)",
                     "frame.addTestStep( , #ff0000, false)",
                     "keyboard.setScreenBrightness(0, 100)",
                     "keyboard.setScreenBrightness(1, 100)",
                     "keyboard.setScreenBrightness(2, 100)",
                 }));
        VirtualTime::advance(100000);
        QCOMPARE(page.take(), QStringList());
    }

    void aRightClickAfterTheStopStartsAgain()
    {
        Page page;
        page.enter();
        page.clickRight();
        page.clickRight();
        page.take();
        page.clickRight();
        QCOMPARE(page.take(), Started);
    }

    void backAfterTheStopLeadsToTheMenuAndANewEntryPreparesANewRun()
    {
        Page page;
        page.enter();
        page.clickRight();
        page.clickRight();
        page.take();
        page.goBack();
        QCOMPARE(page.take(), calls({"keyboard.setFactoryPanelMode(3)"}));
        page.widget->enterWindow();
        QCOMPARE(page.take(), Entered);
        page.clickRight();
        QCOMPARE(page.take(), Started);
    }

    void leftDoesNothingUnlessTheTestRuns()
    {
        Page page;
        page.enter();
        page.clickLeft();
        QCOMPARE(page.take(), QStringList());
        page.clickRight();
        page.clickRight();
        page.take();
        page.clickLeft();
        QCOMPARE(page.take(), QStringList());
    }

    void leftRecountsWhileTheTestRuns()
    {
        Page page;
        page.enter();
        page.clickRight();
        page.take();
        page.clickLeft();
        QCOMPARE(page.take(),
                 calls({"frame.clearAllSteps()", "frame.addTestStep([FCAging][FCScreenLight] 10%, #ffffff, false)"}));
    }

    void theEndOfTheButtonLightStepIsToldOncePerRound()
    {
        Page page;
        page.enter();
        page.clickRight();
        VirtualTime::advance(75999);
        QVERIFY(!page.take().contains(QStringLiteral("keyboard.setFactoryPanelMode(7)")));
        VirtualTime::advance(1);
        const QStringList made = page.take();
        QCOMPARE(
            made.mid(0, 3),
            calls({"keyboard.setAllButtonBrightness(0)", "keyboard.setFactoryPanelMode(7)", "frame.clearAllSteps()"}));
        QCOMPARE(made.filter(QStringLiteral("setFactoryPanelMode")).size(), 1);
    }

    void backAsksForTheMenuAndThenTellsTheService()
    {
        Page page;
        page.enter();
        connect(page.widget.get(), &AgeTestWidget::signalBackToFactoryMenu, this,
                [&] { page.host.calls.add(QStringLiteral("signalBackToFactoryMenu")); });
        page.goBack();
        QCOMPARE(page.take(), calls({"signalBackToFactoryMenu", "keyboard.setFactoryPanelMode(3)"}));
    }

    void backLeavesARunGoing()
    {
        Page page;
        page.enter();
        page.clickRight();
        page.goBack();
        page.take();
        VirtualTime::advance(2000);
        QVERIFY(page.take().contains(QStringLiteral("keyboard.setScreenBrightness(0, 30)")));
    }

    void enteringLeavesARunGoing()
    {
        Page page;
        page.enter();
        page.clickRight();
        page.take();
        page.widget->enterWindow();
        QCOMPARE(page.take(), Entered);
        VirtualTime::advance(2000);
        QVERIFY(
            page.take().contains(QStringLiteral("frame.addTestStep([FCAging][FCScreenLight] 30%, #ffffff, false)")));
    }

    void aPageDestroyedDuringARunSaysNothingMore_data() { addSteps(); }

    void aPageDestroyedDuringARunSaysNothingMore()
    {
        Page page;
        runIntoTheRound(page);
        page.widget.reset();
        VirtualTime::advance(100000);
        changeLinks(page);
        QCOMPARE(page.take(), QStringList());
    }

    void aPageEnteredDuringARunStartsItAnew_data() { addSteps(); }

    void aPageEnteredDuringARunStartsItAnew()
    {
        Page page;
        runIntoTheRound(page);
        page.widget->enterWindow();
        QCOMPARE(page.take(), Entered);
        page.clickLeft();
        QCOMPARE(page.take(), QStringList());
        page.clickRight();
        const QStringList made = page.take();
        QCOMPARE(made.mid(0, 6), Started.mid(0, 6));
        QVERIFY(made.contains(QStringLiteral("factoryBiz.setFactoryTestType(0)")));
        VirtualTime::advance(2000);
        QVERIFY(page.take().contains(QStringLiteral("keyboard.setScreenBrightness(0, 30)")));
    }

    void aLinkChangeRevivesTheTestOfAPageThatWasLeft()
    {
        Page page;
        page.enter();
        page.clickRight();
        VirtualTime::advance(76000);
        page.clickRight();
        page.goBack();
        page.take();
        page.host.networkPort.changed.fire(RecordingNetworkPort::payload({{0, false}}));
        const QStringList made = page.take();
        QVERIFY(made.contains(QStringLiteral("frame.addTestStep([FCAging][FCScreenBadPixel], #ffffff, false)")));
        QCOMPARE(made.last(), QStringLiteral("keyboard.setLcdTestPattern(1, 1)"));
    }

    void withoutServicesThePageStillWorks()
    {
        Page page;
        page.host.remove("lcdKeyboardEvent");
        page.host.remove("lcdFactoryModeBiz");
        page.widget = std::make_unique<AgeTestWidget>(nullptr);
        page.take();
        page.widget->enterWindow();
        page.clickRight();
        VirtualTime::advance(2000);
        const QStringList made = page.take();
        QVERIFY(made.filter(QRegularExpression(QStringLiteral("^(keyboard|factoryBiz)"))).isEmpty());
        QCOMPARE(made.last(), QStringLiteral("frame.addTestStep( , #ff0000, false)"));
        page.goBack();
        page.clickRight();
    }

    void nothingIsLogged()
    {
        Page page;
        const LogCapture log;
        page.enter();
        page.clickRight();
        VirtualTime::advance(40000);
        page.clickLeft();
        page.clickRight();
        page.goBack();
        QCOMPARE(log.lines(), QStringList());
    }

    void theMetaObjectsAreTheToldOnes()
    {
        const Page page;
        const QMetaObject *meta = page.widget->metaObject();
        QCOMPARE(QByteArray(meta->className()), QByteArray("LCD::FactoryModeImpl::AgeTestWidget"));
        QCOMPARE(QByteArray(meta->method(meta->methodOffset()).methodSignature()),
                 QByteArray("signalBackToFactoryMenu()"));
    }

private:
    static void addSteps()
    {
        QTest::addColumn<int>("intoTheRound");
        QTest::addColumn<bool>("netChanges");
        QTest::newRow("brightness") << 3000 << false;
        QTest::newRow("bad pixel") << 30000 << false;
        QTest::newRow("button light") << 61000 << false;
        QTest::newRow("net") << 80000 << false;
        QTest::newRow("USB") << 80000 << true;
    }

    static void changeLinks(Page &page)
    {
        page.host.networkPort.changed.fire(RecordingNetworkPort::payload({{0, false}}));
        page.host.usb.changed.fire(RecordingUsb::payload({{1}}));
    }

    /// Advances the test to the step of the current data row.
    static void runIntoTheRound(Page &page)
    {
        QFETCH(const int, intoTheRound);
        QFETCH(const bool, netChanges);
        page.enter();
        page.clickRight();
        VirtualTime::advance(intoTheRound);
        if (netChanges)
            page.host.networkPort.changed.fire(RecordingNetworkPort::payload({{0, false}}));
        page.take();
    }
};

VIRTUAL_TIME_TEST_MAIN(AgeTestWidgetTest)
#include "tst_agetestwidget.moc"
