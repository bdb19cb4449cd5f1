// The parts "leds" and "screens" of a board profile.

#include "profile/profilereader.h"

#include <type_traits>

namespace panelhost {

namespace {

const QString Multicolor = QStringLiteral("multicolor");
const QString Red = QStringLiteral("red");
const QString Green = QStringLiteral("green");
const QString Blue = QStringLiteral("blue");

constexpr int MaxScreens = std::extent_v<decltype(DeviceState::screenBrightness)>;

void readColors(ProfileReader &reader, const YamlNode &value, KeyLedConfiguration &led)
{
    const QMap<QString, QString KeyLedConfiguration::*> fields = {{Multicolor, &KeyLedConfiguration::multicolor},
                                                                  {Red, &KeyLedConfiguration::red},
                                                                  {Green, &KeyLedConfiguration::green},
                                                                  {Blue, &KeyLedConfiguration::blue}};
    for (const auto &entry : reader.yaml.map(value, {Multicolor, Red, Green, Blue})) {
        if (const auto name = reader.sysfsName(entry.second))
            led.*fields.value(YamlReader::scalar(entry.first)) = *name;
    }
    const int colors = led.names().size();
    if (!led.multicolor.isEmpty() && colors > 1)
        reader.yaml.error(value, QStringLiteral("a multicolor LED has no other LEDs beside it"));
    else if (led.multicolor.isEmpty() && colors < 2 && value.entries().size() < 2)
        reader.yaml.error(value, QStringLiteral("an LED needs multicolor, or two or three of red, green, blue"));
}

// Two keys with the same LED would show the state of one of them.
void checkUnique(ProfileReader &reader, const YamlNode &value, const KeyLedConfiguration &led)
{
    for (const QString &name : led.names()) {
        for (const KeyLedConfiguration &other : qAsConst(reader.board.leds)) {
            if (other.names().contains(name))
                reader.yaml.error(value, QStringLiteral("the LED \"%1\" is that of another key").arg(name));
        }
    }
}

}

void readLeds(ProfileReader &reader, const YamlNode &value)
{
    for (const auto &entry : reader.yaml.freeMap(value)) {
        const auto halKey = reader.key(entry.first);
        KeyLedConfiguration led;
        led.halKey = halKey.value_or(0);
        led.where = reader.where(entry.second);
        if (entry.second.isMap())
            readColors(reader, entry.second, led);
        else
            led.single = reader.sysfsName(entry.second).value_or(QString());
        checkUnique(reader, entry.second, led);
        reader.board.leds << led;
    }
}

void readScreens(ProfileReader &reader, const YamlNode &value)
{
    if (!value.isSequence() || value.items().isEmpty() || value.items().size() > MaxScreens)
        return reader.yaml.errorExpected(value, QStringLiteral("a list of one to %1 screens").arg(MaxScreens));
    for (const auto &node : value.items()) {
        ScreenConfiguration screen;
        screen.where = reader.where(node);
        for (const auto &entry : reader.yaml.map(node, {QStringLiteral("backlight"), QStringLiteral("output")})) {
            if (entry.first.text() == QLatin1String("backlight"))
                screen.backlight = reader.sysfsName(entry.second).value_or(QString());
            else
                screen.output =
                    reader.yaml.text(entry.second, QStringLiteral("the name of an output")).value_or(QString());
        }
        reader.board.screens << screen;
    }
}

}
