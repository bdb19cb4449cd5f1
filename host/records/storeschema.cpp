#include "records/storeschema.h"

#include "records/recordstore.h"

namespace panelhost {

QStringList storeSchema()
{
    return {
        QStringLiteral("PRAGMA application_id=%1").arg(StoreApplicationId),
        QStringLiteral("PRAGMA user_version=%1").arg(RecordStore::SchemaVersion),
        QStringLiteral("CREATE TABLE run ("
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
                       "rounds INTEGER NOT NULL, failure_count INTEGER NOT NULL, wrong_key_count INTEGER NOT NULL)"),
        QStringLiteral("CREATE INDEX run_unit ON run (unit, kind)"),
        QStringLiteral("CREATE INDEX run_begin ON run (begin)"),
        QStringLiteral("CREATE TABLE phase ("
                       "run TEXT NOT NULL REFERENCES run ON DELETE CASCADE, position INTEGER NOT NULL, "
                       "name TEXT NOT NULL, outcome TEXT NOT NULL, begin INTEGER NOT NULL, "
                       "duration INTEGER NOT NULL, source TEXT, PRIMARY KEY (run, position)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE failure ("
                       "run TEXT NOT NULL REFERENCES run ON DELETE CASCADE, position INTEGER NOT NULL, "
                       "at INTEGER NOT NULL, ports TEXT NOT NULL, PRIMARY KEY (run, position)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE keypress ("
                       "run TEXT NOT NULL REFERENCES run ON DELETE CASCADE, position INTEGER NOT NULL, "
                       "what TEXT NOT NULL CHECK (what IN ('wrong', 'skipped')), hal_key INTEGER NOT NULL, "
                       "PRIMARY KEY (run, position)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE port ("
                       "run TEXT NOT NULL REFERENCES run ON DELETE CASCADE, name TEXT NOT NULL, "
                       "state TEXT NOT NULL, PRIMARY KEY (run, name)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE journal ("
                       "run TEXT PRIMARY KEY NOT NULL REFERENCES run ON DELETE CASCADE, lines BLOB NOT NULL)"),
    };
}

}
