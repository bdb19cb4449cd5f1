#pragma once

#include "lcd/keyboardproxy/types.h"

#include <cstdint>
#include <functional>

namespace LCD::FactoryMode {

/// Called for a key event with the hal key, a value, an extra word, and the state of joystick, touch screen and T-Bar.
using KeyListener =
    std::function<void(std::uint32_t, float, std::uint32_t, const LCD::KeyboardProxy::KeyButtonJoystick &,
                       const LCD::KeyboardProxy::KeyTouchScreen &, const LCD::KeyboardProxy::KeyButtonTBar &)>;

/// The service "lcdKeyboardEvent": the front panel. The component calls the operations on the GUI thread and in its key
/// listener. The service may call the key listener on any thread. The order of the operations is part of the interface.
class IKeyboardEvent
{
public:
    /// Sets the panel mode: a number that tells the device which factory page is open.
    virtual void setFactoryPanelMode(int mode) = 0;
    /// Sets the LED of the key with the hal key @p halKey.
    virtual void setKeyLed(const int &halKey, LCD::KeyboardProxy::KeyLedRequest request) = 0;
    /// Sets the only key listener and replaces an earlier one. An empty function removes it.
    virtual void registerKeyCallback(const KeyListener &listener) = 0;
    /// Sets the LED brightness of all keys in percent; 0 is off.
    virtual void setAllButtonBrightness(int level) = 0;
    /// Sets the brightness of screen @p screenIndex (0 to 2) in percent.
    virtual void setScreenBrightness(int screenIndex, int level) = 0;
    /// Called with true before setKeyLed() and with false after it.
    virtual void setKeyLedUpdating(bool updating) = 0;
    /// Shows a test pattern on all screens; (0, 0) clears it.
    virtual void setLcdTestPattern(int patternType, int patternIndex) = 0;
    /// Returns the type of the T-Bar: 1 for a slider, any other value for a fader.
    virtual int getTBarType() = 0;

protected:
    ~IKeyboardEvent() = default;
};

}
