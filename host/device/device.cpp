#include "device/device.h"

#include <algorithm>

namespace panelhost {

QStringList boardParts()
{
    return {QStringLiteral("keys"), QStringLiteral("navigation"), QStringLiteral("leds"), QStringLiteral("screens"),
            QStringLiteral("tbar"), QStringLiteral("net"),        QStringLiteral("usb")};
}

void Device::resetToFactoryState(const std::function<void(bool ok, const std::string &message)> &result)
{
    result(false, "This device has no factory reset.");
}

const KeyState *findKey(const DeviceState &state, int halKey)
{
    const auto found = std::find_if(state.keys.begin(), state.keys.end(),
                                    [halKey](const KeyState &key) { return key.halKey == halKey; });
    return found == state.keys.end() ? nullptr : &*found;
}

const PortState *findPort(const DeviceState &state, const QString &name)
{
    for (const QList<PortState> *ports : {&state.netPorts, &state.usbPorts}) {
        for (const PortState &port : *ports) {
            if (port.name == name)
                return &port;
        }
    }
    return nullptr;
}

}
