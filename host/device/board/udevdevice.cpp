#include "device/board/udevdevice.h"

namespace panelhost {

void visitDevices(udev &context, const char *subsystem, const std::function<void(udev_device &)> &visit)
{
    const std::unique_ptr<udev_enumerate, UdevDeleter> enumeration(udev_enumerate_new(&context));
    if (!enumeration || udev_enumerate_add_match_subsystem(enumeration.get(), subsystem) < 0
        || udev_enumerate_scan_devices(enumeration.get()) < 0)
        return;
    for (udev_list_entry *entry = udev_enumerate_get_list_entry(enumeration.get()); entry;
         entry = udev_list_entry_get_next(entry)) {
        const UdevDevice device(udev_device_new_from_syspath(&context, udev_list_entry_get_name(entry)));
        if (device) // it may be gone again
            visit(*device);
    }
}

QString deviceName(udev_device &device)
{
    return QString::fromLocal8Bit(udev_device_get_sysname(&device));
}

QString deviceAttribute(udev_device &device, const char *name)
{
    return QString::fromUtf8(udev_device_get_sysattr_value(&device, name)).trimmed();
}

}
