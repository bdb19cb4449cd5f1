#include "services/exportwriter.h"

#include "output/systemfile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace panelhost {

namespace {

constexpr mode_t FileMode = 0644;

QString nameOf(int number, const QString &suffix)
{
    return QStringLiteral("lcd-logs-%1%2").arg(number).arg(suffix);
}

// The names that mkostemp() gives the temporary files of the file @p name.
QString temporaryPattern(const QString &name)
{
    return QStringLiteral(".%1.??????").arg(name);
}

QStringList hiddenFiles(const QDir &directory, const QString &pattern)
{
    return directory.entryList({pattern}, QDir::Files | QDir::Hidden);
}

// Left by exports whose process was killed. The files of an export that is running are locked.
void removeLeftovers(const QDir &directory)
{
    const QStringList names = hiddenFiles(directory, temporaryPattern(QStringLiteral("lcd-logs-*.jsonl")));
    for (const QString &name : names) {
        const QByteArray path = QFile::encodeName(directory.filePath(name));
        const int descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
        if (descriptor < 0)
            continue;
        if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0)
            ::unlink(path.constData());
        ::close(descriptor);
    }
}

// Returns false if another export has just taken the new file for a leftover.
bool lockTemporary(int descriptor)
{
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0)
        return errno != EWOULDBLOCK; // a file system without locks
    struct stat status = {};
    return ::fstat(descriptor, &status) != 0 || status.st_nlink > 0;
}

// Exports are never overwritten, not even by one that is running.
int freeNumber(const QDir &directory, const QVector<ExportWriter::File> &files)
{
    const auto isTaken = [&](int number) {
        return std::any_of(files.begin(), files.end(), [&](const ExportWriter::File &file) {
            const QString name = nameOf(number, file.suffix);
            return directory.exists(name) || !hiddenFiles(directory, temporaryPattern(name)).isEmpty();
        });
    };
    int number = 1;
    while (isTaken(number))
        ++number;
    return number;
}

// So that the new names are on the stick, too. A file system without this is no failure.
void syncDirectory(const QString &directory)
{
    const int descriptor = ::open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

}

ExportWriter::ExportWriter(const QString &directory, const Collect &collect)
    : m_directory(directory), m_collect(collect)
{
}

ExportWriter::~ExportWriter()
{
    for (const Output &output : qAsConst(m_outputs)) {
        if (output.descriptor >= 0)
            ::close(output.descriptor);
        if (!output.temporary.isEmpty())
            ::unlink(output.temporary.constData());
    }
}

void ExportWriter::writeNext(const StickFaults &faults)
{
    m_faults = faults;
    if (m_state != State::Writing)
        return;
    if (!m_hasBegun)
        return begin();
    auto left = static_cast<int>(std::max<qint64>(1, (m_size + Parts - 1) / Parts));
    for (Output &output : m_outputs) {
        const int size = std::min(left, output.content.size() - output.written);
        if (const int number = writePart(output, size))
            return fail(number);
        left -= size;
    }
    if (m_written == m_size)
        finish();
}

void ExportWriter::begin()
{
    m_hasBegun = true;
    const QVector<File> files = m_collect();
    if (!m_directory.isEmpty() && simulatedError() == 0)
        removeLeftovers(QDir(m_directory));
    const int number = freeNumber(QDir(m_directory), files);
    for (const File &file : files) {
        m_outputs.append({nameOf(number, file.suffix), {}, file.content});
        m_size += file.content.size();
    }
    for (Output &output : m_outputs) {
        if (const int error = openOutput(output))
            return fail(error);
    }
}

int ExportWriter::openOutput(Output &output)
{
    if (const int number = simulatedError())
        return number;
    if (m_directory.isEmpty())
        return ENODEV;
    if (const int number = makeTemporary(output))
        return number;
    // File systems of sticks may have no modes.
    if (::fchmod(output.descriptor, FileMode) != 0 && errno != EPERM)
        return errno;
    return 0;
}

int ExportWriter::makeTemporary(Output &output) const
{
    for (;;) {
        QByteArray path = pathOf(QLatin1Char('.') + output.name + QStringLiteral(".XXXXXX"));
        output.descriptor = ::mkostemp(path.data(), O_CLOEXEC);
        if (output.descriptor < 0)
            return errno;
        if (lockTemporary(output.descriptor)) {
            output.temporary = path;
            return 0;
        }
        ::close(output.descriptor);
    }
}

int ExportWriter::writePart(Output &output, int size)
{
    if (const int number = simulatedError())
        return number;
    if (const int number = writeAll(output.descriptor, output.content.mid(output.written, size)))
        return number;
    output.written += size;
    m_written += size;
    return 0;
}

void ExportWriter::finish()
{
    for (Output &output : m_outputs) {
        const int synced = ::fsync(output.descriptor);
        const int number = synced == 0 ? 0 : errno;
        const int closed = ::close(output.descriptor);
        output.descriptor = -1;
        if (number != 0 || closed != 0)
            return fail(number != 0 ? number : errno);
    }
    if (const int number = rename())
        return fail(number);
    syncDirectory(m_directory);
    m_state = State::Done;
}

// All of them or none. A file that was renamed is removed again if it stays alone.
int ExportWriter::rename()
{
    for (int index = 0; index < m_outputs.size(); ++index) {
        Output &output = m_outputs[index];
        if (std::rename(output.temporary.constData(), pathOf(output.name).constData()) != 0) {
            const int number = errno;
            for (int renamed = 0; renamed < index; ++renamed)
                ::unlink(pathOf(m_outputs.at(renamed).name).constData());
            return number;
        }
        output.temporary.clear();
    }
    return 0;
}

void ExportWriter::fail(int number)
{
    m_error = number;
    m_state = State::Failed;
}

int ExportWriter::simulatedError() const
{
    if (m_faults.isMissing)
        return ENODEV;
    if (m_faults.isReadOnly)
        return EROFS;
    const bool isFull = m_faults.isFull && m_written >= (m_size + 1) / 2;
    return isFull ? ENOSPC : 0;
}

QByteArray ExportWriter::pathOf(const QString &name) const
{
    return QFile::encodeName(QDir(m_directory).filePath(name));
}

int ExportWriter::percent() const
{
    return m_size > 0 ? static_cast<int>(m_written * 100 / m_size) : 0;
}

QStringList ExportWriter::names() const
{
    QStringList names;
    for (const Output &output : m_outputs)
        names << output.name;
    return names;
}

}
