#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <functional>
#include <mutex>

namespace panelhost {

/// A text file to which whole lines are appended, such as a journal or a recording. Each append() is one write. If only
/// a part can be written, for example because the disk is full, the file is truncated after its last complete line and
/// not written again. A regular file is locked while it is open; the lock ends with the process.
class LineFile
{
public:
    enum class IfExists {
        Overwrite,
        Refuse
    };

    LineFile() = default;
    ~LineFile();

    /// Opens @p path for writing and locks it. Returns false, with a sentence in @p error, if that is impossible, if
    /// another process is writing the file, or if a regular file exists and @p ifExists is Refuse. The previous content
    /// is kept until the first append().
    bool open(const QString &path, IfExists ifExists, QString *error);
    /// Closes the file. If nothing was appended, the file is empty. Some file systems report a full disk only now; see
    /// error().
    void close();
    bool isOpen() const;
    QString path() const { return m_path; }

    /// Appends @p lines, each with its line end. Returns false if the file isn't open or failed before. Any thread.
    bool append(const QByteArray &lines);
    /// Returns the first failure, with the path and the system's reason; empty if there is none. Thread-safe.
    QString error() const;
    /// Sets a function that is called once with error(), on the thread whose append() failed.
    void setErrorHandler(std::function<void(const QString &error)> handler);

private:
    Q_DISABLE_COPY(LineFile)

    bool lock(bool isNew, IfExists ifExists, QString *error);
    bool truncate();

    mutable std::mutex m_mutex;
    QString m_path;
    int m_descriptor = -1;
    bool m_isRegular = false;
    bool m_isTruncated = false;
    qint64 m_length = 0; ///< bytes of whole lines
    QString m_error;
    std::function<void(const QString &)> m_errorHandler;
};

}
