#include "completemachinetestbiz.h"
#include "completemachinetestwidget.h"
#include "machinerun.h"

#include "lcd/widget/factorytestframe.h"

#include <QtCore/QLoggingCategory>
#include <QtWidgets/QApplication>

#include <benchmark/benchmark.h>

#include <thread>

// What the page of the complete machine test costs when its frame does nothing. The empty frame of this program
// replaces that of the widget library.

using namespace LCD::FactoryModeImpl;
using LCD::Widget::FactoryTestFrame;

namespace {

constexpr int Reports = 1000;
constexpr int FinishedMode = 8; // the panel mode after a run

/// The page, and its right button.
struct Page
{
    CompleteMachineTestWidget widget{nullptr};
    FactoryTestFrame *frame = widget.findChild<FactoryTestFrame *>();

    void pressRight() const { Q_EMIT frame->signalRightBtnClicked(false); }
};

void pageWithEmptyFrame(benchmark::State &bench)
{
    QuietHost host;
    const Menu menu(host);
    const Keys keys = menu.getFactoryKeyCheckList();
    Page page;
    page.widget.show();
    for (auto _ : bench) {
        page.widget.enterWindow();
        page.pressRight();
        passRun(host, keys, [&page] { page.pressRight(); });
    }
    if (host.keyboard.panelMode != FinishedMode)
        bench.SkipWithError("the run didn't end");
}

/// Reports the links of the net ports on another thread, and delivers what that thread has posted.
void reportOnThread(const QuietHost &host, const std::any &report)
{
    std::thread service([&host, &report] {
        for (int i = 0; i < Reports; ++i)
            host.network.changed(report);
    });
    service.join();
    QCoreApplication::sendPostedEvents();
}

void screensOfThread(benchmark::State &bench)
{
    QuietHost host;
    const Menu menu(host);
    Page page;
    page.widget.enterWindow();
    page.pressRight();
    passUpToNetPorts(host, menu.getFactoryKeyCheckList(), [&page] { page.pressRight(); });
    const std::any report = netReport(2);
    for (auto _ : bench) {
        host.keyboard.panelModes = 0;
        reportOnThread(host, report);
    }
    if (host.keyboard.panelModes != Reports)
        bench.SkipWithError("the page hasn't shown each screen");
}

/// What the page does with a link result.
void showLinkResult(FactoryTestFrame &frame, LCD::FactoryMode::IKeyboardEvent &keyboard,
                    const CompleteMachinePhaseInfo &info)
{
    frame.setTitle(info.title);
    frame.setTitleIcon(QStringLiteral("FactoryIconLabel"), info.titleIcon);
    frame.setStepTitle(info.stepTitle, QColor(Qt::white));
    frame.setStepTitleVisible(info.stepTitleVisible);
    frame.clearAllSteps();
    for (const QString &step : info.steps)
        frame.addTestStep(step, QColor(Qt::white), false);
    frame.setLeftBtnText(info.leftBtnText);
    frame.setRightBtnText(info.rightBtnText);
    frame.setLeftBtnVisible(info.leftBtnVisible);
    frame.setRighttBtnVisible(info.rightBtnVisible);
    frame.setNoPassButtonCanClicked(info.noPassBtnClickable);
    frame.setKeyEventsEnabled(info.keyEventsEnabled);
    frame.setStatusIcon(info.statusIcon);
    frame.setStatusIconVisible(info.statusIconVisible);
    frame.setControlFocus(static_cast<LCD::Widget::FocusType>(1));
    keyboard.setFactoryPanelMode(info.panelMode);
}

void queuedFunctors(benchmark::State &bench)
{
    QuietHost host;
    const Menu menu(host);
    FactoryTestFrame frame(nullptr);
    LCD::FactoryMode::IKeyboardEvent &keyboard = host.keyboard;
    CompleteMachineTestBiz test;
    test.start();
    passUpToNetPorts(host, menu.getFactoryKeyCheckList(), [&test] { test.onRightBtnClicked(); });
    test.registerPhaseCallback("bench", [&frame, &keyboard](const CompleteMachinePhaseInfo &info) {
        QMetaObject::invokeMethod(
            &frame, [&frame, &keyboard, info] { showLinkResult(frame, keyboard, info); }, Qt::QueuedConnection);
    });
    const std::any report = netReport(2);
    for (auto _ : bench) {
        host.keyboard.panelModes = 0;
        reportOnThread(host, report);
    }
    if (host.keyboard.panelModes != Reports)
        bench.SkipWithError("not every functor has run");
}

BENCHMARK(pageWithEmptyFrame)->Name("machine run, page with an empty frame/component");
BENCHMARK(bareMachineRun)->Name("machine run, page with an empty frame/bare");
BENCHMARK(screensOfThread)->Name("screens from another thread/component")->MeasureProcessCPUTime();
BENCHMARK(queuedFunctors)->Name("screens from another thread/bare")->MeasureProcessCPUTime();

}

int main(int argc, char **argv)
{
    VirtualTime::install();
    QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
