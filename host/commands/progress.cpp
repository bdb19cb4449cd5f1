#include "commands/progress.h"

#include "diagnostics/excerpt.h"
#include "diagnostics/terminalcolor.h"
#include "output/standardoutput.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace panelhost {

namespace {

constexpr int BarWidth = 24;
constexpr int TextWidth = 40;
const QString ClearLine = QStringLiteral("\r\033[K");

QString verdict(bool passed)
{
    return passed ? colored(QStringLiteral("ok    "), TerminalColor::Green, stdout)
                  : colored(QStringLiteral("FAILED"), TerminalColor::Red, stdout);
}

}

Progress::Progress() : m_out(&m_text), m_isTerminal(isatty(fileno(stdout)) != 0)
{
}

void Progress::flush()
{
    m_out.flush();
    print(m_text);
    m_text.clear();
}

void Progress::begin(const QString &file, qint64 steps)
{
    m_file = QFileInfo(file).fileName();
    m_steps = steps;
}

void Progress::step(const StepResult &step, qint64 number)
{
    if (m_isTerminal)
        writeBar(step, number);
    else
        writeLine(step);
    flush();
}

void Progress::writeBar(const StepResult &step, qint64 number)
{
    const auto done = static_cast<int>(number * BarWidth / qMax<qint64>(m_steps, 1));
    m_out << ClearLine << m_file << " [" << QString(done, QLatin1Char('#')).leftJustified(BarWidth, QLatin1Char('.'))
          << "] " << timeText(step.at) << ' ' << beginningOf(step.text, TextWidth);
}

void Progress::writeLine(const StepResult &step)
{
    m_out << QFileInfo(step.file).fileName() << ':' << step.where.line << ' ' << timeText(step.at) << ' '
          << verdict(step.passed) << ' ' << step.text << '\n';
}

void Progress::end(const ScenarioResult &result)
{
    if (m_isTerminal)
        m_out << ClearLine;
    const bool isInterrupted = result.state == ScenarioResult::State::Interrupted;
    m_out << (isInterrupted ? colored(QStringLiteral("STOPPED"), TerminalColor::Yellow, stdout)
                            : verdict(result.passed))
          << ' ' << result.file << ": " << result.stepsPlayed << " steps, " << timeText(result.duration)
          << " of the device's time in " << result.wallTime << " ms\n";
    if (!result.passed && !isInterrupted)
        m_out << result.failureText() << '\n';
    flush();
}

void Progress::summary(const ScenarioResults &results)
{
    if (results.size() < 2)
        return;
    const auto passed = std::count_if(results.begin(), results.end(), [](const auto &r) { return r.passed; });
    m_out << passed << " of " << results.size() << " scenarios passed\n";
    flush();
}

}
