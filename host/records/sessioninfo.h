#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QUuid>

#include <optional>

namespace panelhost {

/// Which unit is tested, by whom and with which software. If it is known, it is the first line of the session's
/// journal. All texts may be empty.
struct SessionInfo
{
    QUuid id;
    QDateTime begin; ///< UTC
    QString unit;    ///< serial number
    QString station;
    QString operatorName;
    QString language;
    QString panelhostVersion;
    QString componentVersion;
    QString configuration; ///< SHA-256 of the two configuration files, hexadecimal

    bool isNull() const { return id.isNull(); }
    /// Returns the line of the journal, without line end.
    QByteArray toJsonLine() const;
    /// Reads the object of such a line. Returns nullopt, with what was expected in @p error, if it isn't one.
    static std::optional<SessionInfo> fromJson(const QJsonObject &line, QString *error);
};

/// Returns the information on a session that begins now, with a new id, the version of panelhost and the hash of the
/// configuration files in @p share.
SessionInfo newSessionInfo(const QString &unit, const QString &station, const QString &operatorName,
                           const QString &language, const QString &share);

}
