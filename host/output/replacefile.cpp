#include "output/replacefile.h"

#include "output/systemfile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace panelhost {

namespace {

enum class Sync {
    No,
    Yes
};

// Returns 0 or an errno value.
int writeTo(const QByteArray &name, const QByteArray &content, const struct stat *like, Sync sync)
{
    const int descriptor = ::open(name.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY, 0666);
    if (descriptor < 0)
        return errno;
    int number = like && fchmod(descriptor, like->st_mode & 07777) != 0 ? errno : 0;
    if (number == 0)
        number = writeAll(descriptor, content);
    if (number == 0 && sync == Sync::Yes && fsync(descriptor) != 0)
        number = errno;
    return ::close(descriptor) != 0 && number == 0 ? errno : number;
}

// The file that a link leads to is replaced, not the link.
QString targetOf(const QString &path)
{
    const QString target = QFileInfo(path).canonicalFilePath();
    return target.isEmpty() ? path : target;
}

// A renamed file survives a power cut only if its directory is on the disk, too. Not all file systems can do that.
void syncDirectory(const QString &path)
{
    const QByteArray directory = QFile::encodeName(QFileInfo(targetOf(path)).absolutePath());
    const int descriptor = ::open(directory.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    ::close(descriptor);
}

bool replace(const QString &path, const QByteArray &content, Sync sync, QString *error)
{
    const QByteArray name = QFile::encodeName(targetOf(path));
    const QByteArray partial = QFile::encodeName(partialPath(path));
    struct stat status = {};
    const bool exists = stat(name.constData(), &status) == 0;
    int number = 0;
    if (exists && !S_ISREG(status.st_mode)) {
        number = writeTo(name, content, nullptr, Sync::No);
    } else if (exists && access(name.constData(), W_OK) != 0) {
        number = errno;
    } else {
        number = writeTo(partial, content, exists ? &status : nullptr, sync);
        if (number == 0 && std::rename(partial.constData(), name.constData()) != 0)
            number = errno;
        if (number != 0)
            ::unlink(partial.constData());
    }
    if (number != 0)
        *error = fileError(path, number);
    return number == 0;
}

}

QString partialPath(const QString &path)
{
    return targetOf(path) + QStringLiteral(".part");
}

bool replaceFile(const QString &path, const QByteArray &content, QString *error)
{
    return replace(path, content, Sync::No, error);
}

bool replaceFileDurably(const QString &path, const QByteArray &content, QString *error)
{
    if (!replace(path, content, Sync::Yes, error))
        return false;
    syncDirectory(path);
    return true;
}

}
