#include "scenario/subjects.h"

#include <QtCore/QHash>

#include <algorithm>
#include <functional>

namespace panelhost {

namespace {

using DeviceReader = std::function<QVariant(const DeviceState &)>;
using LedReader = std::function<QVariant(const KeyLed &)>;

const QStringList &screenSubjects()
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

const QMap<QString, DeviceReader> &deviceSubjects()
{
    static const QMap<QString, DeviceReader> readers{
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
    return readers;
}

const QMap<QString, LedReader> &ledSubjects()
{
    static const QMap<QString, LedReader> readers{
        {QStringLiteral("color"), [](const KeyLed &led) { return led.color; }},
        {QStringLiteral("mode"), [](const KeyLed &led) { return led.mode; }},
        {QStringLiteral("brightness"), [](const KeyLed &led) { return led.brightness; }},
        {QStringLiteral("period"), [](const KeyLed &led) { return led.period; }},
        {QStringLiteral("blinking"), [](const KeyLed &led) { return led.isBlinking(); }}};
    return readers;
}

/// "led.CUT.color" taken apart.
struct LedSubject
{
    explicit LedSubject(const QString &subject)
        : key(subject.section(QLatin1Char('.'), 1, -2)), property(subject.section(QLatin1Char('.'), -1)),
          isOne(subject.startsWith(QLatin1String("led.")) && ledSubjects().contains(property))
    {
    }

    QString key;
    QString property;
    bool isOne;
};

QString portOf(const QString &subject)
{
    return subject.startsWith(QLatin1String("port.")) ? subject.mid(5) : QString();
}

QVariant lookAtLed(const DeviceState &device, const LedSubject &subject)
{
    for (const auto &key : device.keys) {
        if (key.name == subject.key || QString::number(key.halKey) == subject.key)
            return ledSubjects()[subject.property](key.led).toString();
    }
    return {};
}

QVariant lookAtPort(const DeviceState &device, const QString &name)
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

QVariant lookAtScreen(const QVariantMap &screen, const QString &subject)
{
    static const QMap<QString, QString> columns{{QStringLiteral("steps"), QStringLiteral("text")},
                                                {QStringLiteral("steps.colors"), QStringLiteral("color")},
                                                {QStringLiteral("steps.marks"), QStringLiteral("mark")}};
    const auto value = screen.value(columns.contains(subject) ? QStringLiteral("steps") : subject);
    if (!value.isValid())
        return {};
    if (columns.contains(subject))
        return column(value.toList(), columns[subject]);
    if (value.type() == QVariant::List || value.type() == QVariant::StringList)
        return value.toStringList();
    return value.toString();
}

}

QStringList subjectNames()
{
    return screenSubjects() + deviceSubjects().keys()
        + QStringList{QStringLiteral("led.<key>.color|mode|brightness|period|blinking"), QStringLiteral("port.<port>")};
}

bool isSubject(const QString &name, const Vocabulary &vocabulary)
{
    const LedSubject led(name);
    return screenSubjects().contains(name) || deviceSubjects().contains(name)
        || vocabulary.ports().contains(portOf(name)) || (led.isOne && vocabulary.halKey(led.key));
}

QVariant look(const Sight &sight, const QString &subject)
{
    const auto reader = deviceSubjects().constFind(subject);
    if (reader != deviceSubjects().constEnd()) {
        const auto value = (*reader)(sight.device);
        return value.type() == QVariant::StringList ? value : QVariant(value.toString());
    }
    const LedSubject led(subject);
    if (led.isOne)
        return lookAtLed(sight.device, led);
    if (!portOf(subject).isEmpty())
        return lookAtPort(sight.device, portOf(subject));
    return lookAtScreen(sight.screen, subject);
}

}
