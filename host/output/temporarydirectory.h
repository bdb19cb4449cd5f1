#pragma once

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

namespace panelhost {

/// An empty directory for the files of this process, which is removed with the object. If the process is killed, a
/// later one removes it with removeAbandonedDirectories().
class TemporaryDirectory
{
public:
    TemporaryDirectory();
    ~TemporaryDirectory();

    TemporaryDirectory(const TemporaryDirectory &) = delete;
    TemporaryDirectory &operator=(const TemporaryDirectory &) = delete;

    /// Returns the path of the directory; empty if it can't be created.
    QString path() const { return m_path; }

private:
    QTemporaryDir m_directory; ///< with the lock file, and the directory at m_path
    QString m_path;
    int m_lock = -1; ///< descriptor; the lock ends with the process
};

/// Removes the directories of processes that were killed. Leaves those of other users and of processes that live.
void removeAbandonedDirectories();

}
