#pragma once

#include "session/session.h"

#include <QtCore/QMap>
#include <QtCore/QStringList>

#include <optional>

namespace panelhost {

/// The names of the keys, ports and languages of a device, which a scenario can use.
struct DeviceNames
{
    QMap<QString, int> keys; ///< hal key by name
    QStringList netPorts;
    QStringList usbPorts;
    QStringList languages;

    /// Returns the hal key of @p key, which is a name or a hal key.
    std::optional<int> halKey(const QString &key) const;
    QStringList ports() const { return netPorts + usbPorts; }
};

/// Returns the names of a device with @p options.
DeviceNames deviceNamesOf(const Session::Options &options);

}
