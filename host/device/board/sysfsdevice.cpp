#include "device/board/sysfsdevice.h"

#include "device/board/attributefile.h"
#include "output/systemfile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace panelhost {

namespace {

QString remedy(int number, const QString &deviceClass)
{
    if (number == EACCES || number == EPERM)
        return QStringLiteral(
            "install the udev rule 60-panelhost.rules and add the user to the group panelhost, or run "
            "panelhost as root");
    if (number == EROFS)
        return QStringLiteral("mount /sys writable");
    return QStringLiteral("\"panelhost probe\" lists what is in /sys/class/%1").arg(deviceClass);
}

}

SysfsDevice::SysfsDevice(const QString &deviceClass, const QString &name) : m_class(deviceClass), m_name(name)
{
}

QString SysfsDevice::path() const
{
    return QStringLiteral("/sys/class/%1/%2").arg(m_class, m_name);
}

QString SysfsDevice::path(const char *attribute) const
{
    return path() + QLatin1Char('/') + QLatin1String(attribute);
}

bool SysfsDevice::exists() const
{
    return QFileInfo(path()).isDir();
}

bool SysfsDevice::checkExists(QString *error) const
{
    if (exists())
        return true;
    *error = fileError(path(), ENOENT) + QStringLiteral("; ") + remedy(ENOENT, m_class);
    return false;
}

bool SysfsDevice::has(const char *attribute) const
{
    return QFileInfo::exists(path(attribute));
}

std::optional<QByteArray> SysfsDevice::read(const char *attribute, QString *error) const
{
    int number = 0;
    const QByteArray value = readAttribute(path(attribute), &number);
    if (number == 0)
        return value;
    *error = fileError(path(attribute), number);
    return std::nullopt;
}

std::optional<int> SysfsDevice::readNumber(const char *attribute, int min, QString *error) const
{
    const auto value = read(attribute, error);
    if (!value)
        return std::nullopt;
    bool isNumber = false;
    const int number = value->toInt(&isNumber);
    if (isNumber && number >= min)
        return number;
    *error = QStringLiteral("%1: found \"%2\", expected a whole number of at least %3")
                 .arg(path(attribute), QString::fromLatin1(value->left(40)))
                 .arg(min);
    return std::nullopt;
}

bool SysfsDevice::write(const char *attribute, const QByteArray &value, QString *error) const
{
    const int number = writeAttribute(path(attribute), value);
    if (number != 0)
        *error = fileError(path(attribute), number);
    return number == 0;
}

bool SysfsDevice::checkWritable(const char *attribute, QString *error) const
{
    const QByteArray name = QFile::encodeName(path(attribute));
    struct stat status = {};
    int number = stat(name.constData(), &status) == 0 ? 0 : errno;
    // Root is refused an attribute that nobody may write, too.
    if (number == 0 && (status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) {
        *error =
            QStringLiteral("%1 is read-only: its driver can't set it; take it out of the profile").arg(path(attribute));
        return false;
    }
    if (number == 0 && access(name.constData(), W_OK) != 0)
        number = errno;
    if (number == 0)
        return true;
    *error = fileError(path(attribute), number) + QStringLiteral("; ") + remedy(number, m_class);
    return false;
}

bool isSysfsName(const QString &name)
{
    return !name.isEmpty() && !name.contains(QLatin1Char('/')) && !name.contains(QChar(0)) && name != QLatin1String(".")
        && name != QLatin1String("..");
}

QStringList sysfsNames(const QString &deviceClass)
{
    return QDir(QStringLiteral("/sys/class/") + deviceClass)
        .entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::System | QDir::Hidden, QDir::Name);
}

}
