#pragma once

#include "device/device.h"
#include "scenario/devicenames.h"

#include <QtCore/QVariant>

namespace panelhost {

/// What can be seen of a session at one instant.
struct Snapshot
{
    QVariantMap screen; ///< as readScreen() gives it
    DeviceState device;
};

/// The names that an expectation may ask for, for a message. Parts in angle brackets stand for names of the device.
QStringList propertyNames();
/// True if a device with @p deviceNames has something to see by that name.
bool isProperty(const QString &name, const DeviceNames &deviceNames);
/// What is to be seen there: a text, or a list of texts. Invalid if the present page shows no such thing.
QVariant propertyValue(const Snapshot &snapshot, const QString &property);

}
