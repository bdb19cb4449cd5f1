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

// What stands in a statement for text that is needed more than once.

/// The statements that count one run.
const QString countsOfOneRun = QStringLiteral("{counts}");
/// The duration of a phase, as roundedDuration() rounds it.
const QString rounded = QStringLiteral("{rounded}");

// Statements that count all runs.

constexpr const char *fillRunCount =
    "INSERT INTO run_count (kind, day, station, outcome, failed_phase, runs) "
    "SELECT kind, substr(begin, 1, 10), coalesce(station, ''), outcome, "
    "coalesce((SELECT phase.name FROM phase WHERE phase.run = run.id AND phase.outcome = 'failed' "
    "ORDER BY phase.position LIMIT 1), ''), count(*) FROM run GROUP BY 1, 2, 3, 4, 5";

constexpr const char *fillUnitResult =
    "INSERT INTO unit_result (unit, kind, first_begin, first_position, first_day, first_station, first_passed, "
    "last_begin, last_position, last_passed) "
    "SELECT earliest.unit, earliest.kind, earliest.begin, earliest.position, substr(earliest.begin, 1, 10), "
    "coalesce(earliest.station, ''), CASE earliest.outcome WHEN 'passed' THEN 1 ELSE 0 END, "
    "latest.begin, latest.position, CASE latest.outcome WHEN 'passed' THEN 1 ELSE 0 END "
    "FROM run AS earliest JOIN run AS latest ON latest.id = "
    "(SELECT other.id FROM run AS other WHERE other.unit = earliest.unit AND other.kind = earliest.kind "
    "AND other.outcome <> 'aborted' ORDER BY other.begin DESC, other.position DESC LIMIT 1) "
    "WHERE earliest.id = (SELECT other.id FROM run AS other WHERE other.unit = earliest.unit "
    "AND other.kind = earliest.kind AND other.outcome <> 'aborted' ORDER BY other.begin, other.position LIMIT 1)";

constexpr const char *fillUnitCount =
    "INSERT INTO unit_count (kind, day, station, units, first_passed, finally_passed) "
    "SELECT kind, first_day, first_station, count(*), sum(first_passed), sum(last_passed) FROM unit_result "
    "GROUP BY 1, 2, 3";

constexpr const char *fillDayDuration =
    "INSERT INTO day_duration (kind, day, phase, duration, runs) "
    "SELECT run.kind, substr(run.begin, 1, 10), phase.name, {rounded}, count(*) "
    "FROM run JOIN phase ON phase.run = run.id WHERE phase.outcome <> 'aborted' GROUP BY 1, 2, 3, 4";

constexpr const char *fillStationMonthDuration =
    "INSERT INTO station_month_duration (kind, station, month, phase, duration, runs) "
    "SELECT run.kind, coalesce(run.station, ''), substr(run.begin, 1, 7), phase.name, {rounded}, count(*) "
    "FROM run JOIN phase ON phase.run = run.id WHERE phase.outcome <> 'aborted' GROUP BY 1, 2, 4, 5, 3";

constexpr const char *fillStationDuration =
    "INSERT INTO station_duration (kind, station, phase, duration, runs) "
    "SELECT kind, station, phase, duration, sum(runs) FROM station_month_duration GROUP BY 1, 2, 3, 4";

constexpr const char *fillMonthDuration =
    "INSERT INTO month_duration (kind, month, phase, duration, runs) "
    "SELECT kind, month, phase, duration, sum(runs) FROM station_month_duration GROUP BY 1, 2, 3, 4";

// In this order: some read the tables of those before.
constexpr const char *fillStatements[] = {fillRunCount,     fillUnitResult,           fillUnitCount,
                                          fillDayDuration,  fillStationMonthDuration, fillStationDuration,
                                          fillMonthDuration};

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
    {3, fillRunCount},
    {3, fillUnitResult},
    {3, "CREATE INDEX unit_result_first ON unit_result (kind, first_day, first_station, first_passed, last_passed)"},
    {3,
     "INSERT INTO duration_count (kind, phase, duration, month, station, runs) "
     "SELECT run.kind, phase.name, {rounded}, substr(run.begin, 1, 7), coalesce(run.station, ''), count(*) "
     "FROM run JOIN phase ON phase.run = run.id WHERE phase.outcome <> 'aborted' GROUP BY 1, 2, 3, 5, 4"},
    // A server groups without the order of an index, and would have to change this one with each count.
    {3, "CREATE INDEX duration_count_month ON duration_count (kind, month, phase, duration, runs)", Stores::Files},

    // Durations by station and month are too many to be summed up for each question, and so are units. duration_count
    // is gone, so that a process of version 3, which counts by itself, can't save here: its runs would be counted
    // twice. Version 4 has the trigger of the end of version 5.
    {5, "LOCK TABLE journal IN ACCESS EXCLUSIVE MODE", Stores::Servers},
    {5, "DROP TRIGGER IF EXISTS count_run", Stores::Files},
    {5, "DROP TRIGGER IF EXISTS count_run ON journal", Stores::Servers},
    {5, "DROP INDEX unit_result_first"},
    {5,
     "CREATE TABLE unit_count (kind TEXT NOT NULL, day TEXT NOT NULL, station TEXT NOT NULL, units INTEGER NOT NULL, "
     "first_passed INTEGER NOT NULL, finally_passed INTEGER NOT NULL, PRIMARY KEY (kind, day, station)) WITHOUT ROWID"},
    {5,
     "CREATE TABLE day_duration (kind TEXT NOT NULL, day TEXT NOT NULL, phase TEXT NOT NULL, duration INTEGER NOT "
     "NULL, "
     "runs INTEGER NOT NULL, PRIMARY KEY (kind, day, phase, duration)) WITHOUT ROWID"},
    {5,
     "CREATE TABLE month_duration (kind TEXT NOT NULL, month TEXT NOT NULL, phase TEXT NOT NULL, "
     "duration INTEGER NOT NULL, runs INTEGER NOT NULL, PRIMARY KEY (kind, month, phase, duration)) WITHOUT ROWID"},
    {5,
     "CREATE TABLE station_duration (kind TEXT NOT NULL, station TEXT NOT NULL, phase TEXT NOT NULL, "
     "duration INTEGER NOT NULL, runs INTEGER NOT NULL, PRIMARY KEY (kind, station, phase, duration)) WITHOUT ROWID"},
    {5,
     "CREATE TABLE station_month_duration (kind TEXT NOT NULL, station TEXT NOT NULL, month TEXT NOT NULL, "
     "phase TEXT NOT NULL, duration INTEGER NOT NULL, runs INTEGER NOT NULL, "
     "PRIMARY KEY (kind, station, phase, duration, month)) WITHOUT ROWID"},
    {5, fillUnitCount},
    {5, fillDayDuration},
    {5,
     "INSERT INTO station_month_duration (kind, station, month, phase, duration, runs) "
     "SELECT kind, station, month, phase, duration, runs FROM duration_count ORDER BY 1, 2, 4, 5, 3"},
    {5, fillStationDuration},
    {5, fillMonthDuration},
    {5, "DROP TABLE duration_count"},

    // The store itself counts a run when it is complete, which it is with its journal. So stations needn't be allowed
    // to change the counts. The function has the rights of its owner, so it must not find tables that others have made.
    {5, "CREATE TRIGGER count_run AFTER INSERT ON journal BEGIN {counts} END", Stores::Files},
    {5, "SELECT set_config('search_path', quote_ident(current_schema()) || ', pg_temp', true)", Stores::Servers},
    {5,
     "CREATE OR REPLACE FUNCTION count_run() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER "
     "SET search_path FROM CURRENT AS $$BEGIN {counts} RETURN NULL; END$$",
     Stores::Servers},
    {5, "REVOKE ALL ON FUNCTION count_run() FROM PUBLIC", Stores::Servers},
    {5, "CREATE TRIGGER count_run AFTER INSERT ON journal FOR EACH ROW EXECUTE FUNCTION count_run()", Stores::Servers},
};

// Runs may be saved in any order: a station sends them to a server when it can.
constexpr const char *countStatements[] = {
    "INSERT INTO run_count (kind, day, station, outcome, failed_phase, runs) "
    "SELECT kind, substr(begin, 1, 10), coalesce(station, ''), outcome, "
    "coalesce((SELECT phase.name FROM phase WHERE phase.run = run.id AND phase.outcome = 'failed' "
    "ORDER BY phase.position LIMIT 1), ''), 1 FROM run WHERE run.id = NEW.run "
    "ON CONFLICT (kind, day, station, outcome, failed_phase) DO UPDATE SET runs = run_count.runs + 1;",

    // The unit is taken from where it was counted, and counted again below. A row that counts no units stays.
    "UPDATE unit_count SET units = unit_count.units - 1, "
    "first_passed = unit_count.first_passed - unit_result.first_passed, "
    "finally_passed = unit_count.finally_passed - unit_result.last_passed "
    "FROM run JOIN unit_result ON unit_result.unit = run.unit AND unit_result.kind = run.kind "
    "WHERE run.id = NEW.run AND run.outcome <> 'aborted' AND unit_count.kind = unit_result.kind "
    "AND unit_count.day = unit_result.first_day AND unit_count.station = unit_result.first_station;",

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

    "INSERT INTO unit_count (kind, day, station, units, first_passed, finally_passed) "
    "SELECT unit_result.kind, first_day, first_station, 1, first_passed, last_passed "
    "FROM run JOIN unit_result ON unit_result.unit = run.unit AND unit_result.kind = run.kind "
    "WHERE run.id = NEW.run AND run.outcome <> 'aborted' "
    "ON CONFLICT (kind, day, station) DO UPDATE SET units = unit_count.units + 1, "
    "first_passed = unit_count.first_passed + excluded.first_passed, "
    "finally_passed = unit_count.finally_passed + excluded.finally_passed;",

    "INSERT INTO day_duration (kind, day, phase, duration, runs) "
    "SELECT run.kind, substr(run.begin, 1, 10), phase.name, {rounded}, count(*) "
    "FROM run JOIN phase ON phase.run = run.id WHERE run.id = NEW.run AND phase.outcome <> 'aborted' "
    "GROUP BY 1, 2, 3, 4 "
    "ON CONFLICT (kind, day, phase, duration) DO UPDATE SET runs = day_duration.runs + excluded.runs;",

    "INSERT INTO month_duration (kind, month, phase, duration, runs) "
    "SELECT run.kind, substr(run.begin, 1, 7), phase.name, {rounded}, count(*) "
    "FROM run JOIN phase ON phase.run = run.id WHERE run.id = NEW.run AND phase.outcome <> 'aborted' "
    "GROUP BY 1, 2, 3, 4 "
    "ON CONFLICT (kind, month, phase, duration) DO UPDATE SET runs = month_duration.runs + excluded.runs;",

    "INSERT INTO station_duration (kind, station, phase, duration, runs) "
    "SELECT run.kind, coalesce(run.station, ''), phase.name, {rounded}, count(*) "
    "FROM run JOIN phase ON phase.run = run.id WHERE run.id = NEW.run AND phase.outcome <> 'aborted' "
    "GROUP BY 1, 2, 3, 4 "
    "ON CONFLICT (kind, station, phase, duration) DO UPDATE SET runs = station_duration.runs + excluded.runs;",

    "INSERT INTO station_month_duration (kind, station, month, phase, duration, runs) "
    "SELECT run.kind, coalesce(run.station, ''), substr(run.begin, 1, 7), phase.name, {rounded}, count(*) "
    "FROM run JOIN phase ON phase.run = run.id WHERE run.id = NEW.run AND phase.outcome <> 'aborted' "
    "GROUP BY 1, 2, 3, 4, 5 "
    "ON CONFLICT (kind, station, phase, duration, month) "
    "DO UPDATE SET runs = station_month_duration.runs + excluded.runs;",
};

const QString roundedDurationOfPhase =
    QStringLiteral("CASE WHEN phase.duration < 100000 THEN (phase.duration + 50) / 100 * 100 "
                   "WHEN phase.duration < 1000000 THEN (phase.duration + 500) / 1000 * 1000 "
                   "ELSE (phase.duration + 5000) / 10000 * 10000 END");

constexpr const char *stationTables[] = {"run", "phase", "failure", "keypress", "port", "journal"};
constexpr const char *countTables[] = {
    "run_count",        "unit_result",           "unit_count", "day_duration", "month_duration",
    "station_duration", "station_month_duration"};

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

QString completed(const char *statement)
{
    return QString::fromLatin1(statement)
        .replace(countsOfOneRun, allCountStatements())
        .replace(rounded, roundedDurationOfPhase);
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

QString quotedName(const QString &name)
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
        const QString text = completed(statement.text);
        statements << (kind == StoreKind::Server ? forServer(text) : text);
    }
    return statements;
}

QStringList storeCountTables()
{
    QStringList tables;
    for (const char *table : countTables)
        tables << QLatin1String(table);
    return tables;
}

// On a server, others wait with their counts.
QStringList storeRecount(StoreKind kind)
{
    QStringList statements;
    const QStringList tables = storeCountTables();
    for (const QString &table : tables) {
        if (kind == StoreKind::Server)
            statements << QStringLiteral("LOCK TABLE %1 IN SHARE ROW EXCLUSIVE MODE").arg(table);
    }
    for (const QString &table : tables)
        statements << QStringLiteral("DELETE FROM %1").arg(table);
    for (const char *statement : fillStatements)
        statements << completed(statement);
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
        statements << QStringLiteral("GRANT SELECT, INSERT ON %1 TO %2").arg(QLatin1String(table), quotedName(station));
    for (const char *table : countTables) {
        // In version 3, stations counted by themselves.
        statements
            << QStringLiteral("REVOKE INSERT, UPDATE ON %1 FROM %2").arg(QLatin1String(table), quotedName(station));
        statements << QStringLiteral("GRANT SELECT ON %1 TO %2").arg(QLatin1String(table), quotedName(station));
    }
    statements << QStringLiteral("GRANT SELECT ON numbered_run, schema_version TO %1").arg(quotedName(station))
               << QStringLiteral("COMMIT");
    return statements.join(QStringLiteral(";\n")) + QStringLiteral(";\n");
}

}
