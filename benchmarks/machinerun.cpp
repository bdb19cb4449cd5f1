#include "machinerun.h"

#include "completemachinetestbiz.h"
#include "completemachinetestwidget.h"

#include <QtCore/QLoggingCategory>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <benchmark/benchmark.h>

#include <initializer_list>

// What a complete machine test that passes costs: the drivers beside the translations, screens and key LEDs of the same
// run, and the page with its frame beside labels of Qt with the same texts.

using namespace LCD::FactoryModeImpl;

namespace {

constexpr int Passed = 1;
const QSize LcdSize(800, 480);

void driversOnly(benchmark::State &bench)
{
    QuietHost host;
    const Menu menu(host);
    const Keys keys = menu.getFactoryKeyCheckList();
    CompleteMachineTestBiz test;
    test.registerPhaseCallback("bench", [](const CompleteMachinePhaseInfo &info) { benchmark::DoNotOptimize(&info); });
    for (auto _ : bench) {
        test.start();
        passRun(host, keys, [&test] { test.onRightBtnClicked(); });
    }
    if (test.result() != Passed)
        bench.SkipWithError("the run didn't pass");
}

void pageShown(benchmark::State &bench)
{
    QuietHost host;
    const Menu menu(host);
    const Keys keys = menu.getFactoryKeyCheckList();
    CompleteMachineTestWidget page(nullptr);
    page.resize(LcdSize);
    page.show();
    QCoreApplication::processEvents(); // exposes the window
    const QList<QPushButton *> buttons = page.findChildren<QPushButton *>();
    QPushButton *right = buttons.last();
    for (auto _ : bench) {
        page.enterWindow();
        right->click();
        passRun(host, keys, [right] {
            VirtualTime::settle();
            right->click();
            VirtualTime::settle();
        });
    }
    if (page.findChild<QWidget *>(QStringLiteral("FactoryLogPane"))->accessibleDescription()
        != QLatin1String("Net port 1 POE power pass"))
        bench.SkipWithError("the run didn't pass");
}

/// Shows screens with labels and buttons of Qt.
class BarePage : public QWidget
{
public:
    BarePage()
    {
        auto *layout = new QVBoxLayout(this);
        for (QWidget *part : std::initializer_list<QWidget *>{m_title, m_heading, m_steps, m_left, m_right})
            layout->addWidget(part);
        m_steps->setWordWrap(true);
        resize(LcdSize);
    }

    void showScreen(const CompleteMachinePhaseInfo &screen)
    {
        m_title->setText(screen.title);
        m_heading->setText(screen.stepTitle);
        m_steps->setText(screen.steps.join(QLatin1Char('\n')));
        m_left->setText(screen.leftBtnText);
        m_left->setVisible(screen.leftBtnVisible);
        m_right->setText(screen.rightBtnText);
        m_right->setVisible(screen.rightBtnVisible);
    }

private:
    QLabel *m_title = new QLabel(this);
    QLabel *m_heading = new QLabel(this);
    QLabel *m_steps = new QLabel(this);
    QPushButton *m_left = new QPushButton(this);
    QPushButton *m_right = new QPushButton(this);
};

void barePageShown(benchmark::State &bench)
{
    QuietHost host;
    const Menu menu(host);
    const auto screens = screensOfRun(host, menu.getFactoryKeyCheckList());
    BarePage page;
    page.show();
    QCoreApplication::processEvents(); // exposes the window
    for (auto _ : bench) {
        for (const auto &screen : screens) {
            page.showScreen(screen);
            VirtualTime::settle();
        }
    }
}

BENCHMARK(driversOnly)->Name("machine run, drivers/component");
BENCHMARK(bareMachineRun)->Name("machine run, drivers/bare");
BENCHMARK(pageShown)->Name("machine run, page shown/component")->Unit(benchmark::kMicrosecond);
BENCHMARK(barePageShown)->Name("machine run, page shown/bare")->Unit(benchmark::kMicrosecond);

}

int main(int argc, char **argv)
{
    VirtualTime::install();
    QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
