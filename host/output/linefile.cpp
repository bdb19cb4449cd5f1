#include "output/linefile.h"

#include "output/systemfile.h"

#include <QtCore/QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace panelhost {

namespace {

constexpr int Flags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOCTTY;
constexpr mode_t Mode = 0666;

}

LineFile::~LineFile()
{
    close();
}

bool LineFile::open(const QString &path, IfExists ifExists, QString *error)
{
    close();
    m_path = path;
    m_error.clear();
    m_length = 0;
    const QByteArray name = QFile::encodeName(path);
    m_descriptor = ::open(name.constData(), Flags | O_EXCL, Mode);
    const bool isNew = m_descriptor >= 0;
    if (!isNew)
        m_descriptor = ::open(name.constData(), Flags, Mode);
    if (m_descriptor < 0) {
        *error = fileError(path, errno);
        return false;
    }
    struct stat status = {};
    m_isRegular = fstat(m_descriptor, &status) == 0 && S_ISREG(status.st_mode);
    m_isTruncated = !m_isRegular;
    if (!m_isRegular || lock(isNew, ifExists, error))
        return true;
    ::close(m_descriptor);
    m_descriptor = -1;
    return false;
}

// A file system without locks is no reason to refuse.
bool LineFile::lock(bool isNew, IfExists ifExists, QString *error)
{
    if (flock(m_descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        *error = QStringLiteral("%1: another process is writing this file.").arg(m_path);
        return false;
    }
    if (!isNew && ifExists == IfExists::Refuse) {
        *error = QStringLiteral("%1: the file exists; --force overwrites it.").arg(m_path);
        return false;
    }
    return true;
}

void LineFile::close()
{
    const std::lock_guard guard(m_mutex);
    if (m_descriptor < 0)
        return;
    if (!m_isTruncated)
        truncate();
    if (::close(m_descriptor) != 0 && m_error.isEmpty())
        m_error = fileError(m_path, errno);
    m_descriptor = -1;
}

bool LineFile::isOpen() const
{
    const std::lock_guard guard(m_mutex);
    return m_descriptor >= 0;
}

bool LineFile::truncate()
{
    m_isTruncated = true;
    return !m_isRegular || ftruncate(m_descriptor, m_length) == 0;
}

bool LineFile::append(const QByteArray &lines)
{
    std::unique_lock guard(m_mutex);
    if (m_descriptor < 0 || !m_error.isEmpty())
        return false;
    int number = m_isTruncated || truncate() ? 0 : errno;
    if (number == 0)
        number = writeAll(m_descriptor, lines);
    if (number == 0) {
        m_length += lines.size();
        return true;
    }
    m_error = fileError(m_path, number);
    if (!truncate())
        m_error += QStringLiteral(" (and its last line is incomplete)");
    const auto handler = m_errorHandler;
    const QString error = m_error;
    guard.unlock();
    if (handler)
        handler(error);
    return false;
}

QString LineFile::error() const
{
    const std::lock_guard guard(m_mutex);
    return m_error;
}

void LineFile::setErrorHandler(std::function<void(const QString &error)> handler)
{
    const std::lock_guard guard(m_mutex);
    m_errorHandler = std::move(handler);
}

}
