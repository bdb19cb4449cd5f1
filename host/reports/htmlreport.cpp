#include "reports/htmlreport.h"

#include "reports/htmlstyle.h"
#include "reports/htmlwriter.h"

#include <QtCore/QFileInfo>

#include <algorithm>

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

void writeSummaryRow(HtmlWriter &html, const ScenarioResult &result, int index)
{
    html.begin("tr");
    html.begin("td").badge(result.verdict()).end();
    html.begin("td").link(QLatin1Char('#') + anchorOf(index), nameOf(result)).end();
    html.element("td", "file", result.file);
    html.element("td", "number", QString::number(result.stepsPlayed));
    html.element("td", "number", timeText(result.duration));
    html.element("td", "number", wallText(result.wallTime));
    html.end();
}

void writeSummary(HtmlWriter &html, const ScenarioResults &results)
{
    const auto passed = std::count_if(results.begin(), results.end(),
                                      [](const auto &r) { return r.verdict() == QLatin1String("passed"); });
    html.element("h1", nullptr, QStringLiteral("Scenarios"));
    html.element("p", passed == results.size() ? "passed" : "failed",
                 QStringLiteral("%1 of %2 passed").arg(passed).arg(results.size()));
    html.begin("table", "summary").begin("tr");
    for (const auto heading : {"", "Scenario", "File", "Steps", "Virtual time", "Real time"})
        html.element("th", nullptr, QString::fromLatin1(heading));
    html.end();
    for (int index = 0; index < results.size(); ++index)
        writeSummaryRow(html, results.at(index), index);
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

void writeScreenshots(HtmlWriter &html, const ScenarioResult &result)
{
    const auto &steps = result.steps;
    if (std::none_of(steps.begin(), steps.end(), [](const StepResult &step) { return !step.png.isEmpty(); }))
        return;
    html.element("h3", nullptr, QStringLiteral("Screens"));
    html.begin("div", "screens");
    for (const auto &step : steps) {
        if (step.png.isEmpty())
            continue;
        html.begin("figure").image(step.png, step.screenshot);
        html.element("figcaption", nullptr, QStringLiteral("%1, at %2").arg(step.screenshot, timeText(step.at)));
        html.end();
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

void writeStep(HtmlWriter &html, const StepResult &step)
{
    html.begin("tr", step.passed ? nullptr : "failed");
    html.element("td", "number", timeText(step.at));
    html.element("td", "number", QFileInfo(step.file).fileName() + QLatin1Char(':') + QString::number(step.where.line));
    html.begin("td");
    if (step.expectationResults.isEmpty())
        html.element("code", nullptr, step.text);
    for (const auto &result : step.expectationResults)
        writeExpectationResult(html, result);
    if (!step.error.isEmpty())
        html.element("div", "found", step.error);
    html.end();
    html.begin("td").badge(verdict(step.passed)).end();
    html.end();
}

void writeSteps(HtmlWriter &html, const ScenarioResult &result)
{
    html.element("h3", nullptr, QStringLiteral("Steps"));
    html.begin("table", "steps").begin("tr");
    for (const auto heading : {"Time", "Place", "Step", ""})
        html.element("th", nullptr, QString::fromLatin1(heading));
    html.end();
    for (const auto &step : result.steps)
        writeStep(html, step);
    html.end();
}

void writeJournal(HtmlWriter &html, const ScenarioResult &result)
{
    html.begin("details");
    html.element("summary", nullptr, QStringLiteral("Journal, %1 lines").arg(result.journal.count()));
    html.element("pre", nullptr, QString::fromUtf8(result.journalText()));
    html.end();
}

void writeScenario(HtmlWriter &html, const ScenarioResult &result, int index)
{
    html.begin("section").attribute("id", anchorOf(index));
    html.begin("h2").text(nameOf(result)).badge(result.verdict()).end();
    if (!result.passed)
        html.element("pre", "failure", result.failureText());
    writePages(html, result);
    writeScreenshots(html, result);
    writeSteps(html, result);
    writeJournal(html, result);
    html.end();
}

}

QByteArray htmlReport(const ScenarioResults &results)
{
    HtmlWriter html(QStringLiteral("panelhost: scenarios"), htmlStyle());
    html.begin("main");
    writeSummary(html, results);
    for (int index = 0; index < results.size(); ++index)
        writeScenario(html, results.at(index), index);
    html.end();
    return html.finish();
}

}
