#pragma once

#include "records/run.h"

#include <QtCore/QDate>

#include <functional>

namespace panelhost {

class RecordStore;

/// Which runs statistics are about, and how they are grouped. Days are days in UTC.
struct StatisticsQuery
{
    enum class Groups {
        None,
        Station,
        Day,
        Week,
        Month
    };

    RunKind kind = RunKind::Machine;
    QString station; ///< empty: all
    QDate since;     ///< first day; invalid: from the first run on
    QDate until;     ///< last day; invalid: up to the last run
    Groups groups = Groups::None;
};

/// The numbers of runs and units in a selection of runs: all runs that a query asks for, or one group of them.
struct RunCounts
{
    qint64 passed = 0;
    qint64 failed = 0;
    qint64 aborted = 0;
    qint64 days = 0;              ///< days on which at least one run began
    qint64 units = 0;             ///< units whose first run with a verdict is one of these runs
    qint64 firstPassed = 0;       ///< those that passed this first run
    qint64 finallyPassed = 0;     ///< those that passed their last run with a verdict, whenever that was
    QMap<QString, qint64> phases; ///< number of failed runs by the phase that failed; "" if no phase has failed

    qint64 runs() const { return passed + failed + aborted; }
    /// Returns the phase that failed most often; empty if none did.
    QString topFailingPhase() const;
    RunCounts &operator+=(const RunCounts &other);
};

/// How long a phase takes. Durations are in milliseconds, rounded by roundedDuration().
struct PhaseDuration
{
    QString phase;
    qint64 count = 0; ///< phases with a verdict
    qint64 median = 0;
    qint64 ninetieth = 0; ///< 90th percentile
};

/// One bar of the Pareto chart.
struct FailingPhase
{
    QString phase; ///< empty: the run failed, but none of its phases
    qint64 runs = 0;
    double share = 0;           ///< of all failed runs
    double cumulativeShare = 0; ///< of this phase and all before it
};

struct StatisticsGroup
{
    QString name; ///< a station, "2026-03-01", "2026-W09" or "2026-03"
    RunCounts counts;
    QVector<PhaseDuration> durations; ///< only if groups are stations or months
};

struct Statistics
{
    StatisticsQuery query;
    RunCounts counts;
    QVector<PhaseDuration> durations; ///< in the order of the phases
    QVector<StatisticsGroup> groups;  ///< by name
};

/// Returns the phases that have failed, the most frequent first.
QVector<FailingPhase> failingPhases(const RunCounts &counts);

/// Returns @p milliseconds in the precision in which the statistics count durations: 0.1 s, 1 s from 100 s on, and 10 s
/// from 1000 s on.
qint64 roundedDuration(qint64 milliseconds);

/// Returns the smallest duration that is at least as long as @p percent percent of all durations; -1 if there are none.
/// @p counts has the number of occurrences of each duration.
qint64 percentile(const QMap<qint64, qint64> &counts, int percent);

/// Reads statistics from @p store. Returns nullopt and sets @p error to a sentence on an error.
std::optional<Statistics> readStatistics(RecordStore &store, const StatisticsQuery &query, QString *error);

QString toText(StatisticsQuery::Groups groups);
std::optional<StatisticsQuery::Groups> statisticsGroupsFromText(const QString &text);

}
