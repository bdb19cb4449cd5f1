#include "records/storefile.h"

#include "records/recordstore.h"
#include "records/storeschema.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QUuid>
#include <QtCore/QtEndian>
#include <QtSql/QSqlError>
#include <QtSql/QSqlQuery>

#include <fcntl.h>
#include <unistd.h>

namespace panelhost {

namespace {

// The header of an SQLite file: https://www.sqlite.org/fileformat.html
constexpr int HeaderSize = 100;
constexpr int PageSizeOffset = 16;
constexpr int PageCountOffset = 28;
constexpr int VersionOffset = 60;
constexpr int ApplicationOffset = 68;
constexpr char Magic[16] = "SQLite format 3";

quint32 numberAt(const QByteArray &header, int offset)
{
    return qFromBigEndian<quint32>(header.constData() + offset);
}

qint64 pageSize(const QByteArray &header)
{
    const quint16 size = qFromBigEndian<quint16>(header.constData() + PageSizeOffset);
    return size == 1 ? 65536 : size;
}

// A rename lasts only when the directory has been written.
void syncDirectory(const QString &path)
{
    const int directory = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (directory < 0)
        return;
    ::fsync(directory);
    ::close(directory);
}

bool writeSchema(const QString &path, QString *error)
{
    const QString connection = QUuid::createUuid().toString();
    bool done = true;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        database.setDatabaseName(path);
        done = database.open();
        QSqlQuery query(database);
        const QStringList statements = QStringList{QStringLiteral("PRAGMA synchronous=FULL"), QStringLiteral("BEGIN")}
            + storeSchema() + QStringList{QStringLiteral("COMMIT"), QStringLiteral("PRAGMA journal_mode=WAL")};
        for (const QString &statement : statements)
            done = done && query.exec(statement);
        if (!done)
            *error = (query.lastError().isValid() ? query.lastError() : database.lastError()).text();
    }
    QSqlDatabase::removeDatabase(connection);
    return done;
}

}

QString storeFileProblem(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return QStringLiteral("%1 isn't a file.").arg(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1 can't be read: %2.").arg(path, file.errorString());
    const QByteArray header = file.read(HeaderSize);
    if (header.size() < HeaderSize || !header.startsWith(QByteArray(Magic, sizeof Magic)))
        return QStringLiteral("%1 is damaged, or no file of run records.").arg(path);
    if (numberAt(header, ApplicationOffset) != StoreApplicationId)
        return QStringLiteral("%1 is a database, but not one of run records.").arg(path);
    const quint32 version = numberAt(header, VersionOffset);
    if (version > RecordStore::SchemaVersion)
        return QStringLiteral("%1 is of version %2; this panelhost knows versions up to %3.")
            .arg(path)
            .arg(version)
            .arg(RecordStore::SchemaVersion);
    if (file.size() < pageSize(header) * numberAt(header, PageCountOffset))
        return QStringLiteral("%1 is damaged: its end is missing.").arg(path);
    return {};
}

bool createStoreFile(const QString &path, QString *error)
{
    const QString directory = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(directory)) {
        *error = QStringLiteral("The directory %1 can't be made.").arg(directory);
        return false;
    }
    const QString draft = path + QStringLiteral(".new-") + QUuid::createUuid().toString(QUuid::Id128);
    QString reason;
    bool done = writeSchema(draft, &reason);
    if (done) {
        done = QFile::rename(draft, path) || QFileInfo::exists(path);
        syncDirectory(directory);
    }
    for (const char *suffix : {"", "-journal", "-wal", "-shm"})
        QFile::remove(draft + QLatin1String(suffix));
    if (!done)
        *error = QStringLiteral("%1 can't be made: %2.")
                     .arg(path, reason.isEmpty() ? QStringLiteral("it can't be renamed") : reason);
    return done;
}

QString numberedPath(const QString &path, int number)
{
    const QFileInfo info(path);
    const QString suffix = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
    return info.dir().filePath(QStringLiteral("%1-%2%3").arg(info.completeBaseName()).arg(number).arg(suffix));
}

}
