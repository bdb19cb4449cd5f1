#pragma once
#include "lcd/keyboardproxy/types.h"
#include <functional>
namespace LCD {
namespace FactoryMode {
class IKeyboardEvent
{
public:
    virtual void setFactoryPanelMode(int mode) = 0;
    virtual void setKeyLed(const int &halKey, LCD::KeyboardProxy::KeyLedRequest request) = 0;
    virtual void registerKeyCallback(
        const std::function<void(uint32_t, float, uint32_t, const LCD::KeyboardProxy::KeyButtonJoystick &,
                                 const LCD::KeyboardProxy::KeyTouchScreen &, const LCD::KeyboardProxy::KeyButtonTBar &)>
            &) = 0;
    virtual void setAllButtonBrightness(int level) = 0;
    virtual void setScreenBrightness(int screenIndex, int level) = 0;
    virtual void setKeyLedUpdating(bool updating) = 0;
    virtual void setLcdTestPattern(int patternType, int patternIndex) = 0;
    virtual int getTBarType() = 0;

protected:
    ~IKeyboardEvent() = default;
};
}
}
