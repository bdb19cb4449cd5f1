#pragma once

#include "session/session.h"

#include <QtCore/QList>
#include <QtCore/QString>

namespace panelhost {

/// Which file a path leads to, through links and however it is spelled; for one that isn't there yet, where it would
/// come to be.
class FileIdentity
{
public:
    explicit FileIdentity(const QString &path);

    /// True for a regular file and for one that isn't there yet; a device or a pipe has no content to lose.
    bool canBeOverwritten() const { return m_canBeOverwritten; }
    bool operator==(const FileIdentity &other) const;

private:
    quint64 m_device = 0;
    quint64 m_inode = 0;
    QString m_rest; ///< below that directory; empty for a file that is there
    bool m_canBeOverwritten = true;
};

/// Refuses output files that would overwrite what a command reads, or each other.
class OutputCheck
{
public:
    /// The component and the files of its share directory are inputs of every session.
    explicit OutputCheck(const Session::Options &options);

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
