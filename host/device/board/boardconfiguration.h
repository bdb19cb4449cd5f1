#pragma once

#include "device/board/evdevinput.h"
#include "device/board/netlinks.h"
#include "device/board/sliderinput.h"
#include "device/board/usbports.h"

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

namespace panelhost {

/// The LEDs of a key, by their names in /sys/class/leds. Either one LED of one color, one multicolor LED, or one LED
/// for each of two or three colors.
struct KeyLedConfiguration
{
    int halKey = 0;
    QString single;     ///< shows every color
    QString multicolor; ///< has the attribute multi_intensity
    QString red;
    QString green;
    QString blue;
    QString where; ///< "file:line:column" in the profile, for messages

    /// Returns the names of all LEDs.
    QStringList names() const;
};

/// A screen of the panel.
struct ScreenConfiguration
{
    QString backlight; ///< name in /sys/class/backlight; empty: none
    QString output;    ///< name of the output for test patterns, such as "HDMI-1"; empty: none
    QString where;     ///< "file:line:column" in the profile
};

/// What a part of the panel uses of an input device.
struct InputConfiguration
{
    QString part;  ///< "keys", "navigation" or "tbar"
    QString where; ///< "file:line:column" in the profile
    EvdevInput::Configuration input;
};

/// The T-Bar.
struct TBarConfiguration
{
    TBarType type = TBarType::Slider;
    SliderInput::Configuration slider;
    EvdevInput::Configuration input; ///< with the axis, if `slider` has no IIO channel
    QString where;                   ///< "file:line:column" in the profile
};

/// A board as its profile describes it, with plain values.
struct BoardConfiguration
{
    /// How a part of the board is provided.
    enum class Source {
        Absent, ///< it has no service
        Simulated,
        Real
    };

    QString file; ///< the profile
    /// The directory for what must survive the process: the values to restore, and the end positions of the T-Bar.
    QString stateDirectory;
    QMap<QString, Source> parts; ///< by name; those that aren't there are absent
    QVector<KeyLedConfiguration> leds;
    QVector<ScreenConfiguration> screens;
    QVector<InputConfiguration> inputs; ///< of the keys and of knob and joystick
    TBarConfiguration tbar;
    NetLinks::Configuration net;
    QStringList netWhere; ///< "file:line:column" in the profile, for each interface
    UsbPorts::Configuration usb;

    Source source(const QString &part) const { return parts.value(part, Source::Absent); }
    bool isReal(const QString &part) const { return source(part) == Source::Real; }
};

}
