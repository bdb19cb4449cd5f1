#pragma once

#include "journal/journal.h"

#include <QtCore/QFile>

namespace panelhost {

/// Writes a journal to a file as it grows, each line whole, so that it can be read whatever becomes of the process.
/// Listens on whatever thread adds.
class JournalFile
{
public:
    /// @p journal must outlive it.
    JournalFile(const QString &path, Journal &journal);
    ~JournalFile();

    /// Writes what is there and begins to listen. False, with a sentence in @p error, if the file can't be written.
    bool open(QString *error);

private:
    Q_DISABLE_COPY(JournalFile)

    QFile m_file;
    Journal &m_journal;
};

}
