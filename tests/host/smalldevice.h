#pragma once

#include "device/simulateddevice.h"

/// A device of two keys, one of them "CUT", for tests that say what it does key by key.
inline panelhost::SimulatedDevice::Shape smallDevice()
{
    panelhost::SimulatedDevice::Shape shape;
    shape.keys = {{12, QStringLiteral("Alpha"), {}, false}, {33, QStringLiteral("CUT"), {}, false}};
    return shape;
}
