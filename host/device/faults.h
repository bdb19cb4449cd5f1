#pragma once

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

#include <mutex>

namespace panelhost {

/// One thing that can go wrong, by name.
struct FaultInfo
{
    QString name;          ///< such as "key-dead"
    QString description;   ///< one line for the menu
    QString where;         ///< the part of the device that it breaks, such as "T-Bar calibration"
    QStringList arguments; ///< names of what it needs, such as "key"
};

/// The faults that can be switched on and off on the simulated device and its services. One that takes an argument
/// can be on for several values at once: two dead keys. Any thread.
class Faults
{
public:
    static const QList<FaultInfo> &all();
    /// nullptr when there is no such fault.
    static const FaultInfo *find(const QString &name);

    /// The values that the argument of a fault takes. Empty when they are the device's: "key" takes the keys it has.
    static QStringList allowedValues(const QString &argument);

    /// What set() would answer, without doing it.
    static bool check(const QString &name, bool on, const QVariantMap &arguments, QString *error);

    /// Off without arguments switches the fault off for all its values.
    /// False, with a sentence in @p error, for an unknown name, and for an argument that is missing or not allowed.
    bool set(const QString &name, bool on, const QVariantMap &arguments, QString *error);
    bool isOn(const QString &name) const;
    /// Whether the fault is on for this value of its argument, such as the key 27.
    bool isOn(const QString &name, const QString &argument, const QVariant &value) const;
    /// The value that was switched on last.
    QVariant argument(const QString &name, const QString &argument) const;

private:
    mutable std::mutex m_mutex;
    QMap<QString, QList<QVariantMap>> m_on;
};

}
