#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace panelhost {

/// A device of a class in /sys/class, such as an LED, and its attributes. A value is read and written as a whole, with
/// one system call. Any thread.
class SysfsDevice
{
public:
    /// @p deviceClass is "leds" or "backlight".
    SysfsDevice(const QString &deviceClass, const QString &name);

    QString name() const { return m_name; }
    QString path() const;
    QString path(const char *attribute) const;
    bool exists() const;
    /// Returns true if exists(); otherwise sets @p error to the reason and the remedy.
    bool checkExists(QString *error) const;
    bool has(const char *attribute) const;

    /// Returns the value without the line end. Returns nothing and sets @p error to "path: reason" on failure.
    std::optional<QByteArray> read(const char *attribute, QString *error) const;
    /// Returns the value as a number. Returns nothing and sets @p error if it can't be read, isn't a number, or is less
    /// than @p min.
    std::optional<int> readNumber(const char *attribute, int min, QString *error) const;
    /// Returns false and sets @p error to "path: reason" on failure.
    bool write(const char *attribute, const QByteArray &value, QString *error) const;
    /// Returns whether the attribute can be written. Doesn't write it. If it can't be written, sets @p error to a
    /// sentence with the reason and the remedy.
    bool checkWritable(const char *attribute, QString *error) const;

private:
    QString m_class;
    QString m_name;
};

/// Returns whether @p name can be a name in /sys/class: it isn't empty, has no slash and is neither "." nor "..".
bool isSysfsName(const QString &name);
/// Returns the names in /sys/class/@p deviceClass, sorted.
QStringList sysfsNames(const QString &deviceClass);

}
