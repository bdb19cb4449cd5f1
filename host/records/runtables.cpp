#include "records/runtables.h"

namespace panelhost {

namespace {

constexpr int MaxIds = 100; ///< in one query for the details of runs

// PostgreSQL has no texts with a null character; the run would wait for the server for ever.
QVariant nullableText(QString text)
{
    return text.isEmpty() ? QVariant(QVariant::String)
                          : QVariant(text.replace(QChar(QChar::Null), QChar(QChar::ReplacementCharacter)));
}

const QString insertIntoRun = QStringLiteral(
    "INSERT INTO run (id, session, position, unit, station, operator, kind, outcome, session_begin, begin, \"end\", "
    "device_begin, device_end, language, panelhost, component, configuration, rounds, failure_count, wrong_key_count) "
    "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT (id) DO NOTHING");

QVariantList valuesOf(const Run &run)
{
    const SessionInfo &session = run.session;
    return {idText(run.id),
            idText(session.id),
            run.position,
            nullableText(session.unit),
            nullableText(session.station),
            nullableText(session.operatorName),
            toText(run.kind),
            toText(run.outcome),
            timeText(session.begin),
            timeText(run.beginUtc()),
            timeText(run.endUtc()),
            run.begin,
            run.end,
            nullableText(session.language),
            nullableText(session.panelhostVersion),
            nullableText(session.componentVersion),
            nullableText(session.configuration),
            run.rounds,
            run.failureCount,
            run.wrongKeyCount};
}

bool insertPhases(StoreConnection &connection, const Run &run)
{
    int position = 0;
    for (const RunPhase &phase : run.phases) {
        if (!connection.execute(QStringLiteral("INSERT INTO phase VALUES (?, ?, ?, ?, ?, ?, ?)"),
                                {idText(run.id), ++position, phase.name, toText(phase.outcome), phase.begin,
                                 phase.duration, nullableText(toText(phase.source))}))
            return false;
    }
    return true;
}

bool insertFailures(StoreConnection &connection, const Run &run)
{
    int position = 0;
    for (const AgingFailure &failure : run.failures) {
        if (!connection.execute(QStringLiteral("INSERT INTO failure VALUES (?, ?, ?, ?)"),
                                {idText(run.id), ++position, failure.at, failure.ports.join(QLatin1Char(' '))}))
            return false;
    }
    return true;
}

bool insertKeys(StoreConnection &connection, const Run &run)
{
    int position = 0;
    const auto insert = [&](const QVector<int> &keys, const char *what) {
        for (const int key : keys) {
            if (!connection.execute(QStringLiteral("INSERT INTO keypress VALUES (?, ?, ?, ?)"),
                                    {idText(run.id), ++position, QString::fromLatin1(what), key}))
                return false;
        }
        return true;
    };
    return insert(run.wrongKeys, "wrong") && insert(run.skippedKeys, "skipped");
}

bool insertPorts(StoreConnection &connection, const Run &run)
{
    for (auto port = run.ports.begin(); port != run.ports.end(); ++port) {
        if (!connection.execute(QStringLiteral("INSERT INTO port VALUES (?, ?, ?)"),
                                {idText(run.id), port.key(), port.value()}))
            return false;
    }
    return true;
}

Run readRun(const StoreRows &row)
{
    int column = 0;
    const auto next = [&row, &column] { return row.value(column++); };
    Run run;
    run.id = QUuid::fromString(next().toString());
    run.session.id = QUuid::fromString(next().toString());
    run.position = next().toInt();
    run.session.unit = next().toString();
    run.session.station = next().toString();
    run.session.operatorName = next().toString();
    run.kind = runKindFromText(next().toString()).value_or(RunKind::Machine);
    run.outcome = runOutcomeFromText(next().toString()).value_or(RunOutcome::Aborted);
    run.attempt = next().toInt();
    run.session.begin = QDateTime::fromString(next().toString(), Qt::ISODateWithMs);
    run.begin = next().toLongLong();
    run.end = next().toLongLong();
    run.session.language = next().toString();
    run.session.panelhostVersion = next().toString();
    run.session.componentVersion = next().toString();
    run.session.configuration = next().toString();
    run.rounds = next().toInt();
    run.failureCount = next().toInt();
    run.wrongKeyCount = next().toInt();
    return run;
}

void addPhase(Run &run, const StoreRows &row)
{
    run.phases.append({row.value(1).toString(),
                       runOutcomeFromText(row.value(2).toString()).value_or(RunOutcome::Aborted),
                       row.value(3).toLongLong(), row.value(4).toLongLong(),
                       verdictSourceFromText(row.value(5).toString()).value_or(VerdictSource::None)});
}

void addFailure(Run &run, const StoreRows &row)
{
    run.failures.append({row.value(1).toLongLong(), row.value(2).toString().split(QLatin1Char(' '))});
}

void addKey(Run &run, const StoreRows &row)
{
    (row.value(1).toString() == QLatin1String("wrong") ? run.wrongKeys : run.skippedKeys).append(row.value(2).toInt());
}

void addPort(Run &run, const StoreRows &row)
{
    run.ports.insert(row.value(1).toString(), row.value(2).toString());
}

struct DetailTable
{
    const char *columns;
    const char *name;
    const char *order;
    void (*add)(Run &run, const StoreRows &row);
};

constexpr DetailTable detailTables[] = {
    {"name, outcome, begin, duration, source", "phase", "position", addPhase},
    {"at, ports", "failure", "position", addFailure},
    {"what, hal_key", "keypress", "position", addKey},
    {"name, state", "port", "name", addPort},
};

// The statement has the same number of places each time, so that it is prepared once. Spare places repeat the last id.
bool readDetailsOf(StoreConnection &connection, const DetailTable &table, const QHash<QString, Run *> &runs)
{
    const QStringList ids = runs.keys();
    const int places = ids.size() == 1 ? 1 : MaxIds;
    QVariantList values;
    for (int index = 0; index < places; ++index)
        values << ids.at(qMin(index, ids.size() - 1));
    QStringList marks;
    for (int index = 0; index < places; ++index)
        marks << QStringLiteral("?");
    StoreRows rows = connection.execute(QStringLiteral("SELECT run, %1 FROM %2 WHERE run IN (%3) ORDER BY run, %4")
                                            .arg(QLatin1String(table.columns), QLatin1String(table.name),
                                                 marks.join(QStringLiteral(", ")), QLatin1String(table.order)),
                                        values);
    if (!rows)
        return false;
    while (rows.next()) {
        if (Run *run = runs.value(rows.value(0).toString()))
            table.add(*run, rows);
    }
    return true;
}

}

QString idText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces);
}

QString timeText(const QDateTime &time)
{
    return time.toUTC().toString(Qt::ISODateWithMs);
}

bool insertRun(StoreConnection &connection, const StoredRun &stored, bool *isNew)
{
    {
        const StoreRows inserted = connection.execute(insertIntoRun, valuesOf(stored.run));
        if (!inserted)
            return false;
        *isNew = inserted.changed() > 0;
    }
    // The journal comes last: with it the run is complete, and the store counts it.
    return !*isNew
        || (insertPhases(connection, stored.run) && insertFailures(connection, stored.run)
            && insertKeys(connection, stored.run) && insertPorts(connection, stored.run)
            && connection.execute(QStringLiteral("INSERT INTO journal VALUES (?, ?)"),
                                  {idText(stored.run.id), stored.journal}));
}

QString selectRuns()
{
    return QStringLiteral(
        "SELECT id, session, position, unit, station, operator, kind, outcome, attempt, session_begin, device_begin, "
        "device_end, language, panelhost, component, configuration, rounds, failure_count, wrong_key_count, begin "
        "FROM numbered_run");
}

QVector<Run> readRuns(StoreRows &rows, RunKey *last)
{
    constexpr int BeginColumn = 19;
    QVector<Run> runs;
    while (rows.next()) {
        runs << readRun(rows);
        if (last)
            *last = {rows.value(BeginColumn).toString(), runs.last().position, rows.value(0).toString()};
    }
    return runs;
}

bool readDetails(StoreConnection &connection, QVector<Run> &runs)
{
    for (int first = 0; first < runs.size(); first += MaxIds) {
        QHash<QString, Run *> part;
        for (int index = first; index < qMin(first + MaxIds, runs.size()); ++index)
            part.insert(idText(runs.at(index).id), &runs[index]);
        for (const DetailTable &table : detailTables) {
            if (!readDetailsOf(connection, table, part))
                return false;
        }
    }
    return true;
}

}
