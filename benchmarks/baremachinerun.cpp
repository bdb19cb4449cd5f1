#include "machinerun.h"

#include "completemachinetestbiz.h"

#include "lcd/translate/lcdfwtranslatemanager.h"
#include "veltor/trans/translate.h"

#include <benchmark/benchmark.h>

using namespace LCD::FactoryModeImpl;

namespace {

QString lookUp(const QString &key)
{
    return veltor::trans::translate(LCDFWTranslateManager::instance()->translator(), QStringLiteral("LCD::HomeWidgets"),
                                    QStringLiteral("Global"), key);
}

// As many texts as in the given screen.
CompleteMachinePhaseInfo screenLike(const CompleteMachinePhaseInfo &shape)
{
    CompleteMachinePhaseInfo info;
    if (!shape.title.isEmpty())
        info.title = lookUp(QStringLiteral("MachineMode"));
    if (!shape.stepTitle.isEmpty())
        info.stepTitle = lookUp(QStringLiteral("TestStep"));
    for (int i = 0; i < shape.steps.size(); ++i)
        info.steps << lookUp(QStringLiteral("Push T-Bar to Bottom"));
    if (!shape.leftBtnText.isEmpty())
        info.leftBtnText = lookUp(QStringLiteral("FCNoPass"));
    if (!shape.rightBtnText.isEmpty())
        info.rightBtnText = lookUp(QStringLiteral("FCPass"));
    return info;
}

}

QVector<CompleteMachinePhaseInfo> screensOfRun(const QuietHost &host, const Keys &keys)
{
    QVector<CompleteMachinePhaseInfo> screens;
    CompleteMachineTestBiz test;
    test.registerPhaseCallback("bench", [&screens](const CompleteMachinePhaseInfo &info) { screens << info; });
    test.start();
    passRun(host, keys, [&test] { test.onRightBtnClicked(); });
    return screens;
}

void bareMachineRun(benchmark::State &bench)
{
    QuietHost host;
    const Menu menu(host);
    const Keys keys = menu.getFactoryKeyCheckList();
    const auto shapes = screensOfRun(host, keys);
    const std::function<void(const CompleteMachinePhaseInfo &)> listener = [](const CompleteMachinePhaseInfo &info) {
        benchmark::DoNotOptimize(&info);
    };
    LCD::FactoryMode::IKeyboardEvent *keyboard = &host.keyboard;
    benchmark::DoNotOptimize(keyboard);
    for (auto _ : bench) {
        for (const auto &shape : shapes)
            listener(screenLike(shape));
        for (const auto &key : keys) {
            keyboard->setKeyLed(key.first, {});
            keyboard->setKeyLed(key.first, {});
        }
    }
}
