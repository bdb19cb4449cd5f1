#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QTemporaryFile>
#include <QtCore/QVector>

namespace panelhost {

/// Byte arrays in a temporary file, numbered from 0, so that their size doesn't matter to the memory of the process.
/// Not thread-safe.
class ContentFile
{
public:
    /// Appends @p content and returns its number. If it can't be written, error() is set.
    int append(const QByteArray &content);
    /// Like append(), but returns the number of an equal content if there is one that was added.
    int add(const QByteArray &content);
    /// Returns the content with @p number; an empty array if it can't be read.
    QByteArray read(int number) const;
    int count() const { return m_ends.size(); }
    /// Returns the number of bytes in the file.
    qint64 size() const { return m_ends.isEmpty() ? 0 : m_ends.constLast(); }
    /// Returns why a content could not be written; empty if all were written.
    QString error() const { return m_error; }

private:
    bool open();
    QString write(qint64 begin, const QByteArray &content);

    mutable QTemporaryFile m_file;
    QVector<qint64> m_ends;
    QHash<QByteArray, int> m_numbers; ///< of the contents that were added, by their hash
    QString m_error;
};

}
