#pragma once

#include "records/statistics.h"

namespace panelhost {

/// Returns @p statistics as one JSON object.
QJsonObject statisticsJson(const Statistics &statistics);
/// Returns one line of CSV for each group, or one for all runs, after a line with the names of the columns.
QString statisticsCsv(const Statistics &statistics);
/// Returns tables for a terminal.
QString statisticsTables(const Statistics &statistics);

/// Returns which runs @p query asks for, in words.
QString queryText(const StatisticsQuery &query);
/// Returns @p part of @p whole such as "91.4 %"; "-" if @p whole is 0.
QString percentText(qint64 part, qint64 whole);
/// Returns @p count with the word for it, such as "1 unit" or "2 units".
QString countText(qint64 count, const char *one, const char *many);
/// Returns @p count per day such as "12.5"; "-" if @p days is 0.
QString perDayText(qint64 count, qint64 days);
/// Returns the phase, or "(no phase)" if it is empty.
QString phaseText(const QString &phase);

}
