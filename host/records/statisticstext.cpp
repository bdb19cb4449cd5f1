#include "records/statisticstext.h"

#include "records/runprinter.h"

#include <QtCore/QJsonArray>

namespace panelhost {

namespace {

QJsonValue ratio(qint64 part, qint64 whole)
{
    return whole > 0 ? QJsonValue(double(part) / double(whole)) : QJsonValue();
}

QJsonValue dayOrNull(const QDate &day)
{
    return day.isValid() ? QJsonValue(day.toString(Qt::ISODate)) : QJsonValue();
}

QJsonArray failingPhasesJson(const RunCounts &counts)
{
    QJsonArray array;
    for (const FailingPhase &failing : failingPhases(counts))
        array.append(
            QJsonObject{{QStringLiteral("phase"), failing.phase.isEmpty() ? QJsonValue() : QJsonValue(failing.phase)},
                        {QStringLiteral("runs"), failing.runs},
                        {QStringLiteral("share"), failing.share},
                        {QStringLiteral("cumulativeShare"), failing.cumulativeShare}});
    return array;
}

QJsonArray durationsJson(const QVector<PhaseDuration> &durations)
{
    QJsonArray array;
    for (const PhaseDuration &duration : durations)
        array.append(QJsonObject{{QStringLiteral("name"), duration.phase},
                                 {QStringLiteral("count"), duration.count},
                                 {QStringLiteral("median"), duration.median},
                                 {QStringLiteral("percentile90"), duration.ninetieth}});
    return array;
}

QJsonObject countsJson(const RunCounts &counts)
{
    return {
        {QStringLiteral("runs"), counts.runs()},
        {QStringLiteral("passed"), counts.passed},
        {QStringLiteral("failed"), counts.failed},
        {QStringLiteral("aborted"), counts.aborted},
        {QStringLiteral("days"), counts.days},
        {QStringLiteral("runsPerDay"), ratio(counts.runs(), counts.days)},
        {QStringLiteral("units"), counts.units},
        {QStringLiteral("unitsPerDay"), ratio(counts.units, counts.days)},
        {QStringLiteral("firstPassed"), counts.firstPassed},
        {QStringLiteral("firstPassYield"), ratio(counts.firstPassed, counts.units)},
        {QStringLiteral("finallyPassed"), counts.finallyPassed},
        {QStringLiteral("finalYield"), ratio(counts.finallyPassed, counts.units)},
        {QStringLiteral("failingPhases"), failingPhasesJson(counts)},
    };
}

QStringList countsValues(const QString &name, const RunCounts &counts)
{
    const auto number = [](qint64 value) { return QString::number(value); };
    const auto share = [](qint64 part, qint64 whole) {
        return whole > 0 ? QString::number(double(part) / double(whole), 'f', 4) : QString();
    };
    return {name,
            number(counts.runs()),
            number(counts.passed),
            number(counts.failed),
            number(counts.aborted),
            number(counts.days),
            share(counts.runs(), counts.days),
            number(counts.units),
            share(counts.units, counts.days),
            number(counts.firstPassed),
            share(counts.firstPassed, counts.units),
            number(counts.finallyPassed),
            share(counts.finallyPassed, counts.units),
            counts.topFailingPhase()};
}

/// Aligns texts in columns: the first one to the left, the others to the right.
class TextTable
{
public:
    void add(const QStringList &row)
    {
        m_rows << row;
        m_widths.resize(qMax(m_widths.size(), row.size()));
        for (int column = 0; column < row.size(); ++column)
            m_widths[column] = qMax(m_widths.at(column), row.at(column).size());
    }
    QString text() const
    {
        QString text;
        for (const QStringList &row : m_rows) {
            text += row.value(0).leftJustified(m_widths.value(0));
            for (int column = 1; column < row.size(); ++column)
                text += QStringLiteral("  ") + row.at(column).rightJustified(m_widths.at(column));
            text += QLatin1Char('\n');
        }
        return text;
    }

private:
    QVector<QStringList> m_rows;
    QVector<int> m_widths;
};

QString summaryText(const RunCounts &counts)
{
    const auto yield = [&counts](qint64 passed) {
        return QStringLiteral("%1  %2 of %3")
            .arg(percentText(passed, counts.units), 8)
            .arg(passed)
            .arg(countText(counts.units, "unit", "units"));
    };
    return QStringLiteral("Runs              %1  passed %2, failed %3, aborted %4; %5 a day\n")
               .arg(counts.runs(), 8)
               .arg(counts.passed)
               .arg(counts.failed)
               .arg(counts.aborted)
               .arg(perDayText(counts.runs(), counts.days))
        + QStringLiteral("Units             %1  %2 a day on %3\n")
              .arg(counts.units, 8)
              .arg(perDayText(counts.units, counts.days), countText(counts.days, "day", "days"))
        + QStringLiteral("First-pass yield  %1\n").arg(yield(counts.firstPassed))
        + QStringLiteral("Final yield       %1\n").arg(yield(counts.finallyPassed));
}

QString failingPhasesTable(const RunCounts &counts)
{
    TextTable table;
    table.add({QStringLiteral("FAILING PHASE"), QStringLiteral("RUNS"), QStringLiteral("SHARE"),
               QStringLiteral("CUMULATIVE")});
    const QVector<FailingPhase> failing = failingPhases(counts);
    qint64 sum = 0;
    for (const FailingPhase &each : failing) {
        sum += each.runs;
        table.add({phaseText(each.phase), QString::number(each.runs), percentText(each.runs, counts.failed),
                   percentText(sum, counts.failed)});
    }
    return failing.isEmpty() ? QString() : QLatin1Char('\n') + table.text();
}

QString durationsTable(const QVector<PhaseDuration> &durations)
{
    TextTable table;
    table.add(
        {QStringLiteral("PHASE"), QStringLiteral("COUNT"), QStringLiteral("MEDIAN"), QStringLiteral("90 % WITHIN")});
    for (const PhaseDuration &duration : durations)
        table.add({duration.phase, QString::number(duration.count), runDurationText(duration.median),
                   runDurationText(duration.ninetieth)});
    return durations.isEmpty() ? QString() : QLatin1Char('\n') + table.text();
}

QString groupsTable(const Statistics &statistics)
{
    TextTable table;
    table.add({toText(statistics.query.groups).toUpper(), QStringLiteral("RUNS"), QStringLiteral("PASSED"),
               QStringLiteral("FAILED"), QStringLiteral("ABORTED"), QStringLiteral("RUNS/DAY"), QStringLiteral("UNITS"),
               QStringLiteral("UNITS/DAY"), QStringLiteral("FIRST PASS"), QStringLiteral("FINAL"),
               QStringLiteral("FAILS MOST")});
    for (const StatisticsGroup &group : statistics.groups) {
        const RunCounts &counts = group.counts;
        table.add({group.name.isEmpty() ? QStringLiteral("-") : group.name, QString::number(counts.runs()),
                   QString::number(counts.passed), QString::number(counts.failed), QString::number(counts.aborted),
                   perDayText(counts.runs(), counts.days), QString::number(counts.units),
                   perDayText(counts.units, counts.days), percentText(counts.firstPassed, counts.units),
                   percentText(counts.finallyPassed, counts.units),
                   counts.failed > 0 ? phaseText(counts.topFailingPhase()) : QStringLiteral("-")});
    }
    return statistics.groups.isEmpty() ? QString() : QLatin1Char('\n') + table.text();
}

QString kindText(RunKind kind)
{
    switch (kind) {
    case RunKind::Machine:
        return QStringLiteral("Complete machine tests");
    case RunKind::Aging:
        return QStringLiteral("Aging tests");
    case RunKind::Repair:
        break;
    }
    return QStringLiteral("Repair pages");
}

}

QString queryText(const StatisticsQuery &query)
{
    QString text = kindText(query.kind);
    if (!query.station.isEmpty())
        text += QStringLiteral(" at station %1").arg(query.station);
    if (query.since.isValid())
        text += QStringLiteral(" from %1").arg(query.since.toString(Qt::ISODate));
    if (query.until.isValid())
        text += QStringLiteral(" until %1").arg(query.until.toString(Qt::ISODate));
    return text + QStringLiteral(" (days in UTC)");
}

QString percentText(qint64 part, qint64 whole)
{
    return whole > 0 ? QStringLiteral("%1 %").arg(100.0 * double(part) / double(whole), 0, 'f', 1)
                     : QStringLiteral("-");
}

QString countText(qint64 count, const char *one, const char *many)
{
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

QString perDayText(qint64 count, qint64 days)
{
    return days > 0 ? QString::number(double(count) / double(days), 'f', 1) : QStringLiteral("-");
}

QString phaseText(const QString &phase)
{
    return phase.isEmpty() ? QStringLiteral("(no phase)") : phase;
}

QJsonObject statisticsJson(const Statistics &statistics)
{
    const StatisticsQuery &query = statistics.query;
    QJsonObject object = countsJson(statistics.counts);
    object.insert(QStringLiteral("kind"), toText(query.kind));
    object.insert(QStringLiteral("station"), query.station.isEmpty() ? QJsonValue() : QJsonValue(query.station));
    object.insert(QStringLiteral("since"), dayOrNull(query.since));
    object.insert(QStringLiteral("until"), dayOrNull(query.until));
    object.insert(QStringLiteral("phases"), durationsJson(statistics.durations));
    if (query.groups == StatisticsQuery::Groups::None)
        return object;
    QJsonArray groups;
    for (const StatisticsGroup &group : statistics.groups) {
        QJsonObject each = countsJson(group.counts);
        each.insert(QStringLiteral("name"), group.name);
        if (!group.durations.isEmpty())
            each.insert(QStringLiteral("phases"), durationsJson(group.durations));
        groups.append(each);
    }
    object.insert(QStringLiteral("by"), toText(query.groups));
    object.insert(QStringLiteral("groups"), groups);
    return object;
}

QString statisticsCsv(const Statistics &statistics)
{
    const bool isGrouped = statistics.query.groups != StatisticsQuery::Groups::None;
    QString text = csvLine(
        {toText(statistics.query.groups), QStringLiteral("runs"), QStringLiteral("passed"), QStringLiteral("failed"),
         QStringLiteral("aborted"), QStringLiteral("days"), QStringLiteral("runsPerDay"), QStringLiteral("units"),
         QStringLiteral("unitsPerDay"), QStringLiteral("firstPassed"), QStringLiteral("firstPassYield"),
         QStringLiteral("finallyPassed"), QStringLiteral("finalYield"), QStringLiteral("topFailingPhase")});
    for (const StatisticsGroup &group : statistics.groups)
        text += csvLine(countsValues(group.name, group.counts));
    return isGrouped ? text : text + csvLine(countsValues(QString(), statistics.counts));
}

QString statisticsTables(const Statistics &statistics)
{
    return queryText(statistics.query) + QStringLiteral("\n\n") + summaryText(statistics.counts)
        + failingPhasesTable(statistics.counts) + durationsTable(statistics.durations) + groupsTable(statistics);
}

}
