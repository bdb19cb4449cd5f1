#include "playing/scenarioresult.h"

#include <algorithm>

namespace panelhost {

namespace {

QString locationText(const StepResult &step)
{
    return QStringLiteral("%1:%2:%3: ").arg(step.file).arg(step.where.line).arg(step.where.column);
}

}

QByteArray ScenarioResult::journalText() const
{
    QByteArray text;
    for (const auto &entry : journal.head())
        text += entry.toJsonLine() + '\n';
    if (journal.leftOut() > 0)
        text += QStringLiteral("… %1 lines …\n").arg(journal.leftOut()).toUtf8();
    for (const auto &entry : journal.tail())
        text += entry.toJsonLine() + '\n';
    return text;
}

const StepResult *ScenarioResult::failedStep() const
{
    const auto failed = std::find_if(steps.begin(), steps.end(), [](const StepResult &step) { return !step.passed; });
    return failed == steps.end() ? nullptr : &*failed;
}

QString ScenarioResult::verdict() const
{
    if (state == State::Running && passed)
        return QStringLiteral("running");
    if (state == State::Interrupted)
        return QStringLiteral("interrupted");
    return passed ? QStringLiteral("passed") : QStringLiteral("failed");
}

QString ScenarioResult::failureText() const
{
    QStringList lines;
    if (state == State::Interrupted)
        lines.append(QStringLiteral("%1: interrupted at %2").arg(file, timeText(duration)));
    if (!error.isEmpty())
        lines.append(file + QStringLiteral(": ") + error);
    if (const auto step = failedStep()) {
        lines.append(locationText(*step) + QStringLiteral("failed at %1: ").arg(timeText(step->at)) + step->text);
        if (!step->error.isEmpty())
            lines.append(QStringLiteral("  ") + step->error);
        for (const auto &result : step->expectationResults) {
            if (!result.holds)
                lines.append(QStringLiteral("  expected ") + result.expected + QStringLiteral("\n  found    ")
                             + result.found);
        }
    }
    if (!lastLines.isEmpty())
        lines.append(QStringLiteral("  the last lines of the journal:\n    ")
                     + lastLines.join(QStringLiteral("\n    ")));
    return lines.join(QLatin1Char('\n'));
}

}
