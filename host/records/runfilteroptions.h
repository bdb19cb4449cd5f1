#pragma once

#include "records/runfilter.h"

#include <QtCore/QCommandLineOption>
#include <QtCore/QCommandLineParser>

namespace panelhost {

/// Returns the options of a command that prints saved runs.
QList<QCommandLineOption> runFilterOptions();

/// Reads these options. Returns nullopt and sets @p error to a sentence if a value isn't valid.
std::optional<RunFilter> readRunFilter(const QCommandLineParser &parser, QString *error);

}
