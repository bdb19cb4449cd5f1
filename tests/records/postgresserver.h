#pragma once

#include "records/recordstore.h"
#include "records/statistics.h"

#include <QtCore/QMetaType>
#include <QtCore/QTemporaryDir>

#include <vector>

/// A PostgreSQL server of Debian's package in a temporary directory, with a socket there and no port. It has the
/// database "line" with the tables for runs, owned by "owner", and the role "station".
class PostgresServer
{
public:
    PostgresServer() = default;
    /// Stops the server.
    ~PostgresServer();
    PostgresServer(const PostgresServer &) = delete;
    PostgresServer &operator=(const PostgresServer &) = delete;

    /// Returns true if the programs of the server and Qt's driver are installed.
    static bool isInstalled();

    /// Creates the database. Returns false and sets errorString() on failure, as the others do.
    bool create();
    /// Does nothing if the server runs.
    bool start();
    /// Stops the server as a crash does: without telling its clients and without writing its caches.
    bool crash();
    /// Kills all processes of the server.
    bool kill();

    /// Executes @p sql as @p user.
    bool execute(const QString &sql, const QString &user = QStringLiteral("owner"));
    /// Returns the first column of the rows of @p query, as the owner sees them.
    QStringList values(const QString &query);
    /// Returns when the server reported errors that contain @p message, in seconds of its clock, oldest first.
    std::vector<double> errorTimes(const QByteArray &message) const;
    /// Adds a line to the server's list of who may connect, in front of the others.
    bool addAccessRule(const QByteArray &line);

    /// Returns the address, for --records. @p options begins with "&".
    QString address(const QString &user = QStringLiteral("station"), const QString &options = {}) const;
    panelhost::ServerAddress parsedAddress(const QString &user = QStringLiteral("station")) const;
    QString errorString() const { return m_error; }

private:
    bool run(const QString &program, const QStringList &arguments, const QByteArray &input = {});
    bool control(const QStringList &arguments);
    QString data() const { return m_directory.filePath(QStringLiteral("data")); }

    QTemporaryDir m_directory{QStringLiteral("/tmp/postgres-XXXXXX")}; ///< sockets need a short path
    bool m_isRunning = false;
    QString m_error;
};

// A query as the data of a test.
Q_DECLARE_METATYPE(panelhost::StatisticsQuery)
