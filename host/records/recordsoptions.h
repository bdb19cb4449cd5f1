#pragma once

#include "records/serveraddress.h"

#include <QtCore/QCommandLineOption>
#include <QtCore/QCommandLineParser>
#include <QtCore/QString>

#include <optional>

namespace panelhost {

/// Where runs are saved.
struct RecordsLocation
{
    QString path;                        ///< of the SQLite file; empty: nowhere
    bool isDefault = false;              ///< neither the option nor the variable was given
    std::optional<ServerAddress> server; ///< to which the runs in the file are sent
    bool isNone() const { return path.isEmpty(); }
};

/// Returns the options --records and --records-password-file.
QList<QCommandLineOption> recordsOptions();

/// Reads --records, else the variable PANELHOST_RECORDS; the default is the file in the user's data directory. Returns
/// nullopt and sets @p error to a sentence if the value isn't valid. The sentence never contains a password.
std::optional<RecordsLocation> readRecordsLocation(const QCommandLineParser &parser, QString *error);

/// Returns the options --unit, --station and --operator.
QList<QCommandLineOption> identityOptions();

/// Checks their values. Returns false and sets @p error to a sentence if one of them can't be saved.
bool checkIdentity(const QCommandLineParser &parser, QString *error);

}
