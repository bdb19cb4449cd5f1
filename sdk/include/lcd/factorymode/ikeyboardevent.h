#pragma once

#include "lcd/keyboardproxy/types.h"

#include <cstdint>
#include <functional>

namespace LCD::FactoryMode {

/// Hears one key event: key code, value, extra word and the state of joystick, touch screen and T-Bar.
using KeyListener =
    std::function<void(std::uint32_t, float, std::uint32_t, const LCD::KeyboardProxy::KeyButtonJoystick &,
                       const LCD::KeyboardProxy::KeyTouchScreen &, const LCD::KeyboardProxy::KeyButtonTBar &)>;

/// Service "lcdKeyboardEvent": the front panel. Operations are called on the caller's thread; key events arrive on
/// the service's own. The order of the operations is part of the interface.
class IKeyboardEvent
{
public:
    /// Which factory page the panel is in.
    virtual void setFactoryPanelMode(int mode) = 0;
    /// Sets the LED of the key @p halKey.
    virtual void setKeyLed(const int &halKey, LCD::KeyboardProxy::KeyLedRequest request) = 0;
    /// Replaces the one key listener; an empty function removes it.
    virtual void registerKeyCallback(const KeyListener &listener) = 0;
    /// LED brightness of all keys in percent; 0 is dark.
    virtual void setAllButtonBrightness(int level) = 0;
    /// Brightness in percent of screen 0, 1 or 2.
    virtual void setScreenBrightness(int screenIndex, int level) = 0;
    /// Brackets a change of a key LED: true before setKeyLed(), false after it.
    virtual void setKeyLedUpdating(bool updating) = 0;
    /// Shows a test pattern; (0, 0) clears it.
    virtual void setLcdTestPattern(int patternType, int patternIndex) = 0;
    /// The T-Bar that is fitted: 1 is a slider, any other value a fader.
    virtual int getTBarType() = 0;

protected:
    ~IKeyboardEvent() = default;
};

}
