#include "device/board/ledoutputstate.h"

namespace panelhost {

namespace {

struct Components
{
    bool red;
    bool green;
    bool blue;
};

// Indexed by KeyLed::color: red, blue, green, white; any other value is amber.
Components componentsOf(int color)
{
    constexpr Components table[] = {
        {true, false, false}, {false, false, true}, {false, true, false}, {true, true, true}};
    constexpr Components amber{true, true, false};
    return color >= 0 && color < 4 ? table[color] : amber;
}

}

QVector<LedOutputState> ledOutputStates(const KeyLedConfiguration &key, const KeyLed &light)
{
    const int percent = qBound(0, light.brightness, 100);
    const int period = light.isBlinking() ? qMax(2, light.period) : 0;
    const Components lit = componentsOf(light.color);
    if (!key.single.isEmpty())
        return {{key.single, percent, period}};
    if (!key.multicolor.isEmpty())
        return {{key.multicolor, percent, period, true, lit.red, lit.green, lit.blue}};
    const bool isShown =
        (lit.red && !key.red.isEmpty()) || (lit.green && !key.green.isEmpty()) || (lit.blue && !key.blue.isEmpty());
    QVector<LedOutputState> states;
    const auto add = [&](const QString &led, bool isLit) {
        if (!led.isEmpty())
            states << LedOutputState{led, isLit || !isShown ? percent : 0, isLit || !isShown ? period : 0};
    };
    add(key.red, lit.red);
    add(key.green, lit.green);
    add(key.blue, lit.blue);
    return states;
}

int scaled(int percent, int max)
{
    const int value = (qBound(0, percent, 100) * max + 50) / 100;
    return percent > 0 ? qMax(1, value) : value;
}

}
