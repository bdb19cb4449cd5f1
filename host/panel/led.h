#pragma once

#include "device/device.h"
#include "time/virtualclock.h"

#include <QtGui/QColor>

namespace panelhost {

/// How brightly @p led shines at @p now, in percent: a blinking one is lit in the first half of its period.
int ledLevel(const KeyLed &led, Milliseconds now);
/// The light of a colour number: red, blue, green, white; amber for a number that no key has.
QRgb ledLight(int color);

}
