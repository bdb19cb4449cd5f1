#pragma once

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <cstddef>
#include <cstdint>

/// A file with the bytes of an input, in a directory of its own that is removed with it.
class FuzzFile
{
public:
    explicit FuzzFile(const char *name) : m_path(m_directory.filePath(QString::fromLatin1(name))) {}

    QString path() const { return m_path; }
    QString directory() const { return m_directory.path(); }

    /// Replaces the content. Only the owner may read the file.
    void write(const std::uint8_t *bytes, std::size_t size)
    {
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)
            || file.write(reinterpret_cast<const char *>(bytes), static_cast<qint64>(size)) != static_cast<qint64>(size)
            || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
            qFatal("%s", qPrintable(file.errorString()));
    }
    QByteArray content() const
    {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_directory;
    QString m_path;
};
