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

/// The requested state of a key's LED. `mode` is 1 for blinking and 0 for steady light, `brightness` is in percent, and
/// `period` is the length of one blink in milliseconds.
struct KeyLedRequest
{
    KeyLEDColor color;
    int mode;
    int brightness;
    int period;
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
    float x = 0;
    float y = 0;
    float z = 0;
};

/// A touch on a screen, in pixels.
struct KeyTouchScreen
{
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t pressed = 0;
};

/// The position of the T-Bar, from 0 (bottom) to 1 (top).
struct KeyButtonTBar
{
    float position = 0;
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
