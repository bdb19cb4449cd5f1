#pragma once

#include "device/device.h"

namespace panelhost {

class Faults;

/// Return the payload of a net or USB report on the state of @p ports, changed by the faults that are on.
std::any makeNetReport(const QList<PortState> &ports, const Faults &faults);
std::any makeUsbReport(const QList<PortState> &ports, const Faults &faults);

}
