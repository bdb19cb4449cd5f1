#include "agetestwidget.h"

#include "agetestbiz.h"
#include "services.h"
#include "testpagehelpers.h"
#include "translation.h"

#include <memory>
#include <string>

namespace LCD::FactoryModeImpl {

namespace {

[[maybe_unused]] const std::string RequestName = "AgeTestWidget";

/// A page on which the test is prepared and one on which it was stopped are both idle: the right button starts the
/// test.
enum AgePageState : int {
    AgePageIdle = 0,
    AgePageRunning = 1,
};

constexpr int PanelModeEntered = 4;
constexpr int PanelModeStarted = 5;
constexpr int PanelModeStopped = 6;
constexpr int PanelModeButtonLightFinished = 7;

}

// Threads: the GUI thread only. The test calls both callbacks of the page on this thread.
class AgeTestWidget::Impl : public QObject
{
    Q_OBJECT

public:
    explicit Impl(AgeTestWidget *page);

    void createWidgets();
    void createConnects();
    void setContentFontSize(int size);
    void enterWindow();

public Q_SLOTS:
    void slotLeftBtnClicked();
    void slotRightBtnClicked();

private:
    void setAgeTextInfoCallBack(const QString &text, const QColor &color);
    void goBack();
    void startTest();
    void stopTest();

    AgeTestWidget *ownerWidget;
    Widget::FactoryTestFrame *testFrame = nullptr;
    FactoryMode::IFactoryModeBiz *factoryBizService = nullptr;
    std::unique_ptr<AgeTestBiz> ageTestBiz;
    int pageState = AgePageIdle;
    FactoryMode::IKeyboardEvent *keyboardService = nullptr;
};

AgeTestWidget::Impl::Impl(AgeTestWidget *page) : QObject(page), ownerWidget(page)
{
    using namespace std::placeholders;
    keyboardService = keyboardEventService();
    factoryBizService = factoryModeBizService();
    ageTestBiz = std::make_unique<AgeTestBiz>();
    ageTestBiz->registerSetAgeTextInfoCallBack(std::bind(&Impl::setAgeTextInfoCallBack, this, _1, _2));
    ageTestBiz->registerOnButtonLightFinishedCallback(
        [this] { setPanelMode(keyboardService, PanelModeButtonLightFinished); });
}

void AgeTestWidget::Impl::createWidgets()
{
    if (testFrame)
        return;
    testFrame = new Widget::FactoryTestFrame(ownerWidget);
    fillPage(ownerWidget, testFrame);
}

void AgeTestWidget::Impl::createConnects()
{
    if (!testFrame)
        return;
    connect(testFrame, &Widget::FactoryTestFrame::signalBackPrevious, this, &Impl::goBack);
    connect(testFrame, &Widget::FactoryTestFrame::signalLeftBtnClicked, this, &Impl::slotLeftBtnClicked);
    connect(testFrame, &Widget::FactoryTestFrame::signalRightBtnClicked, this, &Impl::slotRightBtnClicked);
}

void AgeTestWidget::Impl::setContentFontSize(int size)
{
    if (testFrame)
        testFrame->setContentFontSize(size);
}

void AgeTestWidget::Impl::enterWindow()
{
    if (factoryBizService)
        factoryBizService->setMachineTestKind(0);
    if (!testFrame)
        return;
    pageState = AgePageIdle;
    testFrame->setTitle(translated(QStringLiteral("FCAgeMode")));
    testFrame->setTitleIcon(titleIconLabel(), QStringLiteral("AgingMode"));
    testFrame->setStepTitle(QString(), QColor(Qt::white));
    testFrame->addTestSteps(
        {translated(QStringLiteral("FCAgeModeTestPreparation")), translated(QStringLiteral("FCAgeModeStartTips"))});
    testFrame->setLeftBtnVisible(false);
    testFrame->setRighttBtnVisible(true);
    testFrame->setRightBtnText(translated(QStringLiteral("FCAgeModeStartTest")));
    testFrame->setControlFocus(FocusOnRightButton);
    testFrame->setStatusIconVisible(false);
    testFrame->setStepTitleVisible(false);
    setPanelMode(keyboardService, PanelModeEntered);
}

void AgeTestWidget::Impl::slotLeftBtnClicked()
{
    if (pageState == AgePageRunning)
        ageTestBiz->recount();
}

void AgeTestWidget::Impl::slotRightBtnClicked()
{
    if (pageState == AgePageIdle)
        startTest();
    else if (pageState == AgePageRunning)
        stopTest();
}

void AgeTestWidget::Impl::startTest()
{
    setPanelMode(keyboardService, PanelModeStarted);
    testFrame->setLeftBtnVisible(true);
    testFrame->setRighttBtnVisible(true);
    testFrame->setRightBtnText(translated(QStringLiteral("FCAgeModeStopTest")));
    testFrame->setLeftBtnText(translated(QStringLiteral("FCAgeModeRecount")));
    pageState = AgePageRunning;
    testFrame->setIsReponseEvent(false);
    ageTestBiz->start();
}

void AgeTestWidget::Impl::stopTest()
{
    setPanelMode(keyboardService, PanelModeStopped);
    testFrame->setLeftBtnVisible(false);
    testFrame->setRighttBtnVisible(false);
    testFrame->setIsReponseEvent(true);
    testFrame->setControlFocus(FocusOnNoButton);
    pageState = AgePageIdle;
    ageTestBiz->stop();
}

void AgeTestWidget::Impl::setAgeTextInfoCallBack(const QString &text, const QColor &color)
{
    if (text.isEmpty())
        testFrame->clearAllSteps();
    else
        testFrame->addTestStep(text, color, false);
}

void AgeTestWidget::Impl::goBack()
{
    goBackToMenu(*ownerWidget, keyboardService);
}

AgeTestWidget::AgeTestWidget(QWidget *parent) : QWidget(parent), d(new Impl(this))
{
    d->createWidgets();
    d->createConnects();
}

AgeTestWidget::~AgeTestWidget()
{
    delete d;
}

void AgeTestWidget::setContentFontSize(int size)
{
    if (d)
        d->setContentFontSize(size);
}

void AgeTestWidget::enterWindow()
{
    if (d)
        d->enterWindow();
}

}

#include "agetestwidget.moc"
