#include "records/statisticsoptions.h"

namespace panelhost {

namespace {

bool readDay(const QCommandLineParser &parser, const QString &name, QDate *day, QString *error)
{
    const QString text = parser.value(name);
    if (text.isEmpty())
        return true;
    *day = QDate::fromString(text, Qt::ISODate);
    if (!day->isValid())
        *error = QStringLiteral("--%1 is \"%2\", expected a day (UTC) such as 2026-01-31.").arg(name, text);
    return day->isValid();
}

bool readDays(const QCommandLineParser &parser, StatisticsQuery *query, QString *error)
{
    if (!readDay(parser, QStringLiteral("since"), &query->since, error)
        || !readDay(parser, QStringLiteral("until"), &query->until, error))
        return false;
    if (!query->since.isValid() || !query->until.isValid() || query->since <= query->until)
        return true;
    *error = QStringLiteral("--until %1 is before --since %2.")
                 .arg(query->until.toString(Qt::ISODate), query->since.toString(Qt::ISODate));
    return false;
}

}

QList<QCommandLineOption> statisticsOptions()
{
    return {
        {QStringLiteral("since"), QStringLiteral("First day (UTC), such as 2026-01-31."), QStringLiteral("DAY")},
        {QStringLiteral("until"), QStringLiteral("Last day (UTC)."), QStringLiteral("DAY")},
        {QStringLiteral("station"), QStringLiteral("Only runs at this station."), QStringLiteral("NAME")},
        {QStringLiteral("kind"), QStringLiteral("Kind of the runs: machine (default), aging or repair."),
         QStringLiteral("KIND")},
        {QStringLiteral("by"), QStringLiteral("Group by station, day, week or month."), QStringLiteral("GROUP")},
    };
}

std::optional<StatisticsQuery> readStatisticsQuery(const QCommandLineParser &parser, QString *error)
{
    StatisticsQuery query;
    query.station = parser.value(QStringLiteral("station"));
    const QString kind = parser.value(QStringLiteral("kind"));
    const QString groups = parser.value(QStringLiteral("by"));
    if (!readDays(parser, &query, error))
        return std::nullopt;
    if (!kind.isEmpty() && !runKindFromText(kind)) {
        *error = QStringLiteral("--kind is \"%1\", expected machine, aging or repair.").arg(kind);
        return std::nullopt;
    }
    if (!groups.isEmpty() && !statisticsGroupsFromText(groups)) {
        *error = QStringLiteral("--by is \"%1\", expected station, day, week or month.").arg(groups);
        return std::nullopt;
    }
    query.kind = runKindFromText(kind).value_or(RunKind::Machine);
    query.groups = statisticsGroupsFromText(groups).value_or(StatisticsQuery::Groups::None);
    return query;
}

}
