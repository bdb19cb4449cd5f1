#include "records/storeschema.h"

#include <QtCore/QRegularExpression>

namespace panelhost {

namespace {

/// A statement of the schema, in the words of SQLite.
struct SchemaStatement
{
    int version; ///< the version of the schema that it leads to
    const char *text;
    bool isForFilesOnly = false;
};

// The history of the schema. A released version never changes: a change of the tables is a new version at the end.
constexpr SchemaStatement schema[] = {
    {1,
     "CREATE TABLE run ("
     "id TEXT PRIMARY KEY NOT NULL, "
     "session TEXT NOT NULL, "
     "position INTEGER NOT NULL, "
     "unit TEXT, station TEXT, operator TEXT, "
     "kind TEXT NOT NULL CHECK (kind IN ('machine', 'aging', 'repair')), "
     "outcome TEXT NOT NULL CHECK (outcome IN ('passed', 'failed', 'aborted')), "
     "attempt INTEGER, "
     "session_begin TEXT NOT NULL, begin TEXT NOT NULL, \"end\" TEXT NOT NULL, "
     "device_begin INTEGER NOT NULL, device_end INTEGER NOT NULL, "
     "language TEXT, panelhost TEXT, component TEXT, configuration TEXT, "
     "rounds INTEGER NOT NULL, failure_count INTEGER NOT NULL, wrong_key_count INTEGER NOT NULL)"},
    {1, "CREATE INDEX run_unit ON run (unit, kind)"},
    {1, "CREATE INDEX run_begin ON run (begin)"},
    {1,
     "CREATE TABLE phase ("
     "run TEXT NOT NULL REFERENCES run ON DELETE CASCADE, position INTEGER NOT NULL, "
     "name TEXT NOT NULL, outcome TEXT NOT NULL, begin INTEGER NOT NULL, "
     "duration INTEGER NOT NULL, source TEXT, PRIMARY KEY (run, position)) WITHOUT ROWID"},
    {1,
     "CREATE TABLE failure ("
     "run TEXT NOT NULL REFERENCES run ON DELETE CASCADE, position INTEGER NOT NULL, "
     "at INTEGER NOT NULL, ports TEXT NOT NULL, PRIMARY KEY (run, position)) WITHOUT ROWID"},
    {1,
     "CREATE TABLE keypress ("
     "run TEXT NOT NULL REFERENCES run ON DELETE CASCADE, position INTEGER NOT NULL, "
     "what TEXT NOT NULL CHECK (what IN ('wrong', 'skipped')), hal_key INTEGER NOT NULL, "
     "PRIMARY KEY (run, position)) WITHOUT ROWID"},
    {1,
     "CREATE TABLE port ("
     "run TEXT NOT NULL REFERENCES run ON DELETE CASCADE, name TEXT NOT NULL, "
     "state TEXT NOT NULL, PRIMARY KEY (run, name)) WITHOUT ROWID"},
    {1,
     "CREATE TABLE journal ("
     "run TEXT PRIMARY KEY NOT NULL REFERENCES run ON DELETE CASCADE, lines BLOB NOT NULL)"},

    // The attempt is counted when it is read: stations that can't see each other's runs can't count it when they save.
    {2, "DROP INDEX run_unit"},
    {2, "ALTER TABLE run DROP COLUMN attempt"},
    {2, "CREATE INDEX run_unit ON run (unit, kind, begin)"},
    {2, "CREATE INDEX run_outcome ON run (outcome, begin)"},
    {2,
     "CREATE VIEW numbered_run AS SELECT run.*, "
     "(SELECT count(*) FROM run AS earlier WHERE earlier.unit = run.unit AND earlier.kind = run.kind "
     "AND (earlier.begin, earlier.position, earlier.id) <= (run.begin, run.position, run.id)) AS attempt FROM run"},
    {2,
     "CREATE TABLE pending (number INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL, run TEXT NOT NULL UNIQUE REFERENCES "
     "run)",
     true},
};

constexpr const char *stationTables[] = {"run", "phase", "failure", "keypress", "port", "journal"};

// Texts are compared byte by byte, as SQLite does, in whatever language the database is.
QString forServer(QString statement)
{
    static const QRegularExpression text(QStringLiteral("\\bTEXT\\b"));
    return statement.replace(text, QStringLiteral("TEXT COLLATE \"C\""))
        .replace(QLatin1String("INTEGER"), QLatin1String("BIGINT"))
        .replace(QLatin1String("BLOB"), QLatin1String("BYTEA"))
        .remove(QLatin1String(" WITHOUT ROWID"));
}

QString quoted(const QString &name)
{
    return QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

}

QStringList storeMigration(StoreKind kind, int from)
{
    QStringList statements;
    for (const SchemaStatement &statement : schema) {
        const QString text = QString::fromLatin1(statement.text);
        if (statement.version <= from || (statement.isForFilesOnly && kind == StoreKind::Server))
            continue;
        statements << (kind == StoreKind::Server ? forServer(text) : text);
    }
    return statements;
}

QStringList storeFileSchema()
{
    return QStringList{QStringLiteral("PRAGMA application_id=%1").arg(StoreApplicationId)}
    + storeMigration(StoreKind::File, 0)
        + QStringList{QStringLiteral("PRAGMA user_version=%1").arg(StoreSchemaVersion)};
}

QString storeServerScript(int from, const QString &station)
{
    QStringList statements{QStringLiteral("BEGIN")};
    if (from == 0)
        statements << QStringLiteral("CREATE TABLE schema_version (version BIGINT NOT NULL)")
                   << QStringLiteral("INSERT INTO schema_version VALUES (0)");
    statements << storeMigration(StoreKind::Server, from);
    statements << QStringLiteral("UPDATE schema_version SET version = %1").arg(StoreSchemaVersion);
    for (const char *table : stationTables)
        statements << QStringLiteral("GRANT SELECT, INSERT ON %1 TO %2").arg(QLatin1String(table), quoted(station));
    statements << QStringLiteral("GRANT SELECT ON numbered_run, schema_version TO %1").arg(quoted(station))
               << QStringLiteral("COMMIT");
    return statements.join(QStringLiteral(";\n")) + QStringLiteral(";\n");
}

}
