#include "reports/htmlreport.h"

#include "records/statisticstext.h"
#include "reports/htmlscript.h"
#include "reports/htmlstyle.h"
#include "reports/htmlwriter.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

#include <algorithm>
#include <numeric>

namespace panelhost {

namespace {

QString verdict(bool passed)
{
    return passed ? QStringLiteral("passed") : QStringLiteral("failed");
}

QString nameOf(const ScenarioResult &result)
{
    return result.title.isEmpty() ? result.file : result.title;
}

QString anchorOf(int index)
{
    return QStringLiteral("scenario-%1").arg(index + 1);
}

QString wallText(qint64 milliseconds)
{
    return QString::number(static_cast<double>(milliseconds) / 1000, 'f', 2) + QStringLiteral(" s");
}

QString screenshotAnchor(int scenario, int step)
{
    return QStringLiteral("screen-%1-%2").arg(scenario + 1).arg(step + 1);
}

QString stepAnchor(int scenario, int step)
{
    return QStringLiteral("step-%1-%2").arg(scenario + 1).arg(step + 1);
}

QString lineAnchor(int scenario, qint64 line)
{
    return QStringLiteral("line-%1-%2").arg(scenario + 1).arg(line);
}

// As one word of a shell command.
QString shellWord(const QString &text)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9_./+:,@-]+$"));
    if (plain.match(text).hasMatch())
        return text;
    return QLatin1Char('\'') + QString(text).replace(QLatin1Char('\''), QLatin1String("'\\''")) + QLatin1Char('\'');
}

// The command that shows the scenario with a timeline; empty if there is no file to play again.
QString viewCommand(const ScenarioResult &result)
{
    if (result.file.isEmpty() || result.file == QLatin1String("-"))
        return {};
    return QStringLiteral("panelhost view ") + shellWord(QFileInfo(result.file).absoluteFilePath());
}

// The option of the command that shows the moment of a step.
QString momentOption(const StepResult &step)
{
    return step.journalLine > 0 ? QStringLiteral("--line %1").arg(step.journalLine)
                                : QStringLiteral("--at %1ms").arg(step.at);
}

bool hasPassed(const ScenarioResult &result)
{
    return result.verdict() == QLatin1String("passed");
}

// The indexes of the scenarios: first those that haven't passed.
QVector<int> failuresFirst(const ScenarioResults &results)
{
    QVector<int> order(results.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_partition(order.begin(), order.end(), [&results](int index) { return !hasPassed(results.at(index)); });
    return order;
}

void writeSummaryRow(HtmlWriter &html, const ScenarioResult &result, int index)
{
    html.begin("tr");
    html.begin("td").badge(result.verdict()).end();
    html.begin("td").link(QLatin1Char('#') + anchorOf(index), nameOf(result)).end();
    html.element("td", "file", result.file);
    html.element("td", "number", QString::number(result.stepsPlayed));
    html.element("td", "number", QString::number(result.notPlayedCount));
    html.element("td", "number", timeText(result.duration));
    html.element("td", "number", wallText(result.wallTime));
    html.end();
}

void writeSummary(HtmlWriter &html, const ScenarioResults &results)
{
    const auto passed = std::count_if(results.begin(), results.end(), hasPassed);
    html.element("h1", nullptr, QStringLiteral("Scenarios"));
    html.element("p", passed == results.size() ? "passed" : "failed",
                 QStringLiteral("%1 of %2 passed").arg(passed).arg(results.size()));
    html.begin("table", "summary").begin("tr");
    for (const auto heading : {"", "Scenario", "File", "Steps", "Not played", "Virtual time", "Real time"})
        html.element("th", nullptr, QString::fromLatin1(heading));
    html.end();
    for (const int index : failuresFirst(results))
        writeSummaryRow(html, results.at(index), index);
    html.end();
}

void writeSearch(HtmlWriter &html)
{
    html.begin("div", "search");
    html.begin("input").attribute("id", QStringLiteral("search")).attribute("type", QStringLiteral("search"));
    html.attribute("placeholder", QStringLiteral("Search steps and journals"));
    html.end();
    html.end();
}

// Shows the command for the moment that was chosen last.
void writeMomentBar(HtmlWriter &html)
{
    html.begin("div", "moment").attribute("id", QStringLiteral("moment")).attribute("hidden", QStringLiteral("hidden"));
    html.begin("input").attribute("id", QStringLiteral("command")).attribute("readonly", QStringLiteral("readonly"));
    html.attribute("aria-label", QStringLiteral("Command that shows this moment")).end();
    html.begin("span").attribute("id", QStringLiteral("copied")).text(QString()).end();
    html.end();
}

void writeScreenshot(HtmlWriter &html, const StepResult &step, int scenario, int index)
{
    html.begin("figure").attribute("id", screenshotAnchor(scenario, index)).image(step.png, step.screenshot);
    html.begin("figcaption").text(QStringLiteral("%1, at %2, ").arg(step.screenshot, timeText(step.at)));
    html.link(QLatin1Char('#') + stepAnchor(scenario, index), QStringLiteral("step")).end();
    html.end();
}

// How to look at the scenario, at the failed step if there is one.
void writeViewCommand(HtmlWriter &html, const ScenarioResult &result)
{
    const QString command = viewCommand(result);
    if (command.isEmpty())
        return;
    const StepResult *failed = result.failedStep();
    html.begin("p", "view").text(QStringLiteral("To look at it: "));
    html.element("code", nullptr, failed ? command + QLatin1Char(' ') + momentOption(*failed) : command).end();
}

// The picture at the failure is shown here, and not again with the other pictures.
void writeFailure(HtmlWriter &html, const ScenarioResult &result, int index)
{
    html.begin("h3").link(QLatin1Char('#') + anchorOf(index), nameOf(result)).badge(result.verdict()).end();
    html.element("pre", "failure", result.failureText());
    writeViewCommand(html, result);
    const auto &steps = result.steps;
    html.begin("div", "screens").text(QString());
    for (int step = 0; step < steps.size(); ++step) {
        if (!steps.at(step).passed && !steps.at(step).png.isEmpty())
            writeScreenshot(html, steps.at(step), index, step);
    }
    html.end();
}

void writeFailures(HtmlWriter &html, const ScenarioResults &results)
{
    const auto fails = [](const ScenarioResult &result) {
        return result.verdict() == QLatin1String("failed") || result.verdict() == QLatin1String("interrupted");
    };
    if (std::none_of(results.begin(), results.end(), fails))
        return;
    html.begin("section", "failures").element("h2", nullptr, QStringLiteral("Failures"));
    for (int index = 0; index < results.size(); ++index) {
        if (fails(results.at(index)))
            writeFailure(html, results.at(index), index);
    }
    html.end();
}

void writeFacts(HtmlWriter &html, const ScenarioResult &result)
{
    html.begin("table", "facts").text(QString());
    for (const SessionFact &fact : result.facts) {
        html.begin("tr").element("th", nullptr, fact.name).element("td", nullptr, fact.value);
        html.end();
    }
    html.end();
}

void writePages(HtmlWriter &html, const ScenarioResult &result)
{
    if (result.pages.isEmpty())
        return;
    html.element("h3", nullptr, QStringLiteral("Timeline"));
    html.begin("ol", "pages");
    for (const auto &page : result.pages) {
        html.begin("li").attribute("style", QStringLiteral("flex-grow: %1").arg((page.until - page.from) / 100 + 1));
        html.element("span", "time", timeText(page.from));
        html.element("span", "page", page.title);
        html.element("span", "time", QStringLiteral("%1 s").arg(static_cast<double>(page.until - page.from) / 1000));
        html.end();
    }
    html.end();
}

void writeScreenshots(HtmlWriter &html, const ScenarioResult &result, int index)
{
    const auto &steps = result.steps;
    const auto isShown = [](const StepResult &step) { return step.passed && !step.png.isEmpty(); };
    if (std::none_of(steps.begin(), steps.end(), isShown))
        return;
    html.element("h3", nullptr, QStringLiteral("Screens"));
    html.begin("div", "screens");
    for (int step = 0; step < steps.size(); ++step) {
        if (isShown(steps.at(step)))
            writeScreenshot(html, steps.at(step), index, step);
    }
    html.end();
}

void writeExpectationResult(HtmlWriter &html, const ExpectationResult &result)
{
    html.begin("div", result.holds ? "outcome" : "outcome failed");
    html.element("code", nullptr, result.expected);
    if (!result.holds)
        html.element("div", "found", QStringLiteral("found ") + result.found);
    html.end();
}

// The lines of the journal that are in the report.
bool hasLine(const ScenarioResult &result, qint64 line)
{
    const auto &head = result.journal.head();
    const auto &tail = result.journal.tail();
    return line > 0
        && ((!head.empty() && line <= head.back().sequence) || (!tail.empty() && line >= tail.front().sequence));
}

void writeStepLinks(HtmlWriter &html, const ScenarioResult &result, int scenario, int index)
{
    const StepResult &step = result.steps.at(index);
    html.begin("td").text(QString());
    if (!step.png.isEmpty())
        html.link(QLatin1Char('#') + screenshotAnchor(scenario, index), QStringLiteral("screen"))
            .text(QStringLiteral(" "));
    if (hasLine(result, step.journalLine))
        html.link(QLatin1Char('#') + lineAnchor(scenario, step.journalLine), QStringLiteral("journal"));
    html.end();
}

// The time of a step. The script of the page shows the command that leads to its moment.
void writeTime(HtmlWriter &html, const ScenarioResult &result, const StepResult &step)
{
    if (viewCommand(result).isEmpty()) {
        html.element("td", "number", timeText(step.at));
        return;
    }
    html.begin("td", "number").begin("button").attribute("data-moment", momentOption(step));
    html.text(timeText(step.at)).end();
    html.end();
}

void writeStep(HtmlWriter &html, const ScenarioResult &result, int scenario, int index)
{
    const StepResult &step = result.steps.at(index);
    html.begin("tr", step.passed ? nullptr : "failed").attribute("id", stepAnchor(scenario, index));
    writeTime(html, result, step);
    html.element("td", "number place",
                 QFileInfo(step.file).fileName() + QLatin1Char(':') + QString::number(step.where.line));
    html.begin("td");
    if (step.expectationResults.isEmpty())
        html.element("code", nullptr, step.text);
    for (const auto &expectation : step.expectationResults)
        writeExpectationResult(html, expectation);
    if (!step.error.isEmpty())
        html.element("div", "found", step.error);
    html.end();
    writeStepLinks(html, result, scenario, index);
    html.begin("td").badge(verdict(step.passed)).end();
    html.end();
}

// The end of the steps that belong to the same repetition as the one at @p begin.
int endOfRepetition(const QVector<StepResult> &steps, int begin)
{
    const auto isOther = [&first = steps.at(begin)](const StepResult &step) {
        return step.repetition != first.repetition || step.repeat.line != first.repeat.line;
    };
    return static_cast<int>(std::find_if(steps.begin() + begin, steps.end(), isOther) - steps.begin());
}

void writeStepTable(HtmlWriter &html, const ScenarioResult &result, int scenario, int begin, int end)
{
    html.begin("table", "steps");
    for (int index = begin; index < end; ++index)
        writeStep(html, result, scenario, index);
    html.end();
}

// A repetition is folded unless it failed.
void writeRepetition(HtmlWriter &html, const ScenarioResult &result, int scenario, int begin, int end)
{
    const StepResult &first = result.steps.at(begin);
    const StepResult &last = result.steps.at(end - 1);
    html.begin("details", "rounds");
    if (std::any_of(result.steps.begin() + begin, result.steps.begin() + end,
                    [](const StepResult &step) { return !step.passed; }))
        html.attribute("open", QStringLiteral("open"));
    html.element("summary", nullptr,
                 QStringLiteral("Repetition %1, %2 steps, %3 to %4")
                     .arg(first.repetition)
                     .arg(end - begin)
                     .arg(timeText(first.at), timeText(last.at)));
    writeStepTable(html, result, scenario, begin, end);
    html.end();
}

void writeSteps(HtmlWriter &html, const ScenarioResult &result, int scenario)
{
    html.element("h3", nullptr, QStringLiteral("Steps"));
    for (int begin = 0; begin < result.steps.size();) {
        const int end = endOfRepetition(result.steps, begin);
        if (result.steps.at(begin).repetition == 0)
            writeStepTable(html, result, scenario, begin, end);
        else
            writeRepetition(html, result, scenario, begin, end);
        begin = end;
    }
}

void writeNotPlayed(HtmlWriter &html, const ScenarioResult &result)
{
    if (result.notPlayed.isEmpty())
        return;
    const QString count = countText(result.notPlayedCount, "step", "steps");
    html.element("h3", nullptr, QStringLiteral("Not played: %1").arg(count));
    html.begin("table", "steps not-played");
    for (const StepResult &step : result.notPlayed) {
        const QString place = QFileInfo(step.file).fileName() + QLatin1Char(':') + QString::number(step.where.line);
        html.begin("tr").element("td", "number place", place);
        html.begin("td").element("code", nullptr, step.text).end();
        html.end();
    }
    html.end();
    const qint64 more = result.notPlayedCount - result.notPlayed.size();
    if (more > 0)
        html.element("p", nullptr, QStringLiteral("… and %1 more").arg(more));
}

void writeLine(HtmlWriter &html, const Journal::Entry &entry, int scenario, const QSet<qint64> &linked)
{
    html.begin("div");
    if (linked.contains(entry.sequence))
        html.attribute("id", lineAnchor(scenario, entry.sequence));
    html.text(QString::fromUtf8(entry.toJsonLine())).end();
}

void writeJournal(HtmlWriter &html, const ScenarioResult &result, int scenario)
{
    QSet<qint64> linked;
    for (const StepResult &step : result.steps)
        linked.insert(step.journalLine);
    html.begin("details");
    html.element("summary", nullptr, QStringLiteral("Journal, %1 lines").arg(result.journal.count()));
    html.begin("div", "journal").text(QString());
    for (const Journal::Entry &entry : result.journal.head())
        writeLine(html, entry, scenario, linked);
    if (result.journal.leftOut() > 0)
        html.element("div", nullptr, QStringLiteral("… %1 lines …").arg(result.journal.leftOut()));
    for (const Journal::Entry &entry : result.journal.tail())
        writeLine(html, entry, scenario, linked);
    html.end();
    html.end();
}

void writeScenario(HtmlWriter &html, const ScenarioResult &result, int index)
{
    html.begin("section").attribute("id", anchorOf(index)).attribute("data-view", viewCommand(result));
    html.begin("h2").text(nameOf(result)).badge(result.verdict()).end();
    writeFacts(html, result);
    if (hasPassed(result))
        writeViewCommand(html, result);
    writePages(html, result);
    writeScreenshots(html, result, index);
    writeSteps(html, result, index);
    writeNotPlayed(html, result);
    writeJournal(html, result, index);
    html.end();
}

}

QByteArray htmlReport(const ScenarioResults &results)
{
    HtmlWriter html(QStringLiteral("panelhost: scenarios"), htmlStyle());
    html.begin("main");
    writeSummary(html, results);
    writeSearch(html);
    writeMomentBar(html);
    writeFailures(html, results);
    for (const int index : failuresFirst(results))
        writeScenario(html, results.at(index), index);
    html.end();
    html.script(reportScript());
    return html.finish();
}
}
