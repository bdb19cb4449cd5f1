#pragma once

#include "device/device.h"
#include "session/devicenames.h"

#include <QtCore/QVariant>

namespace panelhost {

/// What a session shows at one time.
struct Snapshot
{
    QVariantMap screen; ///< as readScreen() returns it
    DeviceState device;
};

/// Returns the names of all properties, for a message. Parts in angle brackets are placeholders for names of the
/// device.
QStringList propertyNames();
/// Returns true if @p name is a property of a device with @p deviceNames.
bool isProperty(const QString &name, const DeviceNames &deviceNames);
/// Returns the value of @p property, a text or a list of texts; invalid if the current page doesn't have the property.
QVariant propertyValue(const Snapshot &snapshot, const QString &property);

}
