#include "records/storeconnection.h"

#include <QtCore/QLibrary>
#include <QtCore/QUuid>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlDriver>

#include <libpq-fe.h>

namespace panelhost {

namespace {

constexpr int BusyTimeout = 5000; // milliseconds: another panelhost may be saving

// Result codes of SQLite: https://www.sqlite.org/rescode.html
constexpr int CorruptCode = 11;
constexpr int NotADatabaseCode = 26;

/// The functions of libpq that Qt's driver for PostgreSQL doesn't offer. The driver has loaded the library. panelhost
/// isn't linked with it, because it needs twenty others, which take longer to load than all libraries of Qt.
struct Libpq
{
    Libpq()
    {
        QLibrary library(QStringLiteral("pq"), 5);
        setNoticeProcessor = reinterpret_cast<decltype(&PQsetNoticeProcessor)>(library.resolve("PQsetNoticeProcessor"));
        socket = reinterpret_cast<decltype(&PQsocket)>(library.resolve("PQsocket"));
    }

    decltype(&PQsetNoticeProcessor) setNoticeProcessor;
    decltype(&PQsocket) socket;
};

const Libpq &libpq()
{
    static const Libpq functions;
    return functions;
}

// Errors of the server have several lines, some with "ERROR:" in front.
QString oneLine(const QSqlError &error)
{
    QString text = (error.databaseText().isEmpty() ? error.driverText() : error.databaseText()).simplified();
    for (const char *prefix : {"ERROR: ", "FATAL: "}) {
        if (text.startsWith(QLatin1String(prefix)))
            text.remove(0, static_cast<int>(qstrlen(prefix)));
    }
    while (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text;
}

}

StoreRows::~StoreRows()
{
    if (m_query)
        m_query->finish();
}

StoreConnection::StoreConnection(StoreKind kind, const QString &name)
    : m_kind(kind), m_name(name), m_id(QUuid::createUuid().toString())
{
}

// Qt's driver for PostgreSQL would free the statements one by one, and complain if the connection is lost. They end
// with the connection.
StoreConnection::~StoreConnection()
{
    if (m_kind == StoreKind::File)
        m_prepared.clear();
    QSqlDatabase::removeDatabase(m_id);
}

// Qt would complain about the use of a connection that is lost.
bool StoreConnection::isLost(const QSqlDatabase &database)
{
    if (database.isOpen())
        return false;
    m_error = QSqlError({}, QStringLiteral("The connection was lost"), QSqlError::ConnectionError);
    return true;
}

bool StoreConnection::open(QSqlDatabase &database, QString *error)
{
    if (database.open())
        return true;
    m_error = database.lastError();
    *error = errorText();
    return false;
}

std::unique_ptr<StoreConnection> StoreConnection::openFile(const QString &path, QString *error)
{
    std::unique_ptr<StoreConnection> connection(new StoreConnection(StoreKind::File, path));
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection->m_id);
    database.setDatabaseName(path);
    database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(BusyTimeout));
    return connection->open(database, error) ? std::move(connection) : nullptr;
}

bool StoreConnection::makeSafe()
{
    return m_kind == StoreKind::Server
        || (executeOnce(QStringLiteral("PRAGMA synchronous=FULL"))
            && executeOnce(QStringLiteral("PRAGMA foreign_keys=ON")));
}

std::unique_ptr<StoreConnection> StoreConnection::openServer(const ServerAddress &address, QString *error)
{
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL"))) {
        *error = QStringLiteral("%1: Qt has no driver for PostgreSQL; on Debian it is in the package libqt5sql5-psql.")
                     .arg(address.displayName());
        return nullptr;
    }
    std::unique_ptr<StoreConnection> connection(new StoreConnection(StoreKind::Server, address.displayName()));
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), connection->m_id);
    database.setHostName(address.host);
    database.setPort(address.port);
    database.setDatabaseName(address.database);
    database.setUserName(address.user);
    database.setPassword(address.password);
    database.setConnectOptions(address.connectOptions());
    if (!connection->open(database, error))
        return nullptr;
    // Errors are returned; remarks of the server don't belong on the standard error output.
    libpq().setNoticeProcessor(
        connection->handle(), [](void *, const char *) {}, nullptr);
    return connection;
}

// The rows of a file come one by one; those of a server are read at once, because it takes one statement at a time.
StoreRows StoreConnection::execute(const QString &statement, const QVariantList &values)
{
    const QSqlDatabase database = QSqlDatabase::database(m_id, false);
    if (isLost(database))
        return StoreRows(nullptr);
    auto found = m_prepared.find(statement);
    if (found == m_prepared.end()) {
        QSqlQuery query(database);
        query.setForwardOnly(m_kind == StoreKind::File);
        if (!query.prepare(statement)) {
            m_error = query.lastError();
            return StoreRows(nullptr);
        }
        found = m_prepared.insert(statement, query);
    }
    for (int index = 0; index < values.size(); ++index)
        found->bindValue(index, values.at(index));
    if (found->exec())
        return StoreRows(&*found);
    m_error = found->lastError();
    return StoreRows(nullptr);
}

bool StoreConnection::executeOnce(const QString &statement)
{
    const QSqlDatabase database = QSqlDatabase::database(m_id, false);
    if (isLost(database))
        return false;
    QSqlQuery query(database);
    if (query.exec(statement))
        return true;
    m_error = query.lastError();
    return false;
}

// Stations that save runs update the same counts. On a server they would wait for each other's rows in changing order,
// which ends in deadlocks, so one lock is taken first. It is released at the end of the transaction.
bool StoreConnection::begin()
{
    if (m_kind == StoreKind::File)
        return executeOnce(QStringLiteral("BEGIN IMMEDIATE"));
    return executeOnce(QStringLiteral("BEGIN"))
        && executeOnce(QStringLiteral("SELECT pg_advisory_xact_lock(hashtext('panelhost runs'))"));
}

// Keeps the error that led to it.
void StoreConnection::rollback()
{
    const QSqlDatabase database = QSqlDatabase::database(m_id, false);
    if (database.isOpen())
        QSqlQuery(database).exec(QStringLiteral("ROLLBACK"));
}

QString StoreConnection::errorText() const
{
    return QStringLiteral("%1: %2.").arg(m_name, oneLine(m_error));
}

bool StoreConnection::isDamaged() const
{
    const int code = m_error.nativeErrorCode().toInt() & 0xff;
    return m_kind == StoreKind::File && (code == CorruptCode || code == NotADatabaseCode);
}

pg_conn *StoreConnection::handle() const
{
    const QVariant handle = QSqlDatabase::database(m_id, false).driver()->handle();
    return qstrcmp(handle.typeName(), "PGconn*") == 0 ? *static_cast<PGconn *const *>(handle.constData()) : nullptr;
}

int StoreConnection::socket() const
{
    return m_kind == StoreKind::Server ? libpq().socket(handle()) : -1;
}

}
