#include "panel/journalfile.h"

namespace panelhost {

JournalFile::JournalFile(const QString &path, Journal &journal) : m_file(path), m_journal(journal)
{
}

JournalFile::~JournalFile()
{
    if (m_file.isOpen())
        m_journal.setSink({});
}

bool JournalFile::open(QString *error)
{
    const QByteArray before = m_journal.toJsonLines();
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || m_file.write(before) != before.size()) {
        *error = QStringLiteral("%1: %2").arg(m_file.fileName(), m_file.errorString());
        return false;
    }
    m_journal.setSink([this](const Journal::Entry &entry) { m_file.write(entry.toJsonLine() + '\n'); });
    return true;
}

}
