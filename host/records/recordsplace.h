#pragma once

#include <QtCore/QCommandLineOption>
#include <QtCore/QCommandLineParser>
#include <QtCore/QString>

#include <optional>

namespace panelhost {

/// Where runs are saved.
struct RecordsPlace
{
    QString path;           ///< of the SQLite file; empty: nowhere
    bool isDefault = false; ///< nothing was said, by option or variable
    bool isNone() const { return path.isEmpty(); }
};

/// The option --records.
QCommandLineOption recordsOption();

/// What --records says, else the variable PANELHOST_RECORDS, else the file in the user's data directory. Returns
/// nullopt, with one sentence in @p error, if it is neither "none" nor "sqlite:FILE".
std::optional<RecordsPlace> readRecordsPlace(const QCommandLineParser &parser, QString *error);

/// The options --unit, --station and --operator.
QList<QCommandLineOption> identityOptions();

}
