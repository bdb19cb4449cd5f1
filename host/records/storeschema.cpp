#include "records/storeschema.h"

#include <QtCore/QRegularExpression>

namespace panelhost {

namespace {

enum class Stores {
    All,
    Files,
    Servers
};

/// A statement of the schema, in the words of SQLite.
struct SchemaStatement
{
    int version; ///< the version of the schema that it leads to
    const char *text;
    Stores stores = Stores::All;
};

/// Stands for the statements that count one run.
const QString countsOfOneRun = QStringLiteral("{counts}");

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
     Stores::Files},

    // Statistics of a million runs would take many seconds, so runs are also counted when they are saved.
    {3,
     "CREATE TABLE run_count ("
     "kind TEXT NOT NULL, day TEXT NOT NULL, station TEXT NOT NULL, outcome TEXT NOT NULL, "
     "failed_phase TEXT NOT NULL, runs INTEGER NOT NULL, "
     "PRIMARY KEY (kind, day, station, outcome, failed_phase)) WITHOUT ROWID"},
    {3,
     "CREATE TABLE unit_result ("
     "unit TEXT NOT NULL, kind TEXT NOT NULL, "
     "first_begin TEXT NOT NULL, first_position INTEGER NOT NULL, first_day TEXT NOT NULL, "
     "first_station TEXT NOT NULL, first_passed INTEGER NOT NULL, "
     "last_begin TEXT NOT NULL, last_position INTEGER NOT NULL, last_passed INTEGER NOT NULL, "
     "PRIMARY KEY (unit, kind)) WITHOUT ROWID"},
    {3,
     "CREATE TABLE duration_count ("
     "kind TEXT NOT NULL, phase TEXT NOT NULL, duration INTEGER NOT NULL, month TEXT NOT NULL, "
     "station TEXT NOT NULL, runs INTEGER NOT NULL, "
     "PRIMARY KEY (kind, phase, duration, station, month)) WITHOUT ROWID"},
    {3,
     "INSERT INTO run_count (kind, day, station, outcome, failed_phase, runs) "
     "SELECT kind, substr(begin, 1, 10), coalesce(station, ''), outcome, "
     "coalesce((SELECT phase.name FROM phase WHERE phase.run = run.id AND phase.outcome = 'failed' "
     "ORDER BY phase.position LIMIT 1), ''), count(*) FROM run GROUP BY 1, 2, 3, 4, 5"},
    {3,
     "INSERT INTO unit_result (unit, kind, first_begin, first_position, first_day, first_station, first_passed, "
     "last_begin, last_position, last_passed) "
     "SELECT earliest.unit, earliest.kind, earliest.begin, earliest.position, substr(earliest.begin, 1, 10), "
     "coalesce(earliest.station, ''), CASE earliest.outcome WHEN 'passed' THEN 1 ELSE 0 END, "
     "latest.begin, latest.position, CASE latest.outcome WHEN 'passed' THEN 1 ELSE 0 END "
     "FROM run AS earliest JOIN run AS latest ON latest.id = "
     "(SELECT other.id FROM run AS other WHERE other.unit = earliest.unit AND other.kind = earliest.kind "
     "AND other.outcome <> 'aborted' ORDER BY other.begin DESC, other.position DESC LIMIT 1) "
     "WHERE earliest.id = (SELECT other.id FROM run AS other WHERE other.unit = earliest.unit "
     "AND other.kind = earliest.kind AND other.outcome <> 'aborted' ORDER BY other.begin, other.position LIMIT 1)"},
    {3, "CREATE INDEX unit_result_first ON unit_result (kind, first_day, first_station, first_passed, last_passed)"},
    {3,
     "INSERT INTO duration_count (kind, phase, duration, month, station, runs) "
     "SELECT run.kind, phase.name, CASE WHEN phase.duration < 100000 THEN (phase.duration + 50) / 100 * 100 "
     "WHEN phase.duration < 1000000 THEN (phase.duration + 500) / 1000 * 1000 "
     "ELSE (phase.duration + 5000) / 10000 * 10000 END, substr(run.begin, 1, 7), coalesce(run.station, ''), count(*) "
     "FROM run JOIN phase ON phase.run = run.id WHERE phase.outcome <> 'aborted' GROUP BY 1, 2, 3, 5, 4"},
    // A server groups without the order of an index, and would have to change this one with each count.
    {3, "CREATE INDEX duration_count_month ON duration_count (kind, month, phase, duration, runs)", Stores::Files},

    // The store itself counts a run when it is complete, which it is with its journal. So stations needn't be allowed
    // to change the counts. The function has the rights of its owner, so it must not find tables that others have made.
    {4, "CREATE TRIGGER count_run AFTER INSERT ON journal BEGIN {counts} END", Stores::Files},
    {4, "SELECT set_config('search_path', quote_ident(current_schema()) || ', pg_temp', true)", Stores::Servers},
    {4,
     "CREATE FUNCTION count_run() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER SET search_path FROM CURRENT "
     "AS $$BEGIN {counts} RETURN NULL; END$$",
     Stores::Servers},
    {4, "REVOKE ALL ON FUNCTION count_run() FROM PUBLIC", Stores::Servers},
    {4, "CREATE TRIGGER count_run AFTER INSERT ON journal FOR EACH ROW EXECUTE FUNCTION count_run()", Stores::Servers},
};

// Runs may be saved in any order: a station sends them to a server when it can.
constexpr const char *countStatements[] = {
    "INSERT INTO run_count (kind, day, station, outcome, failed_phase, runs) "
    "SELECT kind, substr(begin, 1, 10), coalesce(station, ''), outcome, "
    "coalesce((SELECT phase.name FROM phase WHERE phase.run = run.id AND phase.outcome = 'failed' "
    "ORDER BY phase.position LIMIT 1), ''), 1 FROM run WHERE run.id = NEW.run "
    "ON CONFLICT (kind, day, station, outcome, failed_phase) DO UPDATE SET runs = run_count.runs + 1;",

    "INSERT INTO unit_result (unit, kind, first_begin, first_position, first_day, first_station, first_passed, "
    "last_begin, last_position, last_passed) "
    "SELECT unit, kind, begin, position, substr(begin, 1, 10), coalesce(station, ''), "
    "CASE outcome WHEN 'passed' THEN 1 ELSE 0 END, begin, position, CASE outcome WHEN 'passed' THEN 1 ELSE 0 END "
    "FROM run WHERE run.id = NEW.run AND unit IS NOT NULL AND outcome <> 'aborted' "
    "ON CONFLICT (unit, kind) DO NOTHING;",

    "UPDATE unit_result SET first_begin = run.begin, first_position = run.position, "
    "first_day = substr(run.begin, 1, 10), first_station = coalesce(run.station, ''), "
    "first_passed = CASE run.outcome WHEN 'passed' THEN 1 ELSE 0 END FROM run "
    "WHERE run.id = NEW.run AND run.outcome <> 'aborted' AND unit_result.unit = run.unit "
    "AND unit_result.kind = run.kind "
    "AND (run.begin, run.position) < (unit_result.first_begin, unit_result.first_position);",

    "UPDATE unit_result SET last_begin = run.begin, last_position = run.position, "
    "last_passed = CASE run.outcome WHEN 'passed' THEN 1 ELSE 0 END FROM run "
    "WHERE run.id = NEW.run AND run.outcome <> 'aborted' AND unit_result.unit = run.unit "
    "AND unit_result.kind = run.kind "
    "AND (run.begin, run.position) >= (unit_result.last_begin, unit_result.last_position);",

    "INSERT INTO duration_count (kind, phase, duration, month, station, runs) "
    "SELECT run.kind, phase.name, CASE WHEN phase.duration < 100000 THEN (phase.duration + 50) / 100 * 100 "
    "WHEN phase.duration < 1000000 THEN (phase.duration + 500) / 1000 * 1000 "
    "ELSE (phase.duration + 5000) / 10000 * 10000 END, substr(run.begin, 1, 7), coalesce(run.station, ''), count(*) "
    "FROM run JOIN phase ON phase.run = run.id WHERE run.id = NEW.run AND phase.outcome <> 'aborted' "
    "GROUP BY 1, 2, 3, 4, 5 ON CONFLICT (kind, phase, duration, month, station) "
    "DO UPDATE SET runs = duration_count.runs + excluded.runs;",
};

constexpr const char *stationTables[] = {"run", "phase", "failure", "keypress", "port", "journal"};
constexpr const char *countTables[] = {"run_count", "unit_result", "duration_count"};

bool isFor(StoreKind kind, Stores stores)
{
    return stores == Stores::All || (stores == Stores::Files) == (kind == StoreKind::File);
}

QString allCountStatements()
{
    QStringList statements;
    for (const char *statement : countStatements)
        statements << QString::fromLatin1(statement);
    return statements.join(QLatin1Char(' '));
}

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
        if (statement.version <= from || !isFor(kind, statement.stores))
            continue;
        const QString text = QString::fromLatin1(statement.text).replace(countsOfOneRun, allCountStatements());
        statements << (kind == StoreKind::Server ? forServer(text) : text);
    }
    return statements;
}

// The counts are filled as they were when their tables came into being. On a server, others wait with theirs.
QStringList storeRecount(StoreKind kind)
{
    QStringList statements;
    for (const char *table : countTables) {
        if (kind == StoreKind::Server)
            statements << QStringLiteral("LOCK TABLE %1 IN SHARE ROW EXCLUSIVE MODE").arg(QLatin1String(table));
    }
    for (const char *table : countTables)
        statements << QStringLiteral("DELETE FROM %1").arg(QLatin1String(table));
    return statements + storeMigration(kind, 0).filter(QRegularExpression(QStringLiteral("^INSERT INTO ")));
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
    for (const char *table : countTables) {
        // Stations counted by themselves before.
        if (from == 3)
            statements
                << QStringLiteral("REVOKE INSERT, UPDATE ON %1 FROM %2").arg(QLatin1String(table), quoted(station));
        statements << QStringLiteral("GRANT SELECT ON %1 TO %2").arg(QLatin1String(table), quoted(station));
    }
    statements << QStringLiteral("GRANT SELECT ON numbered_run, schema_version TO %1").arg(quoted(station))
               << QStringLiteral("COMMIT");
    return statements.join(QStringLiteral(";\n")) + QStringLiteral(";\n");
}

}
