#pragma once

#include "device/board/boardconfiguration.h"
#include "session/devicenames.h"
#include "yaml/yamlreader.h"

namespace panelhost {

/// What the readers of the parts of a board profile share.
struct ProfileReader
{
    YamlReader &yaml;
    const DeviceNames &names; ///< of the keys
    BoardConfiguration &board;

    /// Returns the hal key of a key that is given by name or hal key. Adds an error and returns nothing if there is
    /// none.
    std::optional<int> key(const YamlNode &node);
    /// Returns a name in /sys/class. Adds an error and returns nothing if it can't be one.
    std::optional<QString> sysfsName(const YamlNode &node);
    /// Returns "file:line:column" of @p node.
    QString where(const YamlNode &node) const;
};

/// Read the value of a part, which isn't "simulated", into the board.
void readLeds(ProfileReader &reader, const YamlNode &value);
void readScreens(ProfileReader &reader, const YamlNode &value);
void readKeys(ProfileReader &reader, const YamlNode &value);
void readNavigation(ProfileReader &reader, const YamlNode &value);
void readTBar(ProfileReader &reader, const YamlNode &value);
void readNet(ProfileReader &reader, const YamlNode &value);
void readUsb(ProfileReader &reader, const YamlNode &value);

/// Returns the input device that @p node selects. Adds an error and returns nothing if it doesn't select one.
std::optional<InputDeviceSelector> readInputDevice(ProfileReader &reader, const YamlNode &node);
/// Returns the code with the name @p node, such as "KEY_F1", or with that number. Adds an error and returns nothing if
/// there is no such code. @p type is EV_KEY, EV_REL or EV_ABS.
std::optional<unsigned> readEventCode(ProfileReader &reader, const YamlNode &node, unsigned type);

}
