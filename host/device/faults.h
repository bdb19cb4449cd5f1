#pragma once

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

#include <mutex>

namespace panelhost {

/// A fault that can be switched on.
struct FaultInfo
{
    QString name;          ///< such as "key-dead"
    QString description;   ///< one line, for the menu
    QString where;         ///< what it affects, such as "T-Bar calibration"
    QStringList arguments; ///< names of its arguments, such as "key"
};

/// The faults of the simulated device and its services, which can be switched on and off. A fault with an argument can
/// be on for several values at the same time, such as two dead keys. Thread-safe.
class Faults
{
public:
    static const QList<FaultInfo> &all();
    /// Returns the fault @p name; nullptr if there is none.
    static const FaultInfo *find(const QString &name);

    /// Returns the values that are allowed for @p argument. Empty if they depend on the device, as for "key".
    static QStringList allowedValues(const QString &argument);

    /// Checks the arguments of set() without switching the fault. Returns what set() would return.
    static bool check(const QString &name, bool on, const QVariantMap &arguments, QString *error);

    /// Switches a fault on or off. Off without arguments switches it off for all values. Returns false and sets
    /// @p error if the name is unknown or an argument is missing or not allowed.
    bool set(const QString &name, bool on, const QVariantMap &arguments, QString *error);
    bool isOn(const QString &name) const;
    /// Returns true if the fault is on for @p value of @p argument, such as the key 27.
    bool isOn(const QString &name, const QString &argument, const QVariant &value) const;
    /// Returns the value that was switched on last.
    QVariant argument(const QString &name, const QString &argument) const;

private:
    mutable std::mutex m_mutex;
    QMap<QString, QList<QVariantMap>> m_on;
};

}
