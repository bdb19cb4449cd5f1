#include "tbartest.h"

#include "lcd/factorymode/ikeyboardevent.h"
#include "lcd/factorymode/itbarcalibration.h"
#include "lcdfactorymodeimpl/tbartestbiz.h"
#include "mirel/api.h"
#include "reportqueue.h"
#include "singletestadapter.h"
#include "texts.h"

#include <QtCore/QTimer>

#include <iterator>
#include <string>

namespace LCD::RepairPages {

namespace {

const std::string subscriber = "RepairTBarTest";

constexpr int AnswerTime = 2000; // milliseconds that a step may take
constexpr int PercentDone = 100; // percent of a step, in reports
constexpr int SliderType = 1;

/// The command that a press sends, and what the operator has done before it.
struct Step
{
    int command;
    const char *movement; ///< text key; the first press needs none
    const char *hint;     ///< text key: what may have been wrong when nothing was measured
};

constexpr Step steps[] = {
    {2, nullptr, "RepairTBarNoAnswer"},
    {1, "Push T-Bar to Top", "RepairTBarNotTop"},
    {0, "Push T-Bar to Bottom", "RepairTBarNotBottom"},
    {1, "Push T-Bar to Top", "RepairTBarNotTop"},
    {0, "Push T-Bar to Bottom", "RepairTBarNotBottom"},
    {1, "Push T-Bar to Top", "RepairTBarNotTop"},
    {4, "Push T-Bar to Bottom", "RepairTBarNotBottom"},
};
constexpr int StepCount = std::size(steps);

/// The single test goes on after a failed step. This test waits for the report that a step is done, and fails if it
/// doesn't arrive in time.
class TBarTest : public SingleTestAdapter<FactoryModeImpl::TbarTestBiz>
{
public:
    TBarTest();

    void start() override;
    void reTest() override;
    void setNotPass() override;
    void restore() override { m_timer.stop(); }

    TestState state() const override { return m_state; }
    QString titleIcon() const override;
    QString heading() const override;
    QVector<PageLine> lines() const override;
    QVector<PageLine> remarks() const override;
    QString leftCaption() const override { return text("FCNoPass"); }
    QString rightCaption() const override;
    void pressLeft() override { setNotPass(); }
    void pressRight() override;

private:
    void listen();
    void onReport(int command, int percent);
    void onNoAnswer();
    bool isMeasuring() const { return m_timer.isActive(); }
    PageLine lineOf(int step) const;

    FactoryMode::IKeyboardEvent *m_keyboard =
        mirel::api::get().service<FactoryMode::IKeyboardEvent>("lcdKeyboardEvent");
    FactoryMode::ITBarCalibration *m_calibration =
        mirel::api::get().service<FactoryMode::ITBarCalibration>("lcdTBarCalibration");
    ReportQueue m_reports{this};
    QTimer m_timer;
    TestState m_state = TestState::Idle;
    int m_step = 0; ///< the step that is running or that the next press starts
    bool m_hasProgress = false;
    bool m_isLastPress = false;
    const char *m_hint = nullptr;
};

TBarTest::TBarTest()
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(AnswerTime);
    connect(&m_timer, &QTimer::timeout, this, [this] { onNoAnswer(); });
    m_biz->registerRightBtnTextCallback(subscriber, [this](bool isLast) { m_isLastPress = isLast; });
}

void TBarTest::listen()
{
    if (m_calibration)
        m_calibration->registerBarCalibrationCallback(
            subscriber, m_reports.listener([this](const ProtocolImpl::s_BarCalibration &report) {
                onReport(report.command, report.value);
            }));
}

void TBarTest::start()
{
    m_state = TestState::Running;
    m_step = 0;
    m_hint = nullptr;
    listen();
    m_biz->startTest();
    pressRight();
}

void TBarTest::reTest()
{
    m_state = TestState::Idle;
    m_biz->reTest();
}

void TBarTest::setNotPass()
{
    m_timer.stop();
    m_state = TestState::Failed;
    SingleTestAdapter::setNotPass();
}

void TBarTest::pressRight()
{
    if (isMeasuring())
        return;
    m_hasProgress = false;
    m_timer.start();
    m_biz->requestNextStep();
}

void TBarTest::onReport(int command, int percent)
{
    if (m_state != TestState::Running || !isMeasuring() || command != steps[m_step].command)
        return;
    m_hasProgress = true;
    if (percent < PercentDone)
        return;
    m_timer.stop();
    if (++m_step == StepCount)
        m_state = TestState::Passed;
    Q_EMIT changed();
}

void TBarTest::onNoAnswer()
{
    m_hint = m_hasProgress ? "RepairTBarNoAnswer" : steps[m_step].hint;
    setNotPass();
    Q_EMIT changed();
}

QString TBarTest::titleIcon() const
{
    const bool isSlider = m_keyboard && m_keyboard->getTBarType() == SliderType;
    return isSlider ? QStringLiteral("fc_tbar_slider") : QStringLiteral("fc_tbar_fader");
}

QString TBarTest::heading() const
{
    return isMeasuring() ? text("RepairTBarMeasuring") : SingleTestAdapter::heading();
}

QString TBarTest::rightCaption() const
{
    return isMeasuring() ? QString() : text(m_isLastPress ? "FCTestComplete" : "FCNextStep");
}

PageLine TBarTest::lineOf(int step) const
{
    const bool hasFailed = m_state == TestState::Failed && step == m_step;
    const auto mark = step < m_step ? PageLine::Mark::Pass : PageLine::Mark::None;
    return {QStringLiteral("%1.%2").arg(step).arg(text(steps[step].movement)),
            hasFailed ? notPassColor() : QColor(Qt::white), hasFailed ? PageLine::Mark::NotPass : mark};
}

QVector<PageLine> TBarTest::lines() const
{
    QVector<PageLine> lines;
    for (int step = 1; step < StepCount; ++step)
        lines << lineOf(step);
    return lines;
}

// Where it failed and why.
QVector<PageLine> TBarTest::remarks() const
{
    QVector<PageLine> lines;
    if (m_state == TestState::Failed && m_step > 0)
        lines << lineOf(m_step);
    if (m_hint)
        lines << PageLine{text(m_hint), notPassColor()};
    return lines;
}

}

std::unique_ptr<PageTest> makeTBarTest()
{
    return std::make_unique<TBarTest>();
}

}
