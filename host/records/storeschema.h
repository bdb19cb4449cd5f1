#pragma once

#include <QtCore/QStringList>

namespace panelhost {

/// The application id of a store, "PHRC", which other SQLite files don't have.
constexpr int StoreApplicationId = 0x50485243;

/// The version of the schema that this panelhost reads and writes.
constexpr int StoreSchemaVersion = 5;

/// Where a store is kept. The tables are the same; the types and a few statements differ.
enum class StoreKind {
    File,  ///< an SQLite file
    Server ///< a PostgreSQL database
};

/// Returns the statements that turn a store of version @p from into one of StoreSchemaVersion; 0 for an empty
/// database. They don't store the version.
QStringList storeMigration(StoreKind kind, int from);

/// Returns the names of the tables in which runs are counted.
QStringList storeCountTables();

/// Returns the statements that recount all runs, in a transaction.
QStringList storeRecount(StoreKind kind);

/// Returns the statements that create a store in an empty SQLite file, with its version.
QStringList storeFileSchema();

/// Returns the statements, one per line, that turn version @p from of a PostgreSQL database into StoreSchemaVersion and
/// allow the role @p station to read and to add runs. To be executed by the owner.
QString storeServerScript(int from, const QString &station);

}
