#include "commands/commands.h"
#include "diagnostics/reporterror.h"
#include "output/replacefile.h"
#include "output/standardoutput.h"
#include "records/openrecords.h"
#include "records/statisticsoptions.h"
#include "records/statisticstext.h"
#include "reports/statisticspage.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>

namespace panelhost {

namespace {

using Groups = StatisticsQuery::Groups;

constexpr int MaxPeriods = 40; // that can be read in a chart

// The given period, or the shortest one of which there aren't too many.
std::optional<Statistics> readByPeriod(RecordStore &store, StatisticsQuery query, QString *error)
{
    if (query.groups != Groups::None && query.groups != Groups::Station)
        return readStatistics(store, query, error);
    std::optional<Statistics> statistics;
    for (const Groups groups : {Groups::Day, Groups::Week, Groups::Month}) {
        query.groups = groups;
        statistics = readStatistics(store, query, error);
        if (!statistics || statistics->groups.size() <= MaxPeriods)
            break;
    }
    return statistics;
}

bool writePage(RecordStore &store, StatisticsQuery query, const QString &directory, QString *error)
{
    const auto byPeriod = readByPeriod(store, query, error);
    query.groups = Groups::Station;
    const auto byStation = byPeriod ? readStatistics(store, query, error) : std::nullopt;
    if (!byStation)
        return false;
    if (!QDir().mkpath(directory)) {
        *error = QStringLiteral("%1: the directory can't be created.").arg(directory);
        return false;
    }
    return replaceFile(QDir(directory).filePath(QStringLiteral("statistics.html")),
                       statisticsPage(*byPeriod, *byStation), error);
}

bool printStatistics(RecordStore &store, const StatisticsQuery &query, const QCommandLineParser &parser, QString *error)
{
    const auto statistics = readStatistics(store, query, error);
    if (!statistics)
        return false;
    if (parser.isSet(QStringLiteral("json")))
        print(QString::fromUtf8(QJsonDocument(statisticsJson(*statistics)).toJson(QJsonDocument::Compact))
              + QLatin1Char('\n'));
    else
        print(parser.isSet(QStringLiteral("csv")) ? statisticsCsv(*statistics) : statisticsTables(*statistics));
    return true;
}

}

int runStats(const CommandLine &line)
{
    if (line.parser.isSet(QStringLiteral("json")) && line.parser.isSet(QStringLiteral("csv")))
        return reportError(QStringLiteral("Give --json or --csv, not both."));
    QString error;
    const auto query = readStatisticsQuery(line.parser, &error);
    const auto store = query ? openRecords(line.parser, &error) : nullptr;
    const QString directory = line.parser.value(QStringLiteral("html"));
    const bool isDone = store && (directory.isEmpty() || writePage(*store, *query, directory, &error))
        && printStatistics(*store, *query, line.parser, &error);
    return isDone ? 0 : reportError(error);
}

}
