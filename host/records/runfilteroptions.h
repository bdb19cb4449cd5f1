#pragma once

#include "records/runfilter.h"

#include <QtCore/QCommandLineOption>
#include <QtCore/QCommandLineParser>

namespace panelhost {

/// The options of a command that prints runs of a store.
QList<QCommandLineOption> runFilterOptions();

/// What they say. Returns nullopt, with one sentence in @p error, for a value that none of them has.
std::optional<RunFilter> readRunFilter(const QCommandLineParser &parser, QString *error);

}
