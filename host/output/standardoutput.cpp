#include "output/standardoutput.h"

#include "diagnostics/reporterror.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace panelhost {

namespace {

int firstError = 0;

bool writeAll(const char *data, qint64 size)
{
    while (size > 0) {
        const ssize_t written = ::write(STDOUT_FILENO, data, static_cast<size_t>(size));
        if (written < 0 && errno != EINTR)
            return false;
        data += qMax<ssize_t>(written, 0);
        size -= qMax<ssize_t>(written, 0);
    }
    return true;
}

}

void prepareOutput()
{
    // Opened for reading, so that writing to it still fails.
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO)
        descriptor = ::open("/dev/null", O_RDONLY);
    ::close(descriptor);
    std::signal(SIGPIPE, SIG_IGN);
}

void print(const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit();
    if (firstError == 0 && !writeAll(bytes.constData(), bytes.size()))
        firstError = errno;
}

int statusAfterOutput(int status)
{
    if (std::fflush(stdout) != 0 && firstError == 0)
        firstError = errno;
    if (firstError == 0)
        return status;
    return reportError(
        QStringLiteral("The output was lost: %1.").arg(QString::fromLocal8Bit(std::strerror(firstError))));
}

}
