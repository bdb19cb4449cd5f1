#include "completemachinetestwidget.h"

#include "completemachinetestbiz.h"
#include "services.h"
#include "testpagehelpers.h"
#include "translation.h"

#include <memory>
#include <string>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QThread>

namespace LCD::FactoryModeImpl {

namespace {

const std::string RequestName = "CompleteMachineTestWidget";

constexpr int PanelModeEntered = 8;

constexpr auto LogOfTest = static_cast<Widget::FactoryTestRightFrame::FactoryTestLogType>(0);
constexpr auto LogLevelOfTest = static_cast<Widget::FactoryTestRightFrame::FactoryTestLogLevel>(2);
constexpr auto PassIcon = static_cast<Widget::IconType>(0);

/// Carries a screen to the thread of the page.
class PhaseEvent : public QEvent
{
public:
    explicit PhaseEvent(const CompleteMachinePhaseInfo &record) : QEvent(QEvent::User), info(record) {}

    const CompleteMachinePhaseInfo info;
};

}

// Threads: the GUI thread only, except the callbacks of the test, which are called on any thread.
class CompleteMachineTestWidget::Impl : public QObject
{
    Q_OBJECT

public:
    explicit Impl(CompleteMachineTestWidget *page);
    ~Impl() override;

    void createWidgets();
    void createConnects();
    void enterWindow();
    void setContentFontSize(int size);

public Q_SLOTS:
    void slotLeftBtnClicked();
    void slotRightBtnClicked();

protected:
    void customEvent(QEvent *event) override;

private:
    void registerCallbacks();
    void queuePhaseInfo(const CompleteMachinePhaseInfo &info);
    void onPhaseChanged(const CompleteMachinePhaseInfo &info);
    void onLog(const QString &text) const;
    void markStepPassed(int step) const;
    void applyPhaseInfo(const CompleteMachinePhaseInfo &info);
    void applyHeading(const CompleteMachinePhaseInfo &info);
    void applySteps(const CompleteMachinePhaseInfo &info);
    void applyButtons(const CompleteMachinePhaseInfo &info);
    void applyStatus(const CompleteMachinePhaseInfo &info);
    bool isFinished() const;
    void startRun();
    void goBack();

    CompleteMachineTestWidget *ownerWidget;
    Widget::FactoryTestFrame *testFrame = nullptr;
    FactoryMode::IFactoryModeBiz *factoryBizService = nullptr;
    std::unique_ptr<CompleteMachineTestBiz> completeMachineBiz;
    bool awaitingStart = true;
    FactoryMode::IKeyboardEvent *keyboardService = nullptr;
};

CompleteMachineTestWidget::Impl::Impl(CompleteMachineTestWidget *page) : QObject(page), ownerWidget(page)
{
    keyboardService = keyboardEventService();
    factoryBizService = factoryModeBizService();
    completeMachineBiz = std::make_unique<CompleteMachineTestBiz>();
    registerCallbacks();
}

// Deletes the driver first, because its listeners use the other members.
CompleteMachineTestWidget::Impl::~Impl()
{
    completeMachineBiz.reset();
}

void CompleteMachineTestWidget::Impl::registerCallbacks()
{
    completeMachineBiz->registerPhaseCallback(RequestName,
                                              [this](const CompleteMachinePhaseInfo &info) { queuePhaseInfo(info); });
    completeMachineBiz->registerLogCallback(RequestName, [this](const QString &text) { onLog(text); });
    completeMachineBiz->registerStepIconCallback(RequestName, [this](int step) { markStepPassed(step); });
}

void CompleteMachineTestWidget::Impl::createWidgets()
{
    if (testFrame)
        return;
    testFrame = new Widget::FactoryTestFrame(ownerWidget);
    if (FactoryMode::IConfig *config = configService())
        testFrame->setFactoryTestKeyMode(config->getFactoryTestKeyMode());
    fillPage(ownerWidget, testFrame);
}

void CompleteMachineTestWidget::Impl::createConnects()
{
    connect(testFrame, &Widget::FactoryTestFrame::signalBackPrevious, this, &Impl::goBack);
    connect(testFrame, &Widget::FactoryTestFrame::signalLeftBtnClicked, this, &Impl::slotLeftBtnClicked);
    connect(testFrame, &Widget::FactoryTestFrame::signalRightBtnClicked, this, &Impl::slotRightBtnClicked);
}

void CompleteMachineTestWidget::Impl::enterWindow()
{
    if (factoryBizService)
        factoryBizService->setMachineTestKind(1);
    awaitingStart = true;
    if (!testFrame)
        return;
    testFrame->setIsReponseEvent(true);
    testFrame->setTitle(translated(QStringLiteral("MachineMode")));
    testFrame->setTitleIcon(titleIconLabel(), QStringLiteral("MachineMode"));
    testFrame->setStepTitle(QString(), QColor(Qt::white));
    testFrame->clearAllSteps();
    testFrame->setLeftBtnVisible(false);
    testFrame->setRighttBtnVisible(true);
    testFrame->setRightBtnText(translated(QStringLiteral("FCAgeModeStartTest")));
    testFrame->setControlFocus(FocusOnRightButton);
    testFrame->setStatusIconVisible(false);
    setPanelMode(keyboardService, PanelModeEntered);
}

void CompleteMachineTestWidget::Impl::setContentFontSize(int size)
{
    if (testFrame)
        testFrame->setContentFontSize(size);
}

void CompleteMachineTestWidget::Impl::slotLeftBtnClicked()
{
    if (awaitingStart)
        return;
    if (isFinished())
        startRun();
    else
        completeMachineBiz->onLeftBtnClicked();
}

void CompleteMachineTestWidget::Impl::slotRightBtnClicked()
{
    if (awaitingStart)
        startRun();
    else
        completeMachineBiz->onRightBtnClicked();
}

bool CompleteMachineTestWidget::Impl::isFinished() const
{
    const int result = completeMachineBiz->result();
    return result == 1 || result == 2;
}

void CompleteMachineTestWidget::Impl::startRun()
{
    awaitingStart = false;
    testFrame->setIsReponseEvent(true);
    completeMachineBiz->start();
}

// A run in progress can't be left.
void CompleteMachineTestWidget::Impl::goBack()
{
    if (!awaitingStart && !isFinished())
        return;
    goBackToMenu(*ownerWidget, keyboardService);
}

// Runs on the thread on which the screen was created. This may be the thread of a host service without an event loop,
// where a timer would never fire; a posted event needs no event loop there. Each event carries one screen: if there is
// no memory for it, nothing else has changed. Events keep their order. Events that are pending when the page is deleted
// are dropped.
void CompleteMachineTestWidget::Impl::queuePhaseInfo(const CompleteMachinePhaseInfo &info)
{
    if (QThread::currentThread() == ownerWidget->thread())
        return onPhaseChanged(info);
    QCoreApplication::postEvent(this, new PhaseEvent(info));
}

void CompleteMachineTestWidget::Impl::customEvent(QEvent *event)
{
    if (const auto *phaseEvent = dynamic_cast<PhaseEvent *>(event))
        onPhaseChanged(phaseEvent->info);
}

void CompleteMachineTestWidget::Impl::onPhaseChanged(const CompleteMachinePhaseInfo &info)
{
    applyPhaseInfo(info);
}

// Log lines and step marks may arrive on any thread. The frame moves them to its own thread.
void CompleteMachineTestWidget::Impl::onLog(const QString &text) const
{
    if (testFrame)
        testFrame->log(text, LogOfTest, LogLevelOfTest);
}

void CompleteMachineTestWidget::Impl::markStepPassed(int step) const
{
    if (testFrame)
        testFrame->setStepIcon(step, PassIcon);
}

void CompleteMachineTestWidget::Impl::applyPhaseInfo(const CompleteMachinePhaseInfo &info)
{
    if (!testFrame)
        return;
    if (info.title.isEmpty()) {
        testFrame->setNoPassButtonCanClicked(info.noPassBtnClickable);
        return;
    }
    applyHeading(info);
    applySteps(info);
    applyButtons(info);
    applyStatus(info);
    testFrame->setControlFocus(info.focusLeftBtn == 0 ? FocusOnRightButton : FocusOnLeftButton);
    if (info.panelMode != CompleteMachinePhaseInfo::KeepPanelMode)
        setPanelMode(keyboardService, info.panelMode);
}

void CompleteMachineTestWidget::Impl::applyHeading(const CompleteMachinePhaseInfo &info)
{
    testFrame->setTitle(info.title);
    if (!info.titleIcon.isEmpty())
        testFrame->setTitleIcon(titleIconLabel(), info.titleIcon);
    if (!info.stepTitle.isEmpty())
        testFrame->setStepTitle(info.stepTitle, QColor(Qt::white));
    testFrame->setStepTitleVisible(info.stepTitleVisible);
}

void CompleteMachineTestWidget::Impl::applySteps(const CompleteMachinePhaseInfo &info)
{
    if (info.keepSteps)
        return;
    testFrame->clearAllSteps();
    for (int line = 0; line < info.steps.size(); ++line)
        testFrame->addTestStep(info.steps.at(line), info.stepColors.value(line, QColor(Qt::white)), false);
}

void CompleteMachineTestWidget::Impl::applyButtons(const CompleteMachinePhaseInfo &info)
{
    if (!info.leftBtnText.isEmpty())
        testFrame->setLeftBtnText(info.leftBtnText);
    if (!info.rightBtnText.isEmpty())
        testFrame->setRightBtnText(info.rightBtnText);
    testFrame->setLeftBtnVisible(info.leftBtnVisible);
    testFrame->setRighttBtnVisible(info.rightBtnVisible);
    testFrame->setNoPassButtonCanClicked(info.noPassBtnClickable);
    testFrame->setKeyEventsEnabled(info.keyEventsEnabled);
}

void CompleteMachineTestWidget::Impl::applyStatus(const CompleteMachinePhaseInfo &info)
{
    if (!info.statusIcon.isEmpty())
        testFrame->setStatusIcon(info.statusIcon);
    testFrame->setStatusIconVisible(info.statusIconVisible);
}

CompleteMachineTestWidget::CompleteMachineTestWidget(QWidget *parent) : QWidget(parent), d(new Impl(this))
{
    d->createWidgets();
    d->createConnects();
}

CompleteMachineTestWidget::~CompleteMachineTestWidget()
{
    delete d;
}

void CompleteMachineTestWidget::enterWindow()
{
    if (d)
        d->enterWindow();
}

void CompleteMachineTestWidget::setContentFontSize(int size)
{
    if (d)
        d->setContentFontSize(size);
}

}

#include "completemachinetestwidget.moc"
