#pragma once

#include <cstddef>
#include <cstdint>

namespace LCD::KeyboardProxy {

/// The color of a key's LED. The factory mode uses 0 for the key named "CUT" and 2 for all others.
enum KeyLEDColor : int {
    KeyLedRed = 0,
    KeyLedBlue = 1,
    KeyLedGreen = 2,
    KeyLedWhite = 3,
};

/// The requested state of a key's LED.
struct KeyLedRequest
{
    KeyLEDColor color; ///< the color of the light
    int mode;          ///< 1: blinks, 0: steady light
    int brightness;    ///< in percent
    int period;        ///< length of one blink in milliseconds
};

static_assert(sizeof(KeyLEDColor) == 4);
static_assert(sizeof(KeyLedRequest) == 16);
static_assert(offsetof(KeyLedRequest, color) == 0);
static_assert(offsetof(KeyLedRequest, mode) == 4);
static_assert(offsetof(KeyLedRequest, brightness) == 8);
static_assert(offsetof(KeyLedRequest, period) == 12);

/// The deflection of the joystick; each axis from -1 to 1.
struct KeyButtonJoystick
{
    float x = 0; ///< horizontal
    float y = 0; ///< vertical
    float z = 0; ///< third axis
};

/// A touch on a screen, in pixels.
struct KeyTouchScreen
{
    std::int32_t x = 0;       ///< distance from the left edge
    std::int32_t y = 0;       ///< distance from the upper edge
    std::int32_t pressed = 0; ///< 1 while the screen is touched, else 0
};

/// The state of the T-Bar.
struct KeyButtonTBar
{
    float position = 0; ///< from 0 (bottom) to 1 (top)
};

/// The areas of the panel's wide screens.
enum eAreaModuleType : int {
    AreaScreen = 0,
    AreaLayer = 1,
    AreaInput = 2,
    AreaPreset = 3,
    AreaCompanion = 4,
};

}
