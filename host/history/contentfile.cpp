#include "history/contentfile.h"

#include <QtCore/QCryptographicHash>

namespace panelhost {

bool ContentFile::open()
{
    return m_file.isOpen() || m_file.open();
}

int ContentFile::append(const QByteArray &content)
{
    const qint64 begin = size();
    const bool isWritten = open() && m_file.seek(begin) && m_file.write(content) == content.size() && m_file.flush();
    if (!isWritten && m_error.isEmpty())
        m_error = QStringLiteral("%1: %2").arg(m_file.fileTemplate(), m_file.errorString());
    m_ends.append(isWritten ? begin + content.size() : begin);
    return m_ends.size() - 1;
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
