#pragma once

#include "device/simulated/simulateddevice.h"

/// A device of two keys, one of them "CUT", for tests that say what it does key by key.
inline panelhost::SimulatedDevice::Configuration smallDevice()
{
    panelhost::SimulatedDevice::Configuration configuration;
    configuration.keys = {{12, QStringLiteral("Alpha"), {}, false}, {33, QStringLiteral("CUT"), {}, false}};
    return configuration;
}
