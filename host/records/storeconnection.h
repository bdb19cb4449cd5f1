#pragma once

#include "records/serveraddress.h"
#include "records/storeschema.h"

#include <QtCore/QHash>
#include <QtCore/QVariant>
#include <QtSql/QSqlError>
#include <QtSql/QSqlQuery>

#include <memory>

struct pg_conn;

namespace panelhost {

/// The rows that a statement has returned. The statement can be executed again after the object's end.
class StoreRows
{
public:
    explicit StoreRows(QSqlQuery *query) : m_query(query) {}
    StoreRows(StoreRows &&other) noexcept : m_query(std::exchange(other.m_query, nullptr)) {}
    StoreRows &operator=(StoreRows &&) = delete;
    ~StoreRows();

    /// Returns false if the statement couldn't be executed.
    explicit operator bool() const { return m_query; }
    bool next() { return m_query->next(); }
    QVariant value(int column) const { return m_query->value(column); }
    /// Returns the number of rows that the statement has changed.
    int changed() const { return m_query->numRowsAffected(); }

private:
    QSqlQuery *m_query; ///< nullptr: the statement has failed
};

/// A connection to a store. Statements are prepared once and kept. Belongs to the thread that has opened it.
class StoreConnection
{
public:
    /// Opens the SQLite file at @p path, which must exist. Returns nullptr and sets @p error to a sentence on failure.
    static std::unique_ptr<StoreConnection> openFile(const QString &path, QString *error);
    /// Connects to a PostgreSQL server. Waits for at most ServerAddress::ConnectTimeout.
    static std::unique_ptr<StoreConnection> openServer(const ServerAddress &address, QString *error);
    ~StoreConnection();
    StoreConnection(const StoreConnection &) = delete;
    StoreConnection &operator=(const StoreConnection &) = delete;

    StoreKind kind() const { return m_kind; }
    /// Returns the path of the file, or the address of the server without its password.
    QString name() const { return m_name; }

    /// Sets up a file so that committed transactions survive a power failure and foreign keys are checked. A server
    /// does both by default.
    bool makeSafe();

    /// Executes @p statement with @p values in place of its question marks.
    StoreRows execute(const QString &statement, const QVariantList &values = {});
    /// Executes a statement that has no values and isn't used often, such as a pragma.
    bool executeOnce(const QString &statement);
    /// Begins a transaction. No other connection writes to the same file or database until its end.
    bool begin();
    bool commit() { return executeOnce(QStringLiteral("COMMIT")); }
    void rollback();

    /// Returns a sentence about the last statement that failed.
    QString errorText() const;
    /// Returns true if that error means that the file is damaged.
    bool isDamaged() const;

    /// Returns the descriptor of the connection to the server, -1 for a file.
    int socket() const;

private:
    StoreConnection(StoreKind kind, const QString &name);
    bool open(QSqlDatabase &database, QString *error);
    bool isLost(const QSqlDatabase &database);
    pg_conn *handle() const; ///< of the connection to a server

    const StoreKind m_kind;
    const QString m_name;
    const QString m_id; ///< of the connection in Qt's list
    QHash<QString, QSqlQuery> m_prepared;
    QSqlError m_error;
};

}
