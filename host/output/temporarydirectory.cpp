#include "output/temporarydirectory.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace panelhost {

namespace {

const char *const LockName = "lock";

QString nameTemplate(const QString &rest)
{
    return QDir(QDir::tempPath()).filePath(QStringLiteral("panelhost-") + rest);
}

int openLock(const QString &path, int flags)
{
    return ::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | flags, 0600);
}

// The file gets its name when it is locked: a lock file that isn't locked belongs to no process.
int createLock(const QString &path)
{
    const QString unnamed = path + QStringLiteral(".new");
    const int descriptor = openLock(unnamed, O_CREAT | O_EXCL);
    const bool isLocked = descriptor >= 0 && ::flock(descriptor, LOCK_EX | LOCK_NB) == 0
        && std::rename(QFile::encodeName(unnamed).constData(), QFile::encodeName(path).constData()) == 0;
    if (isLocked || descriptor < 0)
        return descriptor;
    ::close(descriptor);
    return -1;
}

bool isOwnDirectory(const QString &path)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 && S_ISDIR(status.st_mode)
        && status.st_uid == ::geteuid();
}

void removeIfAbandoned(const QString &path)
{
    const int lock = isOwnDirectory(path) ? openLock(path + QLatin1Char('/') + QLatin1String(LockName), 0) : -1;
    if (lock < 0)
        return;
    if (::flock(lock, LOCK_EX | LOCK_NB) == 0)
        QDir(path).removeRecursively();
    ::close(lock);
}

}

TemporaryDirectory::TemporaryDirectory() : m_directory(nameTemplate(QStringLiteral("XXXXXX")))
{
    const QString path = m_directory.filePath(QStringLiteral("files"));
    if (!m_directory.isValid() || !QDir().mkdir(path))
        return;
    m_lock = createLock(m_directory.filePath(QLatin1String(LockName)));
    m_path = path;
}

// Removed before the lock ends, so that no other process removes it at the same time.
TemporaryDirectory::~TemporaryDirectory()
{
    m_directory.remove();
    if (m_lock >= 0)
        ::close(m_lock);
}

void removeAbandonedDirectories()
{
    const QDir directory(QDir::tempPath());
    const QStringList names = directory.entryList({QStringLiteral("panelhost-??????")}, QDir::Dirs);
    for (const QString &name : names)
        removeIfAbandoned(directory.filePath(name));
}

}
