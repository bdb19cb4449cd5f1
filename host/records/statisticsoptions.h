#pragma once

#include "records/statistics.h"

#include <QtCore/QCommandLineOption>
#include <QtCore/QCommandLineParser>

namespace panelhost {

/// Returns the options that select and group runs for statistics.
QList<QCommandLineOption> statisticsOptions();

/// Reads these options. Returns nullopt and sets @p error to a sentence if a value isn't valid.
std::optional<StatisticsQuery> readStatisticsQuery(const QCommandLineParser &parser, QString *error);

}
