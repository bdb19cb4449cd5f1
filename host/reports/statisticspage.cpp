#include "reports/statisticspage.h"

#include "records/runprinter.h"
#include "records/statisticstext.h"
#include "reports/htmlstyle.h"
#include "reports/htmlwriter.h"
#include "reports/statisticscharts.h"

#include <QtCore/QDateTime>

namespace panelhost {

namespace {

void addRow(HtmlWriter &html, const QStringList &values, const char *tag = "td")
{
    html.begin("tr");
    for (int column = 0; column < values.size(); ++column)
        html.element(tag, column > 0 ? "number" : nullptr, values.at(column));
    html.end();
}

void addChart(HtmlWriter &html, const QString &title, const ChartImage &chart)
{
    html.begin("section").element("h2", nullptr, title);
    html.begin("figure").image(chart.png, title).end();
    html.end();
}

void addSummary(HtmlWriter &html, const RunCounts &counts)
{
    const auto yield = [&counts](qint64 passed) {
        return QStringLiteral("%1 (%2 of %3)")
            .arg(percentText(passed, counts.units))
            .arg(passed)
            .arg(countText(counts.units, "unit", "units"));
    };
    html.begin("table", "summary");
    addRow(html, {QStringLiteral("First-pass yield"), yield(counts.firstPassed)});
    addRow(html, {QStringLiteral("Final yield"), yield(counts.finallyPassed)});
    addRow(html,
           {QStringLiteral("Runs"),
            QStringLiteral("%1: %2 passed, %3 failed, %4 aborted")
                .arg(counts.runs())
                .arg(counts.passed)
                .arg(counts.failed)
                .arg(counts.aborted)});
    addRow(html,
           {QStringLiteral("A day, on %1").arg(countText(counts.days, "day", "days")),
            QStringLiteral("%1 runs, %2 units")
                .arg(perDayText(counts.runs(), counts.days), perDayText(counts.units, counts.days))});
    html.end();
}

void addFailingPhases(HtmlWriter &html, const RunCounts &counts)
{
    const QVector<FailingPhase> failing = failingPhases(counts);
    if (failing.isEmpty())
        return;
    addChart(html, QStringLiteral("Failing phases"), paretoChart(counts));
}

void addDurations(HtmlWriter &html, const QVector<PhaseDuration> &durations)
{
    if (durations.isEmpty())
        return;
    html.begin("section").element("h2", nullptr, QStringLiteral("Duration of each phase"));
    html.begin("figure").image(durationsChart(durations).png, QStringLiteral("Duration of each phase")).end();
    html.begin("table");
    addRow(
        html,
        {QStringLiteral("Phase"), QStringLiteral("Count"), QStringLiteral("Median"), QStringLiteral("90th percentile")},
        "th");
    for (const PhaseDuration &duration : durations)
        addRow(html,
               {duration.phase, QString::number(duration.count), runDurationText(duration.median),
                runDurationText(duration.ninetieth)});
    html.end().end();
}

void addGroups(HtmlWriter &html, const QString &title, const QString &column, const Statistics &statistics)
{
    html.begin("section").element("h2", nullptr, title);
    html.begin("table");
    addRow(html,
           {column, QStringLiteral("Runs"), QStringLiteral("Runs a day"), QStringLiteral("Units"),
            QStringLiteral("First-pass yield"), QStringLiteral("Final yield"), QStringLiteral("Fails most often")},
           "th");
    for (const StatisticsGroup &group : statistics.groups) {
        const RunCounts &counts = group.counts;
        addRow(html,
               {group.name.isEmpty() ? QStringLiteral("(no station)") : group.name, QString::number(counts.runs()),
                perDayText(counts.runs(), counts.days), QString::number(counts.units),
                percentText(counts.firstPassed, counts.units), percentText(counts.finallyPassed, counts.units),
                counts.failed > 0 ? phaseText(counts.topFailingPhase()) : QStringLiteral("-")});
    }
    html.end().end();
}

}

QByteArray statisticsPage(const Statistics &byPeriod, const Statistics &byStation)
{
    const QString title = QStringLiteral("Test statistics");
    const QString period = toText(byPeriod.query.groups);
    HtmlWriter html(title, htmlStyle());
    html.begin("main");
    html.element("h1", nullptr, title);
    html.element("p", nullptr,
                 QStringLiteral("%1. Written %2 UTC.")
                     .arg(queryText(byPeriod.query),
                          QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyy-MM-dd HH:mm"))));
    addSummary(html, byPeriod.counts);
    if (byPeriod.counts.runs() > 0) {
        addChart(html, QStringLiteral("Runs by %1").arg(period), runsChart(byPeriod));
        if (byPeriod.counts.units > 0)
            addChart(html, QStringLiteral("Yield by %1").arg(period), yieldChart(byPeriod));
        addFailingPhases(html, byPeriod.counts);
        addDurations(html, byPeriod.durations);
        addGroups(html, QStringLiteral("Stations"), QStringLiteral("Station"), byStation);
        addGroups(html, QStringLiteral("By %1").arg(period), period, byPeriod);
    }
    html.end();
    return html.finish();
}

}
