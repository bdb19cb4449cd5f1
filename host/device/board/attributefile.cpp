#include "device/board/attributefile.h"

#include <QtCore/QFile>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace panelhost {

namespace {

constexpr int PageSize = 4096; // the longest value of an attribute

int openAttribute(const QString &path, int mode)
{
    return ::open(QFile::encodeName(path).constData(), mode | O_CLOEXEC | O_NOCTTY);
}

}

QByteArray readAttribute(const QString &path, int *number)
{
    const int descriptor = openAttribute(path, O_RDONLY);
    std::array<char, PageSize> value;
    const ssize_t size = descriptor < 0 ? -1 : ::read(descriptor, value.data(), value.size());
    *number = size < 0 ? errno : 0;
    if (descriptor >= 0)
        ::close(descriptor);
    return size < 0 ? QByteArray() : QByteArray(value.data(), static_cast<int>(size)).trimmed();
}

// An attribute of sysfs has no length; truncating matters where a plain file stands for it.
int writeAttribute(const QString &path, const QByteArray &value)
{
    const int descriptor = openAttribute(path, O_WRONLY | O_TRUNC);
    if (descriptor < 0)
        return errno;
    const int number = ::write(descriptor, value.constData(), static_cast<size_t>(value.size())) < 0 ? errno : 0;
    ::close(descriptor);
    return number;
}

}
