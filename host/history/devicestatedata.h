#pragma once

#include "device/device.h"

#include <QtCore/QByteArray>

namespace panelhost {

/// Returns @p state as bytes, which are equal for equal states. Only deviceStateFromData() of the same process reads
/// them.
QByteArray toData(const DeviceState &state);
DeviceState deviceStateFromData(const QByteArray &data);

}
