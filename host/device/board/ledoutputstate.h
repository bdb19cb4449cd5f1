#pragma once

#include "device/board/boardconfiguration.h"
#include "device/device.h"

namespace panelhost {

/// What one LED in /sys/class/leds has to show.
struct LedOutputState
{
    QString led;
    int percent = 0;
    int period = 0;        ///< of one blink, in milliseconds; 0: it doesn't blink
    bool hasColor = false; ///< multicolor: the components are set, too
    bool red = false;
    bool green = false;
    bool blue = false;
};

/// Returns what the LEDs of a key have to show for @p light, in the order of KeyLedConfiguration::names(). A color for
/// which the key has no LED is shown by all of its LEDs.
QVector<LedOutputState> ledOutputStates(const KeyLedConfiguration &key, const KeyLed &light);

/// Returns @p percent of @p max, rounded; at least 1 if @p percent isn't 0.
int scaled(int percent, int max);

}
