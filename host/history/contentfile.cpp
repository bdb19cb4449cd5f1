#include "history/contentfile.h"

#include "output/systemfile.h"

#include <QtCore/QCryptographicHash>

#include <cerrno>

#include <unistd.h>

namespace panelhost {

bool ContentFile::open()
{
    return m_file.isOpen() || m_file.open();
}

int ContentFile::append(const QByteArray &content)
{
    const qint64 begin = size();
    const QString error = write(begin, content);
    if (m_error.isEmpty())
        m_error = error;
    m_ends.append(error.isEmpty() ? begin + content.size() : begin);
    return m_ends.size() - 1;
}

// By the system's functions: after a part was written, QFile doesn't know why the rest was not.
QString ContentFile::write(qint64 begin, const QByteArray &content)
{
    if (!open())
        return QStringLiteral("%1: %2").arg(m_file.fileTemplate(), m_file.errorString());
    const bool isThere = ::lseek(m_file.handle(), begin, SEEK_SET) == begin;
    const int problem = isThere ? writeAll(m_file.handle(), content) : errno;
    return problem == 0 ? QString() : fileError(m_file.fileName(), problem);
}

int ContentFile::add(const QByteArray &content)
{
    const QByteArray hash = QCryptographicHash::hash(content, QCryptographicHash::Sha1);
    const auto found = m_numbers.constFind(hash);
    return found != m_numbers.constEnd() ? *found : *m_numbers.insert(hash, append(content));
}

QByteArray ContentFile::read(int number) const
{
    if (number < 0 || number >= m_ends.size())
        return {};
    const qint64 begin = number == 0 ? 0 : m_ends[number - 1];
    return m_file.seek(begin) ? m_file.read(m_ends[number] - begin) : QByteArray();
}

}
