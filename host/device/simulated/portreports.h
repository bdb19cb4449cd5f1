#pragma once

#include "device/device.h"

namespace panelhost {

class Faults;

/// The payload of a net or USB report as the ports stand, or what a fault makes of it.
std::any makeNetReport(const QList<PortState> &ports, const Faults &faults);
std::any makeUsbReport(const QList<PortState> &ports, const Faults &faults);

}
