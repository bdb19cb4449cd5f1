#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace panelhost {

/// Identifies the file of a path, whatever its spelling and links. A file that doesn't exist yet is identified by where
/// it would be created.
class FileIdentity
{
public:
    explicit FileIdentity(const QString &path);

    /// Returns true for a regular file and for one that doesn't exist. A device or a pipe has no content to lose.
    bool canBeOverwritten() const { return m_canBeOverwritten; }
    bool operator==(const FileIdentity &other) const;

private:
    quint64 m_device = 0;
    quint64 m_inode = 0;
    QString m_rest; ///< path below that directory; empty for a file that exists
    bool m_canBeOverwritten = true;
};

/// Rejects output files that would overwrite what a command reads, or each other.
class OutputCheck
{
public:
    /// Adds @p inputs, which must not be overwritten.
    explicit OutputCheck(const QStringList &inputs);

    void addInput(const QString &path);
    /// Adds a file that @p option writes. Returns false, with a sentence in @p error, if that would overwrite an
    /// input, a file that another option writes, or, unless @p force, a recording.
    bool addOutput(const QString &option, const QString &path, bool force, QString *error);
    /// Returns false, with a sentence in @p error, if @p path is an input or an output that was added.
    bool isFree(const QString &option, const QString &path, QString *error) const;

private:
    struct Known
    {
        FileIdentity identity;
        QString description;
    };

    QList<Known> m_files;
};

}
