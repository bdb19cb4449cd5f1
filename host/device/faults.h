#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

namespace panelhost {

/// One thing that can go wrong, by name.
struct FaultInfo
{
    QString name;          ///< such as "key-dead"
    QString description;   ///< one line for the menu
    QStringList arguments; ///< names of what it needs, such as "key"
};

/// The faults that can be switched on and off on the simulated device and its services. Any thread.
class Faults
{
public:
    static const QList<FaultInfo> &all();

    /// False, with a sentence in @p error, for an unknown name or a missing argument.
    bool set(const QString &name, bool on, const QVariantMap &arguments, QString *error);
    bool isOn(const QString &name) const;
    QVariant argument(const QString &name, const QString &argument) const;
};

}
