#include "records/runfilteroptions.h"

namespace panelhost {

QList<QCommandLineOption> runFilterOptions()
{
    return {
        {QStringLiteral("unit"), QStringLiteral("Only runs of this unit."), QStringLiteral("NUMBER")},
        {QStringLiteral("since"), QStringLiteral("Only runs from this time (UTC) on, such as 2026-01-31."),
         QStringLiteral("TIME")},
        {QStringLiteral("outcome"), QStringLiteral("Only runs that passed, failed or aborted."),
         QStringLiteral("OUTCOME")},
    };
}

std::optional<RunFilter> readRunFilter(const QCommandLineParser &parser, QString *error)
{
    RunFilter filter;
    filter.unit = parser.value(QStringLiteral("unit"));
    const QString since = parser.value(QStringLiteral("since"));
    if (!since.isEmpty()) {
        filter.since = QDateTime::fromString(since, Qt::ISODate);
        filter.since = QDateTime(filter.since.date(), filter.since.time(), Qt::UTC);
        if (!filter.since.isValid()) {
            *error = QStringLiteral("--since is \"%1\", expected a time such as 2026-01-31 or 2026-01-31T08:00:00.")
                         .arg(since);
            return std::nullopt;
        }
    }
    const QString outcome = parser.value(QStringLiteral("outcome"));
    filter.outcome = runOutcomeFromText(outcome);
    if (!outcome.isEmpty() && !filter.outcome) {
        *error = QStringLiteral("--outcome is \"%1\", expected passed, failed or aborted.").arg(outcome);
        return std::nullopt;
    }
    return filter;
}

}
