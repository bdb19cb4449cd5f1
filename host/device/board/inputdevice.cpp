#include "device/board/inputdevice.h"

#include <QtCore/QFileInfo>

#include <climits>

namespace panelhost {

namespace {

int eventNumber(const QString &name)
{
    bool isNumber = false;
    const int number = name.midRef(5).toInt(&isNumber);
    return isNumber && name.startsWith(QLatin1String("event")) ? number : INT_MAX;
}

// The name is an attribute of the parent; the kernel's "event3" is its child.
QString inputName(udev_device &device)
{
    udev_device *parent = udev_device_get_parent_with_subsystem_devtype(&device, "input", nullptr);
    return parent ? deviceAttribute(*parent, "name") : QString();
}

}

QString InputDeviceSelector::description() const
{
    switch (by) {
    case By::Name:
        return QStringLiteral("input device named \"%1\"").arg(value);
    case By::Path:
        return QStringLiteral("input device at %1").arg(value);
    case By::Property:
        break;
    }
    return QStringLiteral("input device with the udev property %1").arg(value);
}

bool isSelected(const InputDeviceSelector &selector, udev_device &device)
{
    if (eventNumber(deviceName(device)) == INT_MAX || !udev_device_get_devnode(&device))
        return false;
    if (selector.by == InputDeviceSelector::By::Name)
        return inputName(device) == selector.value;
    const QString property = selector.value.section(QLatin1Char('='), 0, 0);
    const char *value = udev_device_get_property_value(&device, property.toUtf8().constData());
    return value && selector.value.section(QLatin1Char('='), 1) == QString::fromUtf8(value);
}

QString findInputDevice(udev &context, const InputDeviceSelector &selector)
{
    if (selector.by == InputDeviceSelector::By::Path)
        return QFileInfo::exists(selector.value) ? selector.value : QString();
    QString found;
    int lowest = INT_MAX;
    visitDevices(context, "input", [&](udev_device &device) {
        const int number = eventNumber(deviceName(device));
        if (number >= lowest || !isSelected(selector, device))
            return;
        lowest = number;
        found = QString::fromLocal8Bit(udev_device_get_devnode(&device));
    });
    return found;
}

}
