#pragma once
#include <cstdint>
namespace LCD {
namespace KeyboardProxy {
enum KeyLEDColor : int {
    colour_a,
    colour_b,
    colour_c
};
struct KeyLedRequest
{
    KeyLEDColor color;
    int mode;
    int brightness;
    int period;
};
struct KeyButtonJoystick
{
    double axes[3];
};
struct KeyTouchScreen
{
    char unknown[40];
};
struct KeyButtonTBar
{
    int raw;
};
enum eAreaModuleType : int {
    area_first
};
}
}
