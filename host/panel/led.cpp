#include "panel/led.h"

#include "panel/theme.h"

namespace panelhost {

int ledLevel(const KeyLed &led, Milliseconds now)
{
    const int level = qBound(0, led.brightness, 100);
    if (!led.isBlinking() || led.period <= 1)
        return level;
    return now % led.period < led.period / 2 ? level : 0;
}

QRgb ledLight(int color)
{
    constexpr QRgb lights[] = {theme::Red, theme::Blue, theme::Green, theme::White};
    return color >= 0 && color < 4 ? lights[color] : theme::Amber;
}

}
