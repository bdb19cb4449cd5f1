#pragma once

#include "device/board/udevdevice.h"

#include <QtCore/QString>

namespace panelhost {

/// Selects an input device of the kernel in one of three ways.
struct InputDeviceSelector
{
    enum class By {
        Name,    ///< the name that the driver gives, such as "gpio-keys"
        Path,    ///< a device node or a link to one, such as "/dev/input/by-path/platform-keys-event"
        Property ///< a property of udev and its value, such as "ID_PATH=platform-keys"
    };

    By by = By::Name;
    QString value;

    /// Returns the selection for messages, such as "input device named "gpio-keys"".
    QString description() const;
    bool operator==(const InputDeviceSelector &o) const { return by == o.by && value == o.value; }
};

/// Returns whether @p selector selects the event device @p device. Not for a selection by path.
bool isSelected(const InputDeviceSelector &selector, udev_device &device);

/// Returns the device node that @p selector selects, such as "/dev/input/event3"; the first one if there are several.
/// Empty if there is none.
QString findInputDevice(udev &context, const InputDeviceSelector &selector);

}
