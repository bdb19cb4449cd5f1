#include "records/recordstore.h"

#include "records/storefile.h"

#include <QtCore/QFileInfo>

namespace panelhost {

namespace {

constexpr int PageSize = 100; // runs that are read at once
constexpr int UpgradeCache =
    256 * 1024; // KiB: an upgrade visits the runs of a large file in another order than the file's

/// The WHERE clause of a statement with its values.
struct SqlCondition
{
    QString text; ///< begins with WHERE; empty: none
    QVariantList values;

    void add(const char *condition, const QVariantList &added)
    {
        text += (text.isEmpty() ? QStringLiteral(" WHERE ") : QStringLiteral(" AND ")) + QLatin1String(condition);
        values += added;
    }
};

SqlCondition conditionOf(const RunFilter &filter)
{
    SqlCondition condition;
    if (!filter.unit.isEmpty())
        condition.add("unit = ?", {filter.unit});
    if (filter.since.isValid())
        condition.add("begin >= ?", {timeText(filter.since)});
    if (filter.before.isValid())
        condition.add("begin < ?", {timeText(filter.before)});
    if (filter.outcome)
        condition.add("outcome = ?", {toText(*filter.outcome)});
    return condition;
}

/// Returns whether SQLite finds no damage in the file. Reads the whole file.
bool isSound(StoreConnection &connection)
{
    StoreRows rows = connection.execute(QStringLiteral("PRAGMA quick_check(1)"));
    return rows && rows.next() && rows.value(0).toString() == QLatin1String("ok");
}

void setProblem(RecordStore::Problem *out, RecordStore::Problem problem)
{
    if (out)
        *out = problem;
}

}

RecordStore::RecordStore(std::unique_ptr<StoreConnection> connection) : m_connection(std::move(connection))
{
}

bool RecordStore::failed(QString *error, Problem *problem) const
{
    *error = m_connection->errorText();
    setProblem(problem, m_connection->isDamaged() ? Problem::Unusable : Problem::Temporary);
    return false;
}

std::unique_ptr<RecordStore> RecordStore::open(const QString &path, QString *error, Problem *problem)
{
    if (!QFileInfo::exists(path) && !createStoreFile(path, error)) {
        setProblem(problem, Problem::Temporary);
        return nullptr;
    }
    return openExisting(path, error, problem);
}

std::unique_ptr<RecordStore> RecordStore::openExisting(const QString &path, QString *error, Problem *problem)
{
    setProblem(problem, Problem::Unusable);
    *error =
        QFileInfo::exists(path) ? storeFileProblem(path) : QStringLiteral("There are no run records at %1.").arg(path);
    if (!error->isEmpty())
        return nullptr;
    setProblem(problem, Problem::Temporary);
    auto connection = StoreConnection::openFile(path, error);
    if (!connection)
        return nullptr;
    std::unique_ptr<RecordStore> store(new RecordStore(std::move(connection)));
    if (!store->m_connection->makeSafe()) {
        store->failed(error, problem);
        return nullptr;
    }
    if (!store->upgrade(error, problem))
        return nullptr;
    if (!store->m_connection->execute(selectRuns() + QStringLiteral(" LIMIT 1"))) {
        store->failed(error, problem);
        return nullptr;
    }
    setProblem(problem, Problem::None);
    return store;
}

std::unique_ptr<RecordStore> RecordStore::openServer(const ServerAddress &address, QString *error)
{
    auto connection = StoreConnection::openServer(address, error);
    if (!connection)
        return nullptr;
    std::unique_ptr<RecordStore> store(new RecordStore(std::move(connection)));
    return store->checkServer(error) ? std::move(store) : nullptr;
}

// The version is read again in the transaction, because another process may be upgrading the file.
bool RecordStore::upgrade(QString *error, Problem *problem)
{
    const auto version = [this] {
        StoreRows rows = m_connection->execute(QStringLiteral("PRAGMA user_version"));
        return rows && rows.next() ? rows.value(0).toInt() : -1;
    };
    const int found = version();
    if (found == SchemaVersion)
        return true;
    if (found > SchemaVersion) {
        *error = newerVersionProblem(path(), found);
        setProblem(problem, Problem::Unusable);
        return false;
    }
    if (found > 0 && !isSound(*m_connection)) {
        *error = QStringLiteral("%1: database disk image is malformed.").arg(path());
        setProblem(problem, Problem::Unusable);
        return false;
    }
    if (found < 0 || !m_connection->executeOnce(QStringLiteral("PRAGMA cache_size=-%1").arg(UpgradeCache))
        || !m_connection->begin())
        return failed(error, problem);
    const QStringList statements = storeMigration(StoreKind::File, version())
        + QStringList{QStringLiteral("PRAGMA user_version=%1").arg(SchemaVersion), QStringLiteral("COMMIT")};
    for (const QString &statement : statements) {
        if (!m_connection->executeOnce(statement)) {
            failed(error, problem);
            m_connection->rollback();
            return false;
        }
    }
    return true;
}

bool RecordStore::checkServer(QString *error)
{
    StoreRows rows = m_connection->execute(QStringLiteral("SELECT version FROM schema_version"));
    if (!rows)
        return failed(error);
    const int version = rows.next() ? rows.value(0).toInt() : 0;
    if (version > SchemaVersion)
        *error = newerVersionProblem(path(), version);
    else if (version < SchemaVersion)
        *error = QStringLiteral("%1 is of version %2; its owner upgrades it with \"panelhost schema --from %2\".")
                     .arg(path())
                     .arg(version);
    return version == SchemaVersion;
}

bool RecordStore::save(const Run &run, const QByteArray &journal, QString *error, Problem *problem)
{
    return saveAll({{run, qCompress(journal)}}, Forwarding::None, error, problem);
}

bool RecordStore::saveAll(const QVector<StoredRun> &runs, Forwarding forwarding, QString *error, Problem *problem)
{
    if (!m_connection->begin())
        return failed(error, problem);
    if (insertAll(runs, forwarding) && m_connection->commit())
        return true;
    failed(error, problem);
    m_connection->rollback();
    return false;
}

bool RecordStore::insertAll(const QVector<StoredRun> &runs, Forwarding forwarding)
{
    for (const StoredRun &stored : runs) {
        bool isNew = false;
        if (!insertRun(*m_connection, stored, &isNew))
            return false;
        if (isNew && forwarding == Forwarding::Pending
            && !m_connection->execute(QStringLiteral("INSERT INTO pending (run) VALUES (?)"), {idText(stored.run.id)}))
            return false;
    }
    return true;
}

// In pages, each after the last run of the one before, so that a million runs need the memory of a page.
bool RecordStore::read(const RunFilter &filter, const std::function<void(const Run &)> &listener, QString *error)
{
    const SqlCondition condition = conditionOf(filter);
    SqlCondition next = condition;
    next.add("(begin, position, id) > (?, ?, ?)", {});
    const QString order = QStringLiteral(" ORDER BY begin, position, id LIMIT %1").arg(PageSize);
    RunKey last;
    bool isFirst = true;
    for (;;) {
        const QVariantList values =
            isFirst ? condition.values : condition.values + QVariantList{last.begin, last.position, last.id};
        QVector<Run> runs;
        {
            StoreRows rows =
                m_connection->execute(selectRuns() + (isFirst ? condition.text : next.text) + order, values);
            if (!rows)
                return failed(error);
            runs = readRuns(rows, &last);
        }
        if (!readDetails(*m_connection, runs))
            return failed(error);
        for (const Run &run : qAsConst(runs))
            listener(run);
        if (runs.size() < PageSize)
            return true;
        isFirst = false;
    }
}

std::optional<Run> RecordStore::run(const QUuid &id, QString *error)
{
    error->clear();
    QVector<Run> runs;
    {
        StoreRows rows = m_connection->execute(selectRuns() + QStringLiteral(" WHERE id = ?"), {idText(id)});
        if (!rows) {
            failed(error);
            return std::nullopt;
        }
        runs = readRuns(rows);
    }
    if (runs.isEmpty())
        return std::nullopt;
    if (readDetails(*m_connection, runs))
        return runs.first();
    failed(error);
    return std::nullopt;
}

std::optional<QByteArray> RecordStore::compressedJournal(const QUuid &id, QString *error)
{
    error->clear();
    StoreRows rows = m_connection->execute(QStringLiteral("SELECT lines FROM journal WHERE run = ?"), {idText(id)});
    if (rows)
        return rows.next() ? rows.value(0).toByteArray() : QByteArray();
    failed(error);
    return std::nullopt;
}

QByteArray RecordStore::journal(const QUuid &id, QString *error)
{
    const QByteArray lines = compressedJournal(id, error).value_or(QByteArray());
    return lines.isEmpty() ? QByteArray() : qUncompress(lines);
}

qint64 RecordStore::count(const RunFilter &filter, QString *error)
{
    const SqlCondition condition = conditionOf(filter);
    StoreRows rows =
        m_connection->execute(QStringLiteral("SELECT count(*) FROM run") + condition.text, condition.values);
    if (rows && rows.next())
        return rows.value(0).toLongLong();
    failed(error);
    return -1;
}

QDateTime RecordStore::latestSessionBegin()
{
    StoreRows rows = m_connection->execute(QStringLiteral("SELECT session_begin FROM run ORDER BY begin DESC LIMIT 1"));
    return rows && rows.next() ? QDateTime::fromString(rows.value(0).toString(), Qt::ISODateWithMs) : QDateTime();
}

std::optional<QVector<StoredRun>> RecordStore::storedRuns(const QVector<QUuid> &ids, QString *error)
{
    QVector<StoredRun> runs;
    for (const QUuid &id : ids) {
        const auto found = run(id, error);
        const auto lines = found ? compressedJournal(id, error) : std::nullopt;
        if (!found && error->isEmpty())
            *error = QStringLiteral("%1: The run %2 was deleted meanwhile.").arg(path(), idText(id));
        if (!lines)
            return std::nullopt;
        runs.append({*found, *lines});
    }
    return runs;
}

std::optional<QVector<QUuid>> RecordStore::sentIds(const RunFilter &filter, QString *error)
{
    SqlCondition condition = conditionOf(filter);
    if (m_connection->kind() == StoreKind::File)
        condition.add("id NOT IN (SELECT run FROM pending)", {});
    StoreRows rows = m_connection->execute(
        QStringLiteral("SELECT id FROM run") + condition.text + QStringLiteral(" ORDER BY begin"), condition.values);
    if (!rows) {
        failed(error);
        return std::nullopt;
    }
    QVector<QUuid> ids;
    while (rows.next())
        ids << QUuid::fromString(rows.value(0).toString());
    return ids;
}

bool RecordStore::remove(const QVector<QUuid> &ids, const std::function<bool(QString *error)> &beforeCommit,
                         QString *error)
{
    bool done = m_connection->begin();
    for (const QUuid &id : ids)
        done = done && m_connection->execute(QStringLiteral("DELETE FROM run WHERE id = ?"), {idText(id)});
    for (const QString &statement : storeRecount(m_connection->kind()))
        done = done && m_connection->executeOnce(statement);
    const bool isWanted = !done || beforeCommit(error);
    if (done && isWanted && m_connection->commit())
        return true;
    if (isWanted)
        failed(error);
    m_connection->rollback();
    return false;
}

std::optional<QVector<StoredRun>> RecordStore::pending(int count, QString *error)
{
    QVector<QUuid> ids;
    {
        StoreRows rows =
            m_connection->execute(QStringLiteral("SELECT run FROM pending ORDER BY number LIMIT ?"), {count});
        if (!rows) {
            failed(error);
            return std::nullopt;
        }
        while (rows.next())
            ids << QUuid::fromString(rows.value(0).toString());
    }
    return storedRuns(ids, error);
}

bool RecordStore::removePending(const QVector<StoredRun> &runs, QString *error)
{
    bool done = m_connection->begin();
    for (const StoredRun &stored : runs)
        done =
            done && m_connection->execute(QStringLiteral("DELETE FROM pending WHERE run = ?"), {idText(stored.run.id)});
    if (done && m_connection->commit())
        return true;
    failed(error);
    m_connection->rollback();
    return false;
}

int RecordStore::pendingCount(QString *error)
{
    StoreRows rows = m_connection->execute(QStringLiteral("SELECT count(*) FROM pending"));
    if (rows && rows.next())
        return rows.value(0).toInt();
    failed(error);
    return -1;
}

}
