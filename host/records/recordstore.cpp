#include "records/recordstore.h"

#include "records/storefile.h"

#include <QtCore/QFileInfo>
#include <QtCore/QVariant>
#include <QtSql/QSqlError>
#include <QtSql/QSqlQuery>

namespace panelhost {

namespace {

constexpr int BusyTimeout = 5000; // milliseconds: another panelhost may be saving

// Result codes of SQLite: https://www.sqlite.org/rescode.html
constexpr int CorruptCode = 11;
constexpr int NotADatabaseCode = 26;

QVariant textOrNull(const QString &text)
{
    return text.isEmpty() ? QVariant(QVariant::String) : QVariant(text);
}

QString idText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces);
}

QString timeText(const QDateTime &time)
{
    return time.toUTC().toString(Qt::ISODateWithMs);
}

/// Statements of one store. Keeps the first error.
class Statements
{
public:
    Statements(const QString &connection, const QString &path)
        : m_database(QSqlDatabase::database(connection, false)), m_path(path)
    {
    }

    bool run(const QString &text, const QVariantList &values = {})
    {
        m_query = QSqlQuery(m_database);
        m_query.setForwardOnly(true);
        bool done = m_query.prepare(text);
        for (const QVariant &value : values)
            m_query.addBindValue(value);
        done = done && m_query.exec();
        if (!done && !m_error.isValid())
            m_error = m_query.lastError();
        return done;
    }

    QSqlQuery &query() { return m_query; }
    bool next() { return m_query.next(); }
    QVariant value(int column) const { return m_query.value(column); }

    /// One sentence.
    QString errorText() const { return QStringLiteral("%1: %2.").arg(m_path, m_error.databaseText()); }
    RecordStore::Problem problem() const
    {
        const int code = m_error.nativeErrorCode().toInt() & 0xff;
        return code == CorruptCode || code == NotADatabaseCode ? RecordStore::Problem::Unusable
                                                               : RecordStore::Problem::Failed;
    }
    bool failed(QString *error, RecordStore::Problem *problemOut = nullptr) const
    {
        *error = errorText();
        if (problemOut)
            *problemOut = problem();
        return false;
    }

private:
    QSqlDatabase m_database;
    QString m_path;
    QSqlQuery m_query;
    QSqlError m_error;
};

const QString insertRun = QStringLiteral(
    "INSERT INTO run (id, session, position, unit, station, operator, kind, outcome, attempt, session_begin, begin, "
    "\"end\", device_begin, device_end, language, panelhost, component, configuration, rounds, failure_count, "
    "wrong_key_count) VALUES (?, ?, ?, ?, ?, ?, ?, ?, "
    "CASE WHEN ? IS NULL THEN NULL ELSE (SELECT coalesce(max(attempt), 0) + 1 FROM run WHERE unit = ? AND kind = ?) "
    "END, "
    "?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT (id) DO NOTHING");

const QString selectRuns = QStringLiteral(
    "SELECT id, session, position, unit, station, operator, kind, outcome, attempt, session_begin, device_begin, "
    "device_end, language, panelhost, component, configuration, rounds, failure_count, wrong_key_count FROM run");

QVariantList valuesOf(const Run &run)
{
    const SessionInfo &session = run.session;
    const QVariant unit = textOrNull(session.unit);
    return {idText(run.id),
            idText(session.id),
            run.position,
            unit,
            textOrNull(session.station),
            textOrNull(session.operatorName),
            toText(run.kind),
            toText(run.outcome),
            unit,
            unit,
            toText(run.kind),
            timeText(session.begin),
            timeText(run.beginUtc()),
            timeText(run.endUtc()),
            run.begin,
            run.end,
            textOrNull(session.language),
            textOrNull(session.panelhostVersion),
            textOrNull(session.componentVersion),
            textOrNull(session.configuration),
            run.rounds,
            run.failureCount,
            run.wrongKeyCount};
}

bool insertPhases(Statements &statements, const Run &run)
{
    int position = 0;
    for (const RunPhase &phase : run.phases) {
        if (!statements.run(QStringLiteral("INSERT INTO phase VALUES (?, ?, ?, ?, ?, ?, ?)"),
                            {idText(run.id), ++position, phase.name, toText(phase.outcome), phase.begin, phase.duration,
                             textOrNull(toText(phase.source))}))
            return false;
    }
    return true;
}

bool insertFailures(Statements &statements, const Run &run)
{
    int position = 0;
    for (const AgingFailure &failure : run.failures) {
        if (!statements.run(QStringLiteral("INSERT INTO failure VALUES (?, ?, ?, ?)"),
                            {idText(run.id), ++position, failure.at, failure.ports.join(QLatin1Char(' '))}))
            return false;
    }
    return true;
}

bool insertKeys(Statements &statements, const Run &run)
{
    int position = 0;
    const auto insert = [&](const QVector<int> &keys, const char *what) {
        for (const int key : keys) {
            if (!statements.run(QStringLiteral("INSERT INTO keypress VALUES (?, ?, ?, ?)"),
                                {idText(run.id), ++position, QString::fromLatin1(what), key}))
                return false;
        }
        return true;
    };
    return insert(run.wrongKeys, "wrong") && insert(run.skippedKeys, "skipped");
}

bool insertPorts(Statements &statements, const Run &run)
{
    for (auto port = run.ports.begin(); port != run.ports.end(); ++port) {
        if (!statements.run(QStringLiteral("INSERT INTO port VALUES (?, ?, ?)"),
                            {idText(run.id), port.key(), port.value()}))
            return false;
    }
    return true;
}

Run readRun(const QSqlQuery &row)
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

bool readPhases(Statements &statements, Run &run)
{
    if (!statements.run(
            QStringLiteral("SELECT name, outcome, begin, duration, source FROM phase WHERE run = ? ORDER BY position"),
            {idText(run.id)}))
        return false;
    while (statements.next()) {
        run.phases.append({statements.value(0).toString(),
                           runOutcomeFromText(statements.value(1).toString()).value_or(RunOutcome::Aborted),
                           statements.value(2).toLongLong(), statements.value(3).toLongLong(),
                           verdictSourceFromText(statements.value(4).toString()).value_or(VerdictSource::None)});
    }
    return true;
}

bool readFailures(Statements &statements, Run &run)
{
    if (!statements.run(QStringLiteral("SELECT at, ports FROM failure WHERE run = ? ORDER BY position"),
                        {idText(run.id)}))
        return false;
    while (statements.next())
        run.failures.append({statements.value(0).toLongLong(), statements.value(1).toString().split(QLatin1Char(' '))});
    return true;
}

bool readKeysAndPorts(Statements &statements, Run &run)
{
    if (!statements.run(QStringLiteral("SELECT what, hal_key FROM keypress WHERE run = ? ORDER BY position"),
                        {idText(run.id)}))
        return false;
    while (statements.next()) {
        const bool isWrong = statements.value(0).toString() == QLatin1String("wrong");
        (isWrong ? run.wrongKeys : run.skippedKeys).append(statements.value(1).toInt());
    }
    if (!statements.run(QStringLiteral("SELECT name, state FROM port WHERE run = ?"), {idText(run.id)}))
        return false;
    while (statements.next())
        run.ports.insert(statements.value(0).toString(), statements.value(1).toString());
    return true;
}

bool readDetails(Statements &statements, Run &run)
{
    return readPhases(statements, run) && readFailures(statements, run) && readKeysAndPorts(statements, run);
}

}

RecordStore::RecordStore(const QString &path, const QString &connection) : m_path(path), m_connection(connection)
{
}

RecordStore::~RecordStore()
{
    QSqlDatabase::removeDatabase(m_connection);
}

std::unique_ptr<RecordStore> RecordStore::open(const QString &path, QString *error, Problem *problem)
{
    if (!QFileInfo::exists(path) && !createStoreFile(path, error)) {
        if (problem)
            *problem = Problem::Failed;
        return nullptr;
    }
    return openExisting(path, error, problem);
}

std::unique_ptr<RecordStore> RecordStore::openExisting(const QString &path, QString *error, Problem *problem)
{
    if (problem)
        *problem = Problem::Unusable;
    *error =
        QFileInfo::exists(path) ? storeFileProblem(path) : QStringLiteral("There are no run records at %1.").arg(path);
    if (!error->isEmpty())
        return nullptr;
    std::unique_ptr<RecordStore> store(new RecordStore(path, QUuid::createUuid().toString()));
    return store->connect(error, problem) ? std::move(store) : nullptr;
}

bool RecordStore::connect(QString *error, Problem *problem)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    database.setDatabaseName(m_path);
    database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(BusyTimeout));
    if (!database.open()) {
        *error = QStringLiteral("%1: %2.").arg(m_path, database.lastError().databaseText());
        if (problem)
            *problem = Problem::Failed;
        return false;
    }
    Statements statements(m_connection, m_path);
    const bool done = statements.run(QStringLiteral("PRAGMA synchronous=FULL"))
        && statements.run(QStringLiteral("PRAGMA foreign_keys=ON"))
        && statements.run(selectRuns + QStringLiteral(" LIMIT 1"));
    if (problem)
        *problem = Problem::None;
    return done || statements.failed(error, problem);
}

// The transaction begins as a writer, so that no other process counts the same attempt.
bool RecordStore::save(const Run &run, const QByteArray &journal, QString *error, Problem *problem)
{
    Statements statements(m_connection, m_path);
    if (!statements.run(QStringLiteral("BEGIN IMMEDIATE")))
        return statements.failed(error, problem);
    if (insert(run, journal, error, problem)) {
        if (statements.run(QStringLiteral("COMMIT")))
            return true;
        statements.failed(error, problem);
    }
    Statements(m_connection, m_path).run(QStringLiteral("ROLLBACK"));
    return false;
}

bool RecordStore::insert(const Run &run, const QByteArray &journal, QString *error, Problem *problem)
{
    Statements statements(m_connection, m_path);
    if (!statements.run(insertRun, valuesOf(run)))
        return statements.failed(error, problem);
    if (statements.query().numRowsAffected() == 0)
        return true;
    const bool done = insertPhases(statements, run) && insertFailures(statements, run) && insertKeys(statements, run)
        && insertPorts(statements, run)
        && statements.run(QStringLiteral("INSERT INTO journal VALUES (?, ?)"), {idText(run.id), qCompress(journal)});
    return done || statements.failed(error, problem);
}

bool RecordStore::read(const RunFilter &filter, const std::function<void(const Run &)> &listener, QString *error) const
{
    QStringList conditions;
    QVariantList values;
    const auto add = [&](const char *condition, const QString &value) {
        conditions << QString::fromLatin1(condition);
        values << value;
    };
    if (!filter.unit.isEmpty())
        add("unit = ?", filter.unit);
    if (filter.since.isValid())
        add("begin >= ?", timeText(filter.since));
    if (filter.outcome)
        add("outcome = ?", toText(*filter.outcome));
    const QString where =
        conditions.isEmpty() ? QString() : QStringLiteral(" WHERE ") + conditions.join(QStringLiteral(" AND "));
    Statements rows(m_connection, m_path);
    if (!rows.run(selectRuns + where + QStringLiteral(" ORDER BY begin, position"), values))
        return rows.failed(error);
    Statements details(m_connection, m_path);
    while (rows.next()) {
        Run run = readRun(rows.query());
        if (!readDetails(details, run))
            return details.failed(error);
        listener(run);
    }
    return true;
}

std::optional<Run> RecordStore::run(const QUuid &id, QString *error) const
{
    Statements statements(m_connection, m_path);
    error->clear();
    if (!statements.run(selectRuns + QStringLiteral(" WHERE id = ?"), {idText(id)})) {
        statements.failed(error);
        return std::nullopt;
    }
    if (!statements.next())
        return std::nullopt;
    Run run = readRun(statements.query());
    if (readDetails(statements, run))
        return run;
    statements.failed(error);
    return std::nullopt;
}

QByteArray RecordStore::journal(const QUuid &id, QString *error) const
{
    Statements statements(m_connection, m_path);
    error->clear();
    if (!statements.run(QStringLiteral("SELECT lines FROM journal WHERE run = ?"), {idText(id)})) {
        statements.failed(error);
        return {};
    }
    return statements.next() ? qUncompress(statements.value(0).toByteArray()) : QByteArray();
}

}
