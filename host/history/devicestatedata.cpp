#include "history/devicestatedata.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

namespace panelhost {

static QDataStream &operator<<(QDataStream &stream, const KeyState &key)
{
    return stream << key.halKey << key.name << key.led.color << key.led.mode << key.led.brightness << key.led.period
                  << key.isDown;
}

static QDataStream &operator>>(QDataStream &stream, KeyState &key)
{
    return stream >> key.halKey >> key.name >> key.led.color >> key.led.mode >> key.led.brightness >> key.led.period
        >> key.isDown;
}

static QDataStream &operator<<(QDataStream &stream, const PortState &port)
{
    return stream << port.name << port.number << port.isPlugged << port.isBlocked;
}

static QDataStream &operator>>(QDataStream &stream, PortState &port)
{
    return stream >> port.name >> port.number >> port.isPlugged >> port.isBlocked;
}

constexpr int NoTarget = -1;

static QDataStream &operator<<(QDataStream &stream, const TBarState &tbar)
{
    return stream << static_cast<int>(tbar.type) << tbar.position << tbar.tolerance << tbar.step
                  << (tbar.target ? static_cast<int>(*tbar.target) : NoTarget) << tbar.failure;
}

static QDataStream &operator>>(QDataStream &stream, TBarState &tbar)
{
    int type = 0;
    int target = NoTarget;
    stream >> type >> tbar.position >> tbar.tolerance >> tbar.step >> target >> tbar.failure;
    tbar.type = static_cast<TBarType>(type);
    tbar.target.reset();
    if (target != NoTarget)
        tbar.target = static_cast<TBarEnd>(target);
    return stream;
}

static QDataStream &operator<<(QDataStream &stream, const DeviceState &state)
{
    stream << state.keys;
    for (const int brightness : state.screenBrightness)
        stream << brightness;
    return stream << state.pattern.type << state.pattern.index << state.pattern.level << state.tbar << state.netPorts
                  << state.usbPorts << state.panelMode << state.testType << state.machineTestKind << state.missingParts;
}

static QDataStream &operator>>(QDataStream &stream, DeviceState &state)
{
    stream >> state.keys;
    for (int &brightness : state.screenBrightness)
        stream >> brightness;
    return stream >> state.pattern.type >> state.pattern.index >> state.pattern.level >> state.tbar >> state.netPorts
        >> state.usbPorts >> state.panelMode >> state.testType >> state.machineTestKind >> state.missingParts;
}

QByteArray toData(const DeviceState &state)
{
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream << state;
    return data;
}

DeviceState deviceStateFromData(const QByteArray &data)
{
    DeviceState state;
    QDataStream stream(data);
    stream >> state;
    return state;
}

}
