#include "output/systemfile.h"

#include <cerrno>
#include <unistd.h>

namespace panelhost {

QString fileError(const QString &path, int number)
{
    return QStringLiteral("%1: %2").arg(path, qt_error_string(number));
}

// On a full disk a part is written; only the next call returns the error.
int writeAll(int descriptor, const QByteArray &content)
{
    const char *next = content.constData();
    auto left = static_cast<size_t>(content.size());
    while (left > 0) {
        const ssize_t written = ::write(descriptor, next, left);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return written < 0 ? errno : EIO;
        next += written;
        left -= static_cast<size_t>(written);
    }
    return 0;
}

}
