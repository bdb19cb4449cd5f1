#include "expectations/properties.h"

#include <QtCore/QHash>

#include <algorithm>
#include <functional>

namespace panelhost {

namespace {

using DeviceGetter = std::function<QVariant(const DeviceState &)>;
using LedGetter = std::function<QVariant(const KeyLed &)>;

const QStringList &screenProperties()
{
    static const QStringList names{
        QStringLiteral("page"),         QStringLiteral("menu.level"),   QStringLiteral("menu.items"),
        QStringLiteral("menu.row"),     QStringLiteral("menu.current"), QStringLiteral("title"),
        QStringLiteral("titleIcon"),    QStringLiteral("stepTitle"),    QStringLiteral("steps"),
        QStringLiteral("steps.colors"), QStringLiteral("steps.marks"),  QStringLiteral("statusIcon"),
        QStringLiteral("left"),         QStringLiteral("right"),        QStringLiteral("leftEnabled"),
        QStringLiteral("focus"),        QStringLiteral("log"),          QStringLiteral("container")};
    return names;
}

QStringList blinkingKeys(const DeviceState &device)
{
    QStringList names;
    for (const auto &key : device.keys) {
        if (key.led.isBlinking())
            names.append(key.name);
    }
    return names;
}

QString targetOf(const TBarState &bar)
{
    return bar.target ? tbarEndName(*bar.target) : QString();
}

const QMap<QString, DeviceGetter> &deviceProperties()
{
    static const QMap<QString, DeviceGetter> getters{
        {QStringLiteral("keys.blinking"), blinkingKeys},
        {QStringLiteral("screen.0.brightness"), [](const DeviceState &d) { return d.screenBrightness[0]; }},
        {QStringLiteral("screen.1.brightness"), [](const DeviceState &d) { return d.screenBrightness[1]; }},
        {QStringLiteral("screen.2.brightness"), [](const DeviceState &d) { return d.screenBrightness[2]; }},
        {QStringLiteral("pattern.type"), [](const DeviceState &d) { return d.pattern.type; }},
        {QStringLiteral("pattern.index"), [](const DeviceState &d) { return d.pattern.index; }},
        {QStringLiteral("pattern.level"), [](const DeviceState &d) { return d.pattern.level; }},
        {QStringLiteral("panel-mode"), [](const DeviceState &d) { return d.panelMode; }},
        {QStringLiteral("test-type"), [](const DeviceState &d) { return d.testType; }},
        {QStringLiteral("machine-test-kind"), [](const DeviceState &d) { return d.machineTestKind; }},
        {QStringLiteral("tbar.position"), [](const DeviceState &d) { return d.tbar.position; }},
        {QStringLiteral("tbar.calibration"), [](const DeviceState &d) { return d.tbar.step; }},
        {QStringLiteral("tbar.target"), [](const DeviceState &d) { return targetOf(d.tbar); }},
        {QStringLiteral("tbar.failure"), [](const DeviceState &d) { return d.tbar.failure; }}};
    return getters;
}

const QMap<QString, LedGetter> &ledProperties()
{
    static const QMap<QString, LedGetter> getters{
        {QStringLiteral("color"), [](const KeyLed &led) { return led.color; }},
        {QStringLiteral("mode"), [](const KeyLed &led) { return led.mode; }},
        {QStringLiteral("brightness"), [](const KeyLed &led) { return led.brightness; }},
        {QStringLiteral("period"), [](const KeyLed &led) { return led.period; }},
        {QStringLiteral("blinking"), [](const KeyLed &led) { return led.isBlinking(); }}};
    return getters;
}

/// The parts of a property such as "led.CUT.color".
struct LedProperty
{
    explicit LedProperty(const QString &name)
        : key(name.section(QLatin1Char('.'), 1, -2)), field(name.section(QLatin1Char('.'), -1)),
          isValid(name.startsWith(QLatin1String("led.")) && ledProperties().contains(field))
    {
    }

    QString key;
    QString field;
    bool isValid;
};

QString portOf(const QString &property)
{
    return property.startsWith(QLatin1String("port.")) ? property.mid(5) : QString();
}

QVariant ledValue(const DeviceState &device, const LedProperty &property)
{
    for (const auto &key : device.keys) {
        if (key.name == property.key || QString::number(key.halKey) == property.key)
            return ledProperties()[property.field](key.led).toString();
    }
    return {};
}

QVariant portValue(const DeviceState &device, const QString &name)
{
    for (const auto &port : device.netPorts + device.usbPorts) {
        if (port.name == name && port.isBlocked)
            return QStringLiteral("blocked");
        if (port.name == name)
            return port.isPlugged ? QStringLiteral("plugged") : QStringLiteral("unplugged");
    }
    return {};
}

QStringList column(const QVariantList &rows, const QString &name)
{
    QStringList values;
    for (const auto &row : rows)
        values.append(row.toMap().value(name).toString());
    return values;
}

QVariant screenValue(const QVariantMap &screen, const QString &property)
{
    static const QMap<QString, QString> columns{{QStringLiteral("steps"), QStringLiteral("text")},
                                                {QStringLiteral("steps.colors"), QStringLiteral("color")},
                                                {QStringLiteral("steps.marks"), QStringLiteral("mark")}};
    const auto value = screen.value(columns.contains(property) ? QStringLiteral("steps") : property);
    if (!value.isValid())
        return {};
    if (columns.contains(property))
        return column(value.toList(), columns[property]);
    if (value.type() == QVariant::List || value.type() == QVariant::StringList)
        return value.toStringList();
    return value.toString();
}

}

QStringList propertyNames()
{
    return screenProperties() + deviceProperties().keys()
        + QStringList{QStringLiteral("led.<key>.color|mode|brightness|period|blinking"), QStringLiteral("port.<port>")};
}

bool isProperty(const QString &name, const DeviceNames &deviceNames)
{
    const LedProperty led(name);
    return screenProperties().contains(name) || deviceProperties().contains(name)
        || deviceNames.ports().contains(portOf(name)) || (led.isValid && deviceNames.halKey(led.key));
}

QVariant propertyValue(const Snapshot &snapshot, const QString &property)
{
    const auto getter = deviceProperties().constFind(property);
    if (getter != deviceProperties().constEnd()) {
        const auto value = (*getter)(snapshot.device);
        return value.type() == QVariant::StringList ? value : QVariant(value.toString());
    }
    const LedProperty led(property);
    if (led.isValid)
        return ledValue(snapshot.device, led);
    if (!portOf(property).isEmpty())
        return portValue(snapshot.device, portOf(property));
    return screenValue(snapshot.screen, property);
}

}
