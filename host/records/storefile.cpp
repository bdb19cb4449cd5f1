#include "records/storefile.h"

#include "records/storeschema.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QUuid>
#include <QtCore/QtEndian>
#include <QtSql/QSqlError>
#include <QtSql/QSqlQuery>

#include <fcntl.h>
#include <sys/file.h>
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

/// The directory of a store while the store is created. Only one process at a time can have it.
class LockedDirectory
{
public:
    // Some network file systems can't lock a directory.
    explicit LockedDirectory(const QString &path)
        : m_descriptor(::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
          m_isLocked(m_descriptor >= 0 && ::flock(m_descriptor, LOCK_EX) == 0)
    {
    }
    ~LockedDirectory()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Q_DISABLE_COPY(LockedDirectory)

    bool isLocked() const { return m_isLocked; }
    /// Makes a rename last.
    void sync() const
    {
        if (m_descriptor >= 0)
            ::fsync(m_descriptor);
    }

private:
    const int m_descriptor;
    const bool m_isLocked;
};

QString draftPrefix(const QString &path)
{
    return path + QStringLiteral(".new-");
}

// A process that was killed while it created the store has left them. With the directory locked, nobody writes to them.
void removeDrafts(const QString &path)
{
    QDir directory = QFileInfo(path).dir();
    const QString prefix = QFileInfo(draftPrefix(path)).fileName();
    const QStringList names = directory.entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : names) {
        if (name.startsWith(prefix))
            directory.remove(name);
    }
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
            + storeFileSchema() + QStringList{QStringLiteral("COMMIT"), QStringLiteral("PRAGMA journal_mode=WAL")};
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
    if (version > StoreSchemaVersion)
        return newerVersionProblem(path, static_cast<int>(version));
    // A process that was killed, or that is at work, may have pages of the end in the log.
    const bool hasLog = QFileInfo(path + QStringLiteral("-wal")).size() > 0;
    if (!hasLog && file.size() < pageSize(header) * numberAt(header, PageCountOffset))
        return QStringLiteral("%1 is damaged: the file is truncated.").arg(path);
    return {};
}

QString newerVersionProblem(const QString &name, int version)
{
    return QStringLiteral("%1 is of version %2; this panelhost knows versions up to %3.")
        .arg(name)
        .arg(version)
        .arg(StoreSchemaVersion);
}

bool createStoreFile(const QString &path, QString *error)
{
    const QString directory = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(directory)) {
        *error = QStringLiteral("The directory %1 can't be made.").arg(directory);
        return false;
    }
    const LockedDirectory locked(directory);
    if (QFileInfo::exists(path))
        return true;
    if (locked.isLocked())
        removeDrafts(path);
    const QString draft = draftPrefix(path) + QUuid::createUuid().toString(QUuid::Id128);
    QString reason;
    bool done = writeSchema(draft, &reason);
    if (done) {
        done = QFile::rename(draft, path) || QFileInfo::exists(path);
        locked.sync();
    }
    for (const char *suffix : {"", "-journal", "-wal", "-shm"})
        QFile::remove(draft + QLatin1String(suffix));
    if (!done)
        *error = QStringLiteral("%1 can't be made: %2.")
                     .arg(path, reason.isEmpty() ? QStringLiteral("it can't be renamed") : reason);
    return done;
}

bool moveStoreFile(const QString &from, const QString &to, QString *error)
{
    const int descriptor = ::open(QFile::encodeName(from).constData(), O_RDONLY | O_CLOEXEC);
    const bool isWritten = descriptor >= 0 && ::fsync(descriptor) == 0;
    if (descriptor >= 0)
        ::close(descriptor);
    const LockedDirectory directory(QFileInfo(to).absolutePath());
    if (isWritten && QFile::rename(from, to)) {
        directory.sync();
        return true;
    }
    *error = QStringLiteral("%1 can't be renamed to %2.").arg(from, to);
    return false;
}

QString numberedPath(const QString &path, int number)
{
    const QFileInfo info(path);
    const QString suffix = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
    return info.dir().filePath(QStringLiteral("%1-%2%3").arg(info.completeBaseName()).arg(number).arg(suffix));
}

}
