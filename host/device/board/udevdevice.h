#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <libudev.h>
#include <memory>

namespace panelhost {

struct UdevDeleter
{
    void operator()(udev *context) const { udev_unref(context); }
    void operator()(udev_monitor *monitor) const { udev_monitor_unref(monitor); }
    void operator()(udev_enumerate *enumeration) const { udev_enumerate_unref(enumeration); }
    void operator()(udev_device *device) const { udev_device_unref(device); }
};

using UdevContext = std::unique_ptr<udev, UdevDeleter>;
using UdevDevice = std::unique_ptr<udev_device, UdevDeleter>;

/// Calls @p visit for each device of @p subsystem that udev knows, in the order of the device paths.
void visitDevices(udev &context, const char *subsystem, const std::function<void(udev_device &)> &visit);

/// Returns the kernel's name of @p device, such as "event3" or "1-1.2".
QString deviceName(udev_device &device);
/// Returns the content of the sysfs attribute @p name without the line break; empty if it can't be read.
QString deviceAttribute(udev_device &device, const char *name);

}
