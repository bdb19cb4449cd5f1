#include "records/sessioninfo.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

namespace panelhost {

namespace {

struct TextField
{
    const char *key;
    QString SessionInfo::*member;
};

constexpr TextField textFields[] = {
    {"unit", &SessionInfo::unit},
    {"station", &SessionInfo::station},
    {"operator", &SessionInfo::operatorName},
    {"language", &SessionInfo::language},
    {"panelhost", &SessionInfo::panelhostVersion},
    {"component", &SessionInfo::componentVersion},
    {"configuration", &SessionInfo::configuration},
};

QString configurationHash(const QString &share)
{
    const QString directory =
        share.isEmpty() ? QCoreApplication::applicationDirPath() + QStringLiteral("/../share") : share;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const char *name : {"factorymenu.xml", "factorykeychecklist.xml"}) {
        QFile file(QDir(directory).filePath(QString::fromLatin1(name)));
        if (file.open(QIODevice::ReadOnly))
            hash.addData(&file);
    }
    return QString::fromLatin1(hash.result().toHex());
}

}

QByteArray SessionInfo::toJsonLine() const
{
    QJsonObject session{{QStringLiteral("id"), id.toString(QUuid::WithoutBraces)},
                        {QStringLiteral("begin"), begin.toUTC().toString(Qt::ISODateWithMs)}};
    for (const TextField &field : textFields) {
        if (!(this->*field.member).isEmpty())
            session.insert(QString::fromLatin1(field.key), this->*field.member);
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("session"), session}}).toJson(QJsonDocument::Compact);
}

std::optional<SessionInfo> SessionInfo::fromJson(const QJsonObject &line, QString *error)
{
    const QJsonObject session = line.value(QStringLiteral("session")).toObject();
    SessionInfo info;
    info.id = QUuid::fromString(session.value(QStringLiteral("id")).toString());
    info.begin = QDateTime::fromString(session.value(QStringLiteral("begin")).toString(), Qt::ISODateWithMs).toUTC();
    if (info.id.isNull())
        *error = QStringLiteral("expected a UUID as the \"id\" of the session");
    else if (!info.begin.isValid())
        *error = QStringLiteral("expected a time such as 2026-01-31T08:00:00.000Z as the \"begin\" of the session");
    if (info.id.isNull() || !info.begin.isValid())
        return std::nullopt;
    for (const TextField &field : textFields) {
        const QJsonValue value = session.value(QLatin1String(field.key));
        if (!value.isUndefined() && !value.isString()) {
            *error = QStringLiteral("expected a text as \"%1\" of the session").arg(QLatin1String(field.key));
            return std::nullopt;
        }
        info.*field.member = value.toString();
    }
    return info;
}

SessionInfo newSessionInfo(const QString &unit, const QString &station, const QString &operatorName,
                           const QString &language, const QString &share)
{
    SessionInfo info;
    info.id = QUuid::createUuid();
    info.begin = QDateTime::currentDateTimeUtc();
    info.unit = unit;
    info.station = station;
    info.operatorName = operatorName;
    info.language = language;
    info.panelhostVersion = QCoreApplication::applicationVersion();
    info.configuration = configurationHash(share);
    return info;
}

}
