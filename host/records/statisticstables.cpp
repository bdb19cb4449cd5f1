#include "records/statisticstables.h"

#include "records/runtables.h"
#include "records/storeconnection.h"

namespace panelhost {

namespace {

constexpr int DayLength = 10;  // of "2026-03-01"
constexpr int MonthLength = 7; // of "2026-03"

// A column of a primary key can't be null.
QString orEmpty(const QString &text)
{
    return text.isNull() ? QStringLiteral("") : text;
}

bool countOutcome(StoreConnection &connection, const Run &run)
{
    return bool(connection.execute(
        QStringLiteral("INSERT INTO run_count (day, station, kind, outcome, failed_phase, runs) VALUES (?, ?, ?, ?, ?, "
                       "1) ON CONFLICT (day, station, kind, outcome, failed_phase) DO UPDATE SET runs = run_count.runs "
                       "+ 1"),
        {timeText(run.beginUtc()).left(DayLength), orEmpty(run.session.station), toText(run.kind), toText(run.outcome),
         orEmpty(run.failedPhase())}));
}

// Runs may be saved in any order: a station sends them to a server when it can. One statement, so that two stations
// that test the same unit don't overwrite each other's result.
bool countUnit(StoreConnection &connection, const Run &run)
{
    if (run.session.unit.isEmpty() || run.outcome == RunOutcome::Aborted)
        return true;
    const QString isFirst = QStringLiteral("(excluded.first_begin, excluded.first_position) < "
                                           "(unit_result.first_begin, unit_result.first_position)");
    const QString isLast = QStringLiteral("(excluded.last_begin, excluded.last_position) >= "
                                          "(unit_result.last_begin, unit_result.last_position)");
    static const QString statement = [&] {
        const auto take = [](const char *column, const QString &condition) {
            return QStringLiteral("%1 = CASE WHEN %2 THEN excluded.%1 ELSE unit_result.%1 END")
                .arg(QLatin1String(column), condition);
        };
        const QStringList changes{take("first_begin", isFirst),  take("first_position", isFirst),
                                  take("first_day", isFirst),    take("first_station", isFirst),
                                  take("first_passed", isFirst), take("last_begin", isLast),
                                  take("last_position", isLast), take("last_passed", isLast)};
        return QStringLiteral("INSERT INTO unit_result (unit, kind, first_begin, first_position, first_day, "
                              "first_station, first_passed, last_begin, last_position, last_passed) VALUES (?, ?, ?, "
                              "?, ?, ?, ?, ?, ?, ?) ON CONFLICT (unit, kind) DO UPDATE SET ")
            + changes.join(QStringLiteral(", "));
    }();
    const QString begin = timeText(run.beginUtc());
    const int hasPassed = run.outcome == RunOutcome::Passed ? 1 : 0;
    return bool(connection.execute(statement,
                                   {run.session.unit, toText(run.kind), begin, run.position, begin.left(DayLength),
                                    orEmpty(run.session.station), hasPassed, begin, run.position, hasPassed}));
}

bool countDurations(StoreConnection &connection, const Run &run)
{
    for (const RunPhase &phase : run.phases) {
        if (phase.outcome != RunOutcome::Aborted
            && !connection.execute(
                QStringLiteral("INSERT INTO duration_count (kind, phase, duration, month, station, runs) VALUES (?, ?, "
                               "?, ?, ?, 1) ON CONFLICT (kind, phase, duration, month, station) DO UPDATE SET runs = "
                               "duration_count.runs + 1"),
                {toText(run.kind), phase.name, roundedDuration(phase.duration),
                 timeText(run.beginUtc()).left(MonthLength), orEmpty(run.session.station)}))
            return false;
    }
    return true;
}

}

// The schema has the same as an expression of SQL, for the runs of earlier versions.
qint64 roundedDuration(qint64 milliseconds)
{
    const qint64 step = milliseconds < 100000 ? 100 : milliseconds < 1000000 ? 1000 : 10000;
    return (milliseconds + step / 2) / step * step;
}

bool countRun(StoreConnection &connection, const Run &run)
{
    return countOutcome(connection, run) && countUnit(connection, run) && countDurations(connection, run);
}

}
