#include "output/outputcheck.h"

#include "output/recordingsignature.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <sys/stat.h>

namespace panelhost {

namespace {

constexpr int MaxLinks = 40;

// A link that leads nowhere yet names the file that writing would make.
QString withoutLinks(const QString &path)
{
    QFileInfo target(path);
    for (int links = 0; links < MaxLinks && target.isSymLink(); ++links)
        target.setFile(target.symLinkTarget());
    return target.absoluteFilePath();
}

bool statusOf(const QString &path, struct stat *status)
{
    return stat(QFile::encodeName(path).constData(), status) == 0;
}

}

FileIdentity::FileIdentity(const QString &path)
{
    struct stat status = {};
    if (statusOf(path, &status)) {
        m_canBeOverwritten = S_ISREG(status.st_mode);
    } else {
        QString target = QDir::cleanPath(withoutLinks(path));
        while (!statusOf(target, &status) && target.contains(QLatin1Char('/'))) {
            m_rest.prepend(target.mid(target.lastIndexOf(QLatin1Char('/'))));
            target.truncate(target.lastIndexOf(QLatin1Char('/')));
        }
        if (target.isEmpty())
            statusOf(QStringLiteral("/"), &status);
    }
    m_device = status.st_dev;
    m_inode = status.st_ino;
}

bool FileIdentity::operator==(const FileIdentity &other) const
{
    return m_device == other.m_device && m_inode == other.m_inode && m_rest == other.m_rest;
}

OutputCheck::OutputCheck(const QStringList &inputs)
{
    for (const QString &path : inputs)
        addInput(path);
}

void OutputCheck::addInput(const QString &path)
{
    m_files.append({FileIdentity(path), QStringLiteral("\"%1\", which is read").arg(path)});
}

bool OutputCheck::isFree(const QString &option, const QString &path, QString *error) const
{
    const FileIdentity identity(path);
    for (const Known &known : m_files) {
        if (!identity.canBeOverwritten() || !(known.identity == identity))
            continue;
        *error = QStringLiteral("%1 \"%2\" would overwrite %3.").arg(option, path, known.description);
        return false;
    }
    return true;
}

bool OutputCheck::addOutput(const QString &option, const QString &path, bool force, QString *error)
{
    if (!isFree(option, path, error))
        return false;
    if (!force && isRecording(path)) {
        *error = QStringLiteral("%1 \"%2\" would overwrite a recording; --force allows it.").arg(option, path);
        return false;
    }
    m_files.append({FileIdentity(path), QStringLiteral("\"%1\", which %2 writes").arg(path, option)});
    return true;
}

}
