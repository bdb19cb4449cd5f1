#pragma once

#include "device/device.h"
#include "time/virtualclock.h"

#include <QtGui/QColor>

namespace panelhost {

/// Returns the brightness of @p led at @p now, in percent. A blinking LED is on in the first half of its period.
int ledLevel(const KeyLed &led, Milliseconds now);
/// Returns the color of a color number: red, blue, green or white; amber for other numbers.
QRgb ledLight(int color);

}
