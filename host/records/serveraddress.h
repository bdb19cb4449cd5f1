#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>

#include <optional>

namespace panelhost {

/// The address of a PostgreSQL server with run records.
struct ServerAddress
{
    static constexpr int DefaultPort = 5432;
    /// How long connecting may take, and how long the network may be silent, in seconds.
    static constexpr int ConnectTimeout = 5;

    QString user; ///< empty: the name of the user who runs panelhost
    QString host; ///< a name, an address, or the directory of the server's socket
    int port = DefaultPort;
    QString database;
    QMap<QString, QString> options; ///< for the connection, such as "sslmode"
    QString localFile;              ///< where runs wait to be sent; empty: in the user's data directory
    QString password;               ///< empty: PGPASSWORD or ~/.pgpass, or none is needed
    int statementTimeout = 0;       ///< how long a statement may take, in milliseconds; 0: for ever

    /// Returns the address as it may be shown: without the password.
    QString displayName() const;
    /// Returns the options for Qt's driver.
    QString connectOptions() const;
};

/// Returns true if @p place is meant as the address of a server.
bool isServerAddress(const QString &place);

/// Reads an address such as postgresql://station@server:5432/line?sslmode=require. Returns nullopt and sets @p error to
/// what is wrong with it. The error never contains a password.
std::optional<ServerAddress> readServerAddress(const QString &place, QString *error);

/// Returns the first line of the file at @p path. Returns nullopt and sets @p error to a sentence if it can't be read,
/// is empty, or if other users may read it.
std::optional<QString> readPasswordFile(const QString &path, QString *error);

}
