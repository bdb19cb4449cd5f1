#include "panelfixture.h"

using namespace panelhost;

QString lineOf(const OperatorAction &action)
{
    QString line = actionName(action.kind);
    for (auto it = action.arguments.cbegin(); it != action.arguments.cend(); ++it)
        line += QStringLiteral(" %1=%2").arg(it.key(), it.value().toString());
    return line;
}

KeyState sampleKey(int halKey, const QString &name)
{
    KeyState key;
    key.halKey = halKey;
    key.name = name;
    return key;
}

static QList<PortState> samplePorts(const QString &stem)
{
    QList<PortState> ports;
    for (int number = 1; number <= 4; ++number)
        ports.append({stem + QString::number(number), number, false, false});
    return ports;
}

DeviceState sampleDevice(int keys)
{
    DeviceState device;
    for (int key = 1; key <= keys; ++key)
        device.keys.append(sampleKey(key, QStringLiteral("K%1").arg(key)));
    device.netPorts = samplePorts(QStringLiteral("net"));
    device.usbPorts = samplePorts(QStringLiteral("usb"));
    return device;
}
