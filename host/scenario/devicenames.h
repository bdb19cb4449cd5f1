#pragma once

#include "session/session.h"

#include <QtCore/QMap>
#include <QtCore/QStringList>

#include <optional>

namespace panelhost {

/// The names that a scenario may use: what the device of a session has.
struct DeviceNames
{
    QMap<QString, int> keys; ///< hal key by name
    QStringList netPorts;
    QStringList usbPorts;
    QStringList languages;

    /// The hal key of a key given by its name or by its hal key.
    std::optional<int> halKey(const QString &key) const;
    QStringList ports() const { return netPorts + usbPorts; }
};

/// What a device made with @p options will have.
DeviceNames deviceNamesOf(const Session::Options &options);

}
