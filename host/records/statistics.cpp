#include "records/statistics.h"

#include "records/machinetestruns.h"
#include "records/recordstore.h"

#include <algorithm>

namespace panelhost {

namespace {

using Groups = StatisticsQuery::Groups;
using DurationCounts = QMap<QString, QMap<QString, QMap<qint64, qint64>>>; // by group, phase and duration

constexpr struct
{
    Groups groups;
    const char *name;
} groupNames[] = {
    {Groups::None, "all"},  {Groups::Station, "station"}, {Groups::Day, "day"},
    {Groups::Week, "week"}, {Groups::Month, "month"},
};

QString dayText(const QDate &day)
{
    return day.toString(Qt::ISODate);
}

QString monthText(const QDate &day)
{
    return dayText(day).left(7);
}

/// The conditions of a WHERE clause with their values.
struct StatisticsCondition
{
    QStringList texts;
    QVariantList values;

    StatisticsCondition &add(const char *text, const QString &value)
    {
        texts << QLatin1String(text);
        values << value;
        return *this;
    }
    StatisticsCondition &addIf(bool isWanted, const char *text, const QString &value)
    {
        return isWanted ? add(text, value) : *this;
    }
    QString where() const { return QStringLiteral(" WHERE ") + texts.join(QStringLiteral(" AND ")); }
};

QString selected(const QString &column)
{
    return column.isEmpty() ? QStringLiteral("''") : column;
}

// A constant among the columns would cost SQLite the order of its index.
QString groupBy(const QString &column, const QString &others = {})
{
    QStringList columns{column, others};
    columns.removeAll(QString());
    return columns.isEmpty() ? QString() : QStringLiteral(" GROUP BY ") + columns.join(QStringLiteral(", "));
}

/// Reads the statistics of one query.
class Reader
{
public:
    Reader(StoreConnection &connection, const StatisticsQuery &query) : m_connection(connection), m_query(query) {}

    bool read(Statistics *statistics);

private:
    using RowListener = std::function<void(const StoreRows &row)>;

    bool forEach(const QString &statement, const QVariantList &values, const RowListener &listener);
    StatisticsCondition condition() const;
    QString groupColumn() const;
    QString durationGroupColumn(const char *station, const char *month) const;
    QString groupName(const QString &value) const;
    bool readRuns();
    bool readDays(const QString &column, const std::function<void(const QString &group, qint64 days)> &listener);
    bool readGroupDays();
    bool readAllDays(Statistics *statistics);
    bool readUnits();
    bool readDurations();
    bool readDurationCounts(const char *table, const char *period, const QString &first = {}, const QString &last = {});
    bool readMonths(const QDate &first, const QDate &last);
    bool readPartOfMonth(const QDate &first, const QDate &last);
    bool readRunsBetween(const QDate &first, const QDate &last);
    bool isOfStations() const { return m_query.groups == Groups::Station || !m_query.station.isEmpty(); }
    bool groupsHaveDurations() const { return m_query.groups == Groups::Station || m_query.groups == Groups::Month; }
    static QVector<PhaseDuration> durationsOf(const QMap<QString, QMap<qint64, qint64>> &phases);

    StoreConnection &m_connection;
    const StatisticsQuery m_query;
    QMap<QString, RunCounts> m_groups;
    DurationCounts m_durations;
};

bool Reader::forEach(const QString &statement, const QVariantList &values, const RowListener &listener)
{
    StoreRows rows = m_connection.execute(statement, values);
    if (!rows)
        return false;
    while (rows.next())
        listener(rows);
    return true;
}

// Returns the column by which a statement groups its rows; empty for none. Weeks and months are made of days later: an
// index is in the order of days.
QString Reader::groupColumn() const
{
    switch (m_query.groups) {
    case Groups::None:
        break;
    case Groups::Station:
        return QStringLiteral("station");
    case Groups::Day:
    case Groups::Week:
    case Groups::Month:
        return QStringLiteral("day");
    }
    return {};
}

QString Reader::durationGroupColumn(const char *station, const char *month) const
{
    if (!groupsHaveDurations())
        return {};
    return QLatin1String(m_query.groups == Groups::Station ? station : month);
}

QString Reader::groupName(const QString &value) const
{
    if (m_query.groups == Groups::Month)
        return value.left(7);
    if (m_query.groups != Groups::Week)
        return value;
    int year = 0;
    const int week = QDate::fromString(value, Qt::ISODate).weekNumber(&year);
    return QStringLiteral("%1-W%2").arg(year).arg(week, 2, 10, QLatin1Char('0'));
}

StatisticsCondition Reader::condition() const
{
    return StatisticsCondition()
        .add("kind = ?", toText(m_query.kind))
        .addIf(!m_query.station.isEmpty(), "station = ?", m_query.station)
        .addIf(m_query.since.isValid(), "day >= ?", dayText(m_query.since))
        .addIf(m_query.until.isValid(), "day <= ?", dayText(m_query.until));
}

bool Reader::readRuns()
{
    const StatisticsCondition selection = condition();
    const QString column = groupColumn();
    const QString statement = QStringLiteral("SELECT %1, outcome, failed_phase, sum(runs) FROM run_count%2%3");
    const QString outcomes = QStringLiteral("outcome, failed_phase");
    return forEach(statement.arg(selected(column), selection.where(), groupBy(column, outcomes)), selection.values,
                   [this](const StoreRows &row) {
                       RunCounts &group = m_groups[groupName(row.value(0).toString())];
                       const QString outcome = row.value(1).toString();
                       const qint64 runs = row.value(3).toLongLong();
                       if (outcome == toText(RunOutcome::Passed))
                           group.passed += runs;
                       else if (outcome == toText(RunOutcome::Aborted))
                           group.aborted += runs;
                       else
                           group.failed += runs;
                       if (outcome == toText(RunOutcome::Failed))
                           group.phases[row.value(2).toString()] += runs;
                   });
}

// A server finds distinct rows faster than it counts distinct values.
bool Reader::readDays(const QString &column, const std::function<void(const QString &group, qint64 days)> &listener)
{
    const StatisticsCondition selection = condition();
    const QString columns = column == QLatin1String("station") ? QStringLiteral("station, day") : QStringLiteral("day");
    const QString statement =
        QStringLiteral("SELECT %1, count(*) FROM (SELECT DISTINCT %2 FROM run_count%3) AS days%4");
    return forEach(
        statement.arg(selected(column), columns, selection.where(), groupBy(column)), selection.values,
        [&](const StoreRows &row) { listener(groupName(row.value(0).toString()), row.value(1).toLongLong()); });
}

bool Reader::readGroupDays()
{
    return readDays(groupColumn(), [this](const QString &group, qint64 days) { m_groups[group].days += days; });
}

// Stations share days; other groups don't.
bool Reader::readAllDays(Statistics *statistics)
{
    return m_query.groups != Groups::Station
        || readDays({}, [statistics](const QString &, qint64 days) { statistics->counts.days = days; });
}

bool Reader::readUnits()
{
    const StatisticsCondition selection = condition();
    const QString column = groupColumn();
    const QString statement =
        QStringLiteral("SELECT %1, sum(units), sum(first_passed), sum(finally_passed) FROM unit_count%2%3");
    return forEach(statement.arg(selected(column), selection.where(), groupBy(column)), selection.values,
                   [this](const StoreRows &row) {
                       RunCounts &group = m_groups[groupName(row.value(0).toString())];
                       group.units += row.value(1).toLongLong();
                       group.firstPassed += row.value(2).toLongLong();
                       group.finallyPassed += row.value(3).toLongLong();
                   });
}

// @p period is the column with the day or the month; empty if the table has none.
bool Reader::readDurationCounts(const char *table, const char *period, const QString &first, const QString &last)
{
    const QString from = QLatin1String(period) + QStringLiteral(" >= ?");
    const QString to = QLatin1String(period) + QStringLiteral(" <= ?");
    const auto condition = StatisticsCondition()
                               .add("kind = ?", toText(m_query.kind))
                               .addIf(!m_query.station.isEmpty(), "station = ?", m_query.station)
                               .addIf(!first.isEmpty(), from.toLatin1().constData(), first)
                               .addIf(!last.isEmpty(), to.toLatin1().constData(), last);
    const QString month = QStringLiteral("substr(%1, 1, 7)").arg(QLatin1String(period));
    const QString column = durationGroupColumn("station", month.toLatin1().constData());
    const QString statement = QStringLiteral("SELECT phase, duration, %1, sum(runs) FROM %2%3%4");
    return forEach(statement.arg(selected(column), QLatin1String(table), condition.where(),
                                 groupBy(column, QStringLiteral("phase, duration"))),
                   condition.values, [this](const StoreRows &row) {
                       m_durations[row.value(2).toString()][row.value(0).toString()][row.value(1).toLongLong()] +=
                           row.value(3).toLongLong();
                   });
}

bool Reader::readMonths(const QDate &first, const QDate &last)
{
    const auto text = [](const QDate &day) { return day.isValid() ? monthText(day) : QString(); };
    return readDurationCounts(isOfStations() ? "station_month_duration" : "month_duration", "month", text(first),
                              text(last));
}

bool Reader::readPartOfMonth(const QDate &first, const QDate &last)
{
    return isOfStations() ? readRunsBetween(first, last)
                          : readDurationCounts("day_duration", "day", dayText(first), dayText(last));
}

// The durations of a station are counted by month. Those of a part of a month are counted here. A server would rather
// read all phases than look for those of a month's runs, so it looks for the phases of each run.
bool Reader::readRunsBetween(const QDate &first, const QDate &last)
{
    const auto condition = StatisticsCondition()
                               .add("run.kind = ?", toText(m_query.kind))
                               .addIf(!m_query.station.isEmpty(), "run.station = ?", m_query.station)
                               .add("run.begin >= ?", dayText(first))
                               .add("run.begin < ?", dayText(last.addDays(1)))
                               .add("phase.outcome <> ?", toText(RunOutcome::Aborted));
    const QString column = durationGroupColumn("coalesce(run.station, '')", "substr(run.begin, 1, 7)");
    const QString phasesOfRun = m_connection.kind() == StoreKind::File
        ? QStringLiteral("JOIN phase ON phase.run = run.id")
        : QStringLiteral("CROSS JOIN LATERAL (SELECT * FROM phase WHERE phase.run = run.id OFFSET 0) AS phase");
    const QString statement = QStringLiteral("SELECT phase.name, phase.duration, %1, count(*) FROM run ") + phasesOfRun
        + QStringLiteral("%2%3");
    const QString phases = QStringLiteral("phase.name, phase.duration");
    return forEach(
        statement.arg(selected(column), condition.where(), groupBy(column, phases)), condition.values,
        [this](const StoreRows &row) {
            m_durations[row.value(2).toString()][row.value(0).toString()][roundedDuration(row.value(1).toLongLong())] +=
                row.value(3).toLongLong();
        });
}

// Whole months, and the days before and after them.
bool Reader::readDurations()
{
    const QDate since = m_query.since;
    const QDate until = m_query.until;
    if (isOfStations() && !since.isValid() && !until.isValid() && m_query.groups != Groups::Month)
        return readDurationCounts("station_duration", "");
    const auto monthBegin = [](const QDate &day) { return QDate(day.year(), day.month(), 1); };
    const QDate firstMonth = !since.isValid() || since.day() == 1 ? since : monthBegin(since).addMonths(1);
    const bool endsWithMonth = !until.isValid() || until.day() == until.daysInMonth();
    const QDate lastMonth = endsWithMonth ? until : monthBegin(until).addDays(-1);
    if (since.isValid() && until.isValid() && firstMonth > lastMonth)
        return readPartOfMonth(since, until);
    return (!since.isValid() || since == firstMonth || readPartOfMonth(since, firstMonth.addDays(-1)))
        && readMonths(firstMonth, lastMonth)
        && (!until.isValid() || until == lastMonth || readPartOfMonth(lastMonth.addDays(1), until));
}

QVector<PhaseDuration> Reader::durationsOf(const QMap<QString, QMap<qint64, qint64>> &phases)
{
    QVector<PhaseDuration> durations;
    for (auto phase = phases.begin(); phase != phases.end(); ++phase) {
        qint64 count = 0;
        for (const qint64 runs : phase.value())
            count += runs;
        durations.append({phase.key(), count, percentile(phase.value(), 50), percentile(phase.value(), 90)});
    }
    const QStringList order = machineTestPhases();
    const auto rank = [&order](const PhaseDuration &duration) {
        const int index = order.indexOf(duration.phase);
        return index < 0 ? order.size() : index;
    };
    std::stable_sort(durations.begin(), durations.end(),
                     [&rank](const PhaseDuration &a, const PhaseDuration &b) { return rank(a) < rank(b); });
    return durations;
}

bool Reader::read(Statistics *statistics)
{
    statistics->query = m_query;
    if (!readRuns() || !readGroupDays() || !readUnits() || !readDurations())
        return false;
    QMap<QString, QMap<qint64, qint64>> all;
    for (const auto &group : qAsConst(m_durations)) {
        for (auto phase = group.begin(); phase != group.end(); ++phase) {
            for (auto duration = phase.value().begin(); duration != phase.value().end(); ++duration)
                all[phase.key()][duration.key()] += duration.value();
        }
    }
    statistics->durations = durationsOf(all);
    for (auto group = m_groups.begin(); group != m_groups.end(); ++group) {
        statistics->counts += group.value();
        if (m_query.groups != Groups::None)
            statistics->groups.append(
                {group.key(), group.value(),
                 groupsHaveDurations() ? durationsOf(m_durations.value(group.key())) : QVector<PhaseDuration>()});
    }
    return readAllDays(statistics);
}

}

QString RunCounts::topFailingPhase() const
{
    const QVector<FailingPhase> failing = failingPhases(*this);
    return failing.isEmpty() ? QString() : failing.first().phase;
}

RunCounts &RunCounts::operator+=(const RunCounts &other)
{
    passed += other.passed;
    failed += other.failed;
    aborted += other.aborted;
    days += other.days;
    units += other.units;
    firstPassed += other.firstPassed;
    finallyPassed += other.finallyPassed;
    for (auto phase = other.phases.begin(); phase != other.phases.end(); ++phase)
        phases[phase.key()] += phase.value();
    return *this;
}

QVector<FailingPhase> failingPhases(const RunCounts &counts)
{
    QVector<FailingPhase> failing;
    for (auto phase = counts.phases.begin(); phase != counts.phases.end(); ++phase)
        failing.append({phase.key(), phase.value(), double(phase.value()) / double(counts.failed), 0});
    std::stable_sort(failing.begin(), failing.end(),
                     [](const FailingPhase &a, const FailingPhase &b) { return a.runs > b.runs; });
    qint64 sum = 0;
    for (FailingPhase &each : failing) {
        sum += each.runs;
        each.cumulativeShare = double(sum) / double(counts.failed);
    }
    return failing;
}

// The schema has the same as an expression of SQL.
qint64 roundedDuration(qint64 milliseconds)
{
    const qint64 step = milliseconds < 100000 ? 100 : milliseconds < 1000000 ? 1000 : 10000;
    return (milliseconds + step / 2) / step * step;
}

qint64 percentile(const QMap<qint64, qint64> &counts, int percent)
{
    qint64 count = 0;
    for (const qint64 each : counts)
        count += each;
    const qint64 rank = (count * percent + 99) / 100;
    qint64 seen = 0;
    for (auto value = counts.begin(); value != counts.end(); ++value) {
        seen += value.value();
        if (seen >= rank)
            return value.key();
    }
    return -1;
}

std::optional<Statistics> readStatistics(RecordStore &store, const StatisticsQuery &query, QString *error)
{
    Statistics statistics;
    if (Reader(store.connection(), query).read(&statistics))
        return statistics;
    *error = store.connection().errorText();
    return std::nullopt;
}

QString toText(StatisticsQuery::Groups groups)
{
    for (const auto &known : groupNames) {
        if (known.groups == groups)
            return QLatin1String(known.name);
    }
    return {};
}

std::optional<StatisticsQuery::Groups> statisticsGroupsFromText(const QString &text)
{
    for (const auto &known : groupNames) {
        if (known.groups != Groups::None && text == QLatin1String(known.name))
            return known.groups;
    }
    return std::nullopt;
}

}
